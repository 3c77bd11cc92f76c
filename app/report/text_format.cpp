// Text for people.
#include "app/report/report.hpp"
#include "words/text.hpp"

#include <nlohmann/json.hpp>

namespace loopwise::app {
namespace {

class TextReport final : public Report {
  public:
    TextReport(std::ostream& out, const Head& head) : out_(out) { out_ << head.text; }
    void add(const Entry& entry) override {
        out_ << words::printable(entry.text(), words::Lines::several) << std::flush;
    }

  private:
    std::ostream& out_;
};

} // namespace

std::unique_ptr<Report> make_text_report(std::ostream& out, const Head& head) {
    return std::make_unique<TextReport>(out, head);
}

} // namespace loopwise::app
