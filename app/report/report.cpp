#include "app/report/report.hpp"

#include <charconv>
#include <locale>
#include <sstream>

namespace loopwise::app {

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

std::string bond_text(const polymer::OddBond& bond, const std::vector<polymer::ResidueId>& residues) {
    char length[32];
    const auto end =
        std::to_chars(length, length + sizeof length, bond.length, std::chars_format::general, 3).ptr;
    return residues[bond.bead].text() + '-' + residues[bond.bead + 1].text() + " (" +
           std::string(length, end) +
           (bond.missing > 0 ? ", " + std::to_string(bond.missing) + " missing)" : ")");
}

std::string gaps_text(const polymer::Bonds& bonds, const std::vector<polymer::ResidueId>& residues,
                      const char* separator) {
    std::string text;
    for (const polymer::OddBond& gap : bonds.gaps)
        text += (text.empty() ? "" : separator) + bond_text(gap, residues);
    return text;
}

std::string gap_warning(const polymer::Bonds& bonds) {
    const auto counted = [](std::size_t count, const std::string& what) {
        return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
    };
    if (bonds.gaps.empty()) return "";
    const std::size_t missing = bonds.missing();
    return "with " + counted(bonds.gaps.size(), "gap") + " crossed by a straight line" +
           (missing > 0 ? ", " + counted(missing, "residue") + " missing" : "") +
           ": what is missing could turn this round";
}

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
