#include "app/report/verdict_values.hpp"

#include "app/report/json_values.hpp"
#include "app/report/knot_table.hpp"
#include "words/numbers.hpp"
#include "words/residues.hpp"
#include "words/text.hpp"

namespace loopwise::app {
namespace {

using survey::Fragment, survey::KnotCount, survey::PathCount;

double share_of_most(const std::vector<KnotCount>& knots) {
    return static_cast<double>(knots.front().closures) / static_cast<double>(all_closures(knots));
}

std::string paths_text(const PathCount& count) {
    return std::to_string(count.agreeing) + " of " + words::counted(count.paths, "path");
}

Json json_of(const PathCount& count) { return {{"paths", count.paths}, {"agreeing", count.agreeing}}; }

Json json_of(const Fragment& fragment, const std::vector<polymer::ResidueId>& residues) {
    Json json = {
        {"first", residues[fragment.first].text()}, {"last", residues[fragment.last].text()}, {"knots", Json::array()}};
    const auto closures = static_cast<double>(all_closures(fragment.knots));
    for (const KnotCount& count : fragment.knots)
        json["knots"].push_back({{"knot", text(count.knot)},
                                 {"closures", count.closures},
                                 {"share", static_cast<double>(count.closures) / closures}});
    return json;
}

} // namespace

std::string VerdictValues::text() const {
    if (!verdict) return "";
    const survey::GapVerdict& of = *verdict;
    std::string text = "  verdict: " + survey::text(of, bonds, residues);
    if (of.all.paths > 0)
        text += "; " + short_text(of.knot, longest_knot) + " on " + paths_text(of.all) + " across the " +
                (bonds.gaps.size() == 1 ? "gap" : "gaps") + ", in " + words::percent(of.share()) + " of their closures";
    text += '\n';
    for (std::size_t gap = 0; bonds.gaps.size() > 1 && gap < of.alone.size(); ++gap)
        text +=
            "    " + words::bond_range(bonds.gaps[gap], residues) + " alone: on " + paths_text(of.alone[gap]) + '\n';
    std::vector<std::string> fragments;
    for (const Fragment& fragment : of.fragments)
        fragments.push_back(words::range(residues[fragment.first], residues[fragment.last]) + ' ' +
                            short_text(fragment.knots.front().knot, longest_knot) + " in " +
                            words::percent(share_of_most(fragment.knots)));
    return text + "  fragments alone: " + words::joined(fragments, ", ") + '\n';
}

Json VerdictValues::json() const {
    if (!verdict) return nullptr;
    const survey::GapVerdict& of = *verdict;
    Json gaps = Json::array(), fragments = Json::array();
    for (std::size_t i = 0; i < bonds.gaps.size(); ++i) {
        Json& gap =
            gaps.emplace_back(Json{{"gap", words::bond_range(bonds.gaps[i], residues)}, {"beads", of.beads[i]}});
        gap["alone"] = i < of.alone.size() ? json_of(of.alone[i]) : Json(nullptr);
    }
    for (const Fragment& fragment : of.fragments) fragments.push_back(json_of(fragment, residues));
    return {{"verdict", survey::text(of, bonds, residues)},
            {"knot", knots::text(of.knot)},
            {"paths", of.all.paths},
            {"agreeing", of.all.agreeing},
            {"share", of.share()},
            {"gaps", gaps},
            {"fragments", fragments}};
}

Row verdict_columns() { return {"verdict", "verdict_paths", "verdict_agreeing", "verdict_share", "fragments"}; }

Row VerdictValues::row() const {
    if (!verdict) return Row(verdict_columns().size());
    std::vector<std::string> fragments;
    for (const Fragment& fragment : verdict->fragments)
        fragments.push_back(words::range(residues[fragment.first], residues[fragment.last]) + ' ' +
                            knots::text(fragment.knots.front().knot) + ':' +
                            words::general(share_of_most(fragment.knots)));
    return {survey::text(*verdict, bonds, residues), std::to_string(verdict->all.paths),
            std::to_string(verdict->all.agreeing), words::general(verdict->share()), words::joined(fragments, "; ")};
}

} // namespace loopwise::app
