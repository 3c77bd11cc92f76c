// CSV: the columns, then rows.
#include "app/report/report.hpp"
#include "words/text.hpp"

#include <nlohmann/json.hpp>

namespace loopwise::app {
namespace {

class CsvReport final : public Report {
  public:
    CsvReport(std::ostream& out, const Head& head) : out_(out) { out_ << words::csv_row(head.columns); }
    void add(const Entry& entry) override {
        for (const Row& row : entry.rows()) out_ << words::csv_row(row);
        out_.flush();
    }

  private:
    std::ostream& out_;
};

} // namespace

std::unique_ptr<Report> make_csv_report(std::ostream& out, const Head& head) {
    return std::make_unique<CsvReport>(out, head);
}

} // namespace loopwise::app
