#include "app/report/each.hpp"

#include "words/text.hpp"

namespace loopwise::app {

using words::csv_field, words::yes_or_no;

EachClosure::EachClosure(std::ostream& out, survey::Watcher& next) : out_(out), next_(next) {
    out_.imbue(std::locale::classic());
    out_ << "file,model,chain,closure,beads,knot,proven\n";
}

void EachClosure::closure_counted(const survey::ClosureResult& made) {
    for (std::size_t i = 0; i < made.reduced.size(); ++i) {
        out_ << csv_field(molecule_->file) << ',' << csv_field(molecule_->model) << ','
             << csv_field(molecule_->chains[i].name) << ',' << made.closure << ','
             << made.reduced[i].beads.size();
        if (made.knots.empty())
            out_ << ",,\n";
        else
            out_ << ',' << csv_field(text(made.knots[i])) << ',' << yes_or_no(made.knots[i].proven) << '\n';
    }
    next_.closure_counted(made);
}

} // namespace loopwise::app
