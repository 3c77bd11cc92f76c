#include "app/report/each.hpp"

#include "words/text.hpp"

namespace loopwise::app {

using words::csv_field;

EachClosure::EachClosure(std::ostream& out, survey::Watcher& next) : out_(out), next_(next) {
    out_.imbue(std::locale::classic());
    out_ << "file,model,chain,closure,beads,knot\n";
}

void EachClosure::closure_counted(const survey::ClosureResult& made) {
    for (std::size_t i = 0; i < made.reduced.size(); ++i)
        out_ << csv_field(molecule_->file) << ',' << csv_field(molecule_->model) << ','
             << csv_field(molecule_->chains[i].name) << ',' << made.closure << ','
             << made.reduced[i].beads.size() << ',' << (made.knots.empty() ? "" : csv_field(made.knots[i]))
             << '\n';
    next_.closure_counted(made);
}

} // namespace loopwise::app
