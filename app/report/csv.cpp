#include "app/report/report.hpp"
#include "words/numbers.hpp"
#include "words/residues.hpp"
#include "words/text.hpp"

namespace loopwise::app {
namespace {

using words::csv_field, words::yes_or_no;

constexpr const char* between = "; ";

std::string places_of(const Chain& beads) {
    std::vector<std::string> places;
    for (const ChainAtom& bead : beads)
        places.push_back(words::exact(bead.x) + ' ' + words::exact(bead.y) + ' ' + words::exact(bead.z));
    return words::joined(places, between);
}

/// Of the most frequent knot.
std::string proven_field(const survey::Tally& tally) {
    return tally.knots.empty() ? "" : yes_or_no(tally.knots.front().knot.proven);
}

class CsvReport final : public Report {
  public:
    CsvReport(std::ostream& out, const survey::Plan& plan) : out_(out), together_(plan.together) {
        out_ << "file,model,part,chain,beads,gaps,missing,method,scale,seed,closures,failed,"
                "knot,knot_closures,knot_share,knots,down_to_three,left,"
                "fewest_left,fewest_closure,fewest_labels,fewest_places,notes,proven\n";
    }

    void add(const survey::Result& result) override {
        if (together_) {
            start(result, "structure", result.whole, nullptr);
            out_ << ",,,,," << csv_field(words::joined(result.notes, between)) << ','
                 << proven_field(result.whole) << '\n';
        }
        for (const survey::ComponentTally& tally : result.components) {
            start(result, together_ ? "component" : "chain", tally, &tally);
            if (tally.smallest)
                out_ << ',' << tally.smallest->loop.beads.size() << ',' << tally.smallest->closure << ','
                     << csv_field(labels_of(*tally.smallest, tally)) << ','
                     << places_of(tally.smallest->loop.beads);
            else
                out_ << ",,,,";
            out_ << ','
                 << csv_field(words::joined(together_ ? tally.notes : notes_on(result, tally), between))
                 << ',' << proven_field(tally) << '\n';
        }
        out_.flush();
    }

  private:
    /// The most frequent with its closures and share, then all as name:closures.
    void knots(const std::vector<survey::KnotCount>& counts, std::size_t closures) {
        if (counts.empty()) {
            out_ << ",,,,";
            return;
        }
        const survey::KnotCount& first = counts.front();
        out_ << csv_field(text(first.knot)) << ',' << first.closures << ','
             << static_cast<double>(first.closures) / static_cast<double>(closures) << ',';
        std::vector<std::string> all;
        for (const survey::KnotCount& count : counts)
            all.push_back(text(count.knot) + ':' + std::to_string(count.closures));
        out_ << csv_field(words::joined(all, between)) << ',';
    }

    void start(const survey::Result& result, const char* part, const survey::Tally& tally,
               const survey::ComponentTally* chain) {
        const survey::Plan& plan = result.plan;
        out_ << csv_field(result.file) << ',' << csv_field(result.model) << ',' << part << ','
             << csv_field(tally.name) << ',' << tally.beads << ',';
        if (chain != nullptr)
            out_ << csv_field(words::gaps_text(chain->bonds, chain->residues, " ")) << ','
                 << chain->bonds.missing();
        else
            out_ << ',';
        out_ << ',' << plan.method->name << ',';
        if (plan.method->takes_scale()) out_ << words::general(plan.scale);
        out_ << ',';
        if (plan.method->random) out_ << plan.seed;
        out_ << ',' << plan.closures << ',' << result.failed << ',';
        knots(tally.knots, result.counted());
        out_ << tally.fully_reduced << ',';
        const char* separator = "";
        for (const auto& [beads, closures] : tally.left) {
            out_ << separator << beads << ':' << closures;
            separator = " ";
        }
    }

    std::ostream& out_;
    bool together_;
};

} // namespace

std::unique_ptr<Report> make_csv_report(std::ostream& out, const survey::Plan& plan) {
    return std::make_unique<CsvReport>(out, plan);
}

} // namespace loopwise::app
