#include "report/report.hpp"

namespace loopwise {
namespace {

class CsvReport final : public Report {
  public:
    CsvReport(std::ostream& out, const Plan& plan) : out_(out), plan_(plan) {
        out_ << "file,part,chain,beads,breaks,method,scale,seed,closures,failed,knot,knot_closures,knot_"
                "share,knots,"
                "down_to_three,left,"
                "fewest_left,fewest_closure,fewest_labels\n";
    }

    void add(const Result& result) override {
        if (plan_.together) {
            start(result, "structure", result.whole, "");
            out_ << ",,,\n";
        }
        for (const ComponentTally& tally : result.components) {
            start(result, plan_.together ? "component" : "chain", tally, tally.breaks);
            if (tally.smallest)
                out_ << ',' << tally.smallest->loop.beads.size() << ',' << tally.smallest->closure << ','
                     << labels_of(*tally.smallest, tally) << '\n';
            else
                out_ << ",,,\n";
        }
        out_.flush();
    }

  private:
    /// The most frequent with its closures and share, then all as name:closures.
    void knots(const std::vector<KnotCount>& counts, std::size_t closures) {
        if (counts.empty()) {
            out_ << ",,,,";
            return;
        }
        const KnotCount& first = counts.front();
        out_ << csv_field(first.knot) << ',' << first.closures << ','
             << static_cast<double>(first.closures) / static_cast<double>(closures) << ',';
        std::string all;
        for (const KnotCount& count : counts)
            all += (all.empty() ? "" : "; ") + count.knot + ':' + std::to_string(count.closures);
        out_ << csv_field(all) << ',';
    }

    void start(const Result& result, const char* part, const Tally& tally, const std::string& breaks) {
        out_ << csv_field(result.file) << ',' << part << ',' << csv_field(tally.name) << ',' << tally.beads
             << ',' << csv_field(breaks) << ',' << name_of(plan_.method) << ',';
        if (takes_scale(plan_.method)) out_ << scale_text(plan_.scale);
        out_ << ',';
        if (is_random(plan_.method)) out_ << plan_.seed;
        out_ << ',' << plan_.closures << ',' << result.failed << ',';
        knots(tally.knots, result.counted());
        out_ << tally.bare << ',';
        const char* separator = "";
        for (const auto& [beads, closures] : tally.left) {
            out_ << separator << beads << ':' << closures;
            separator = " ";
        }
    }

    std::ostream& out_;
    const Plan& plan_;
};

} // namespace

std::unique_ptr<Report> make_csv_report(std::ostream& out, const Plan& plan) {
    return std::make_unique<CsvReport>(out, plan);
}

} // namespace loopwise
