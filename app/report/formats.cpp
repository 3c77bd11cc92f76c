#include "app/command_line.hpp"
#include "app/report/report.hpp"

#include <array>

namespace loopwise::app {

std::unique_ptr<Report> make_text_report(std::ostream& out, const Head& head);
std::unique_ptr<Report> make_json_report(std::ostream& out, const Head& head);
std::unique_ptr<Report> make_csv_report(std::ostream& out, const Head& head);

namespace {

constexpr std::array formats{
    Format{"", "", make_text_report},
    Format{"--json", "Report as JSON", make_json_report},
    Format{"--csv", "Report as CSV", make_csv_report},
};

} // namespace

const Format& default_format() { return formats.front(); }

void declare_formats(CommandLine& line, const Format*& into) {
    into = &default_format();
    std::vector<std::string> options;
    for (const Format& format : formats) {
        if (&format == &default_format()) continue;
        line.flag(
            format.option, [&into, &format] { into = &format; }, format.help);
        options.emplace_back(format.option);
    }
    line.exclusive(std::move(options));
}

} // namespace loopwise::app
