#include "app/report/report.hpp"

#include <locale>

namespace loopwise::app {

std::vector<std::string> notes_on(const survey::Result& result, const survey::ComponentTally& component) {
    std::vector<std::string> notes = result.notes;
    notes.insert(notes.end(), component.notes.begin(), component.notes.end());
    return notes;
}

std::string labels_of(const survey::ComponentTally::Smallest& smallest,
                      const survey::ComponentTally& component) {
    std::string labels;
    for (std::size_t i = 0; i < smallest.loop.beads.size(); ++i) {
        if (i > 0) labels += ' ';
        labels += label_of(smallest.loop, i, component);
    }
    return labels;
}

std::unique_ptr<Report> make_report(Format format, std::ostream& out, const survey::Plan& plan) {
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

} // namespace loopwise::app
