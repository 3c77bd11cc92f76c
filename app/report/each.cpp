#include "app/report/each.hpp"

#include "words/text.hpp"

namespace loopwise::app {

EachClosure::EachClosure(std::ostream& out, survey::Watcher& next) : out_(out), next_(next) {
    out_ << words::csv_row({"file", "model", "chain", "closure", "beads", "knot", "proven"});
}

void EachClosure::closure_counted(const survey::ClosureResult& made) {
    const bool named = !made.knots.empty();
    for (std::size_t i = 0; i < made.reduced.size(); ++i)
        out_ << words::csv_row({molecule_->file, molecule_->model, molecule_->chains[i].name,
                                std::to_string(made.closure), std::to_string(made.reduced[i].beads.size()),
                                named ? text(made.knots[i]) : "", named ? words::yes_or_no(made.knots[i].proven) : ""});
    next_.closure_counted(made);
}

} // namespace loopwise::app
