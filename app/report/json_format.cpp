// JSON: an object with the settings and the list of results, which is valid however early the run ends.
#include "app/report/report.hpp"

#include <nlohmann/json.hpp>

namespace loopwise::app {
namespace {

class JsonReport final : public Report {
  public:
    JsonReport(std::ostream& out, const Head& head) : out_(out) {
        Json object = {{"program", "loopwise " + head.subcommand}, {"version", LOOPWISE_VERSION}};
        if (head.add_settings) head.add_settings(object);
        std::string text = object.dump();
        text.pop_back();
        out_ << text << ",\"results\":[";
    }
    void add(const Entry& entry) override {
        // A file name may be no UTF-8, which would make the dump throw.
        out_ << (first_ ? "\n" : ",\n") << entry.json().dump(-1, ' ', false, Json::error_handler_t::replace)
             << std::flush;
        first_ = false;
    }
    void finish() override { out_ << "\n]}\n"; }

  private:
    std::ostream& out_;
    bool first_ = true;
};

} // namespace

std::unique_ptr<Report> make_json_report(std::ostream& out, const Head& head) {
    return std::make_unique<JsonReport>(out, head);
}

} // namespace loopwise::app
