#include "report/report.hpp"

#include <charconv>
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

std::string exact(double value) {
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::string bond_text(const OddBond& bond, const ComponentTally& component) {
    char length[32];
    const auto end =
        std::to_chars(length, length + sizeof length, bond.length, std::chars_format::general, 3).ptr;
    return component.labels[bond.bead] + '-' + component.labels[bond.bead + 1] + " (" +
           std::string(length, end) +
           (bond.missing > 0 ? ", " + std::to_string(bond.missing) + " missing)" : ")");
}

std::string gaps_text(const ComponentTally& component, const char* separator) {
    std::string text;
    for (const OddBond& gap : component.bonds.gaps)
        text += (text.empty() ? "" : separator) + bond_text(gap, component);
    return text;
}

std::size_t missing_in(const ComponentTally& component) {
    std::size_t missing = 0;
    for (const OddBond& gap : component.bonds.gaps) missing += gap.missing;
    return missing;
}

std::vector<std::string> notes_on(const Result& result, const ComponentTally& component) {
    std::vector<std::string> notes = result.notes;
    notes.insert(notes.end(), component.notes.begin(), component.notes.end());
    return notes;
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
