#include "app/report/each.hpp"

#include "app/report/report.hpp"

namespace loopwise::app {

EachClosure::EachClosure(std::ostream& out, survey::Watcher& next) : out_(out), next_(next) {
    out_.imbue(std::locale::classic());
    out_ << "file,model,chain,closure,beads,knot\n";
}

void EachClosure::closure_counted(const survey::Specimen& specimen) {
    for (std::size_t i = 0; i < specimen.reduced.size(); ++i)
        out_ << csv_field(molecule_->file) << ',' << csv_field(molecule_->model) << ','
             << csv_field(molecule_->chains[i].name) << ',' << specimen.closure << ','
             << specimen.reduced[i].beads.size() << ','
             << (specimen.knots.empty() ? "" : csv_field(specimen.knots[i])) << '\n';
    next_.closure_counted(specimen);
}

} // namespace loopwise::app
