#include "report/report.hpp"

#include <locale>
#include <sstream>

namespace loopwise {

std::string csv_field(const std::string& field) {
    if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
    std::string text = "\"";
    for (const char c : field) text += c == '"' ? "\"\"" : std::string(1, c);
    return text + '"';
}

std::string scale_text(double scale) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << scale;
    return text.str();
}

std::string labels_of(const ComponentTally::Smallest& smallest, const ComponentTally& component) {
    std::string labels;
    for (std::size_t i = 0; i < smallest.loop.beads.size(); ++i) {
        if (i > 0) labels += ' ';
        labels += label_of(smallest.loop, i, component);
    }
    return labels;
}

std::unique_ptr<Report> make_report(Format format, std::ostream& out, const Plan& plan) {
    out.imbue(std::locale::classic());
    switch (format) {
    case Format::json:
        return make_json_report(out, plan);
    case Format::csv:
        return make_csv_report(out, plan);
    case Format::text:
        break;
    }
    return make_text_report(out, plan);
}

} // namespace loopwise
