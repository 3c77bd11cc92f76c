#include "report/report.hpp"

namespace loopwise {
namespace {

std::string quoted(const std::string& field) {
    if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
    std::string text = "\"";
    for (const char c : field) text += c == '"' ? "\"\"" : std::string(1, c);
    return text + '"';
}

class CsvReport final : public Report {
  public:
    CsvReport(std::ostream& out, const Plan& plan) : out_(out), plan_(plan) {
        out_ << "file,part,chain,beads,breaks,method,scale,seed,closures,failed,down_to_three,left,"
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
    void start(const Result& result, const char* part, const Tally& tally, const std::string& breaks) {
        out_ << quoted(result.file) << ',' << part << ',' << quoted(tally.name) << ',' << tally.beads << ','
             << quoted(breaks) << ',' << name_of(plan_.method) << ',';
        if (takes_scale(plan_.method)) out_ << scale_text(plan_.scale);
        out_ << ',';
        if (is_random(plan_.method)) out_ << plan_.seed;
        out_ << ',' << plan_.closures << ',' << result.failed << ',' << tally.bare << ',';
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
