#include "app/report/survey_entry.hpp"

#include "app/report/confidence_values.hpp"
#include "app/report/json_values.hpp"
#include "app/report/knot_table.hpp"
#include "app/report/verdict_values.hpp"
#include "words/numbers.hpp"
#include "words/residues.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <iterator>

namespace loopwise::app {
namespace {

using survey::ComponentTally, survey::KnotCount, survey::PairTally, survey::Tally;
using words::counted, words::percent;

constexpr std::size_t longest_bar = 40;
constexpr const char* between = "; ";

// Text

/// Chain text has no names.
std::string name_in_text(const Tally& tally) {
    return tally.name.empty() ? "without name" : words::printable(tally.name);
}

std::string short_bonds_text(const ComponentTally& tally, bool cis) {
    std::vector<polymer::OddBond> bonds;
    std::copy_if(tally.bonds.close.begin(), tally.bonds.close.end(), std::back_inserter(bonds),
                 [&](const polymer::OddBond& bond) { return polymer::may_be_cis(bond.length) == cis; });
    return bonds.empty() ? ""
                         : (cis ? "  short as a cis peptide: " : "  too short for a bond: ") +
                               words::bonds_text(bonds, tally.residues, ", ") + '\n';
}

std::string introduction(const ComponentTally& tally, bool together) {
    std::string text = together ? " " : "";
    if (together || !tally.name.empty()) text += " chain " + name_in_text(tally);
    text += ": " + counted(tally.beads, "bead") + ", " + words::number_of_gaps(tally.bonds) + '\n';
    if (const std::size_t gaps = tally.bonds.gaps.size(); gaps > 0)
        text += (gaps == 1 ? "  gap: " : "  gaps: ") + words::bonds_text(tally.bonds.gaps, tally.residues, ", ") + '\n';
    text += confidence_line(tally.confidence);
    return text + short_bonds_text(tally, true) + short_bonds_text(tally, false);
}

std::string notes_text(const std::vector<std::string>& notes) {
    std::string text;
    for (const std::string& note : notes) text += "  note: " + note + '\n';
    return text;
}

/// The most frequent knot in a sentence, and a table if there are several.
std::string knots_text(const Tally& tally, std::size_t closures) {
    if (tally.knots.empty()) return "";
    const KnotCount& most = tally.knots.front();
    std::string text = "  " + short_text(most.knot, longest_knot) + " in " + percent(most.closures, closures) + " of " +
                       counted(closures, "closure") + '\n';
    if (tally.knots.size() == 1) return text;
    std::vector<std::string> names{"knot"};
    for (const KnotCount& count : tally.knots) names.push_back(short_text(count.knot, widest_knot_column));
    const std::size_t width = words::widest(names, 14);
    text += "  " + words::left(names.front(), width) + " closures\n";
    for (std::size_t i = 0; i < tally.knots.size(); ++i)
        text += "  " + words::left(names[i + 1], width) + words::right(std::to_string(tally.knots[i].closures), 9) +
                words::right(percent(tally.knots[i].closures, closures), 9) + '\n';
    return text;
}

/// The linking numbers of two chains, as "-1 in 3, 1 in 7".
std::string linking_text(const PairTally& pair) {
    std::vector<std::string> numbers;
    for (const auto& [number, closures] : pair.numbers)
        numbers.push_back(std::to_string(number) + " in " + std::to_string(closures));
    return "linking number " + words::joined(numbers, ", ");
}

/// The most frequent links of two chains, as "2^2_1 in 55, +4^2_1 in 16, 3 others in 5, apart in 324".
std::string links_text(const PairTally& pair) {
    constexpr std::size_t most = 3;
    std::vector<std::string> links;
    std::size_t others = 0, in_others = 0, apart = 0;
    for (const KnotCount& count : pair.knots)
        if (count.knot.comes_apart())
            apart += count.closures;
        else if (links.size() < most)
            links.push_back(short_text(count.knot, longest_knot) + " in " + std::to_string(count.closures));
        else
            ++others, in_others += count.closures;
    if (others > 0) links.push_back(counted(others, "other") + " in " + std::to_string(in_others));
    if (apart > 0) links.push_back("apart in " + std::to_string(apart));
    return words::joined(links, ", ");
}

/// Pairs that come apart in every closure are left out.
std::string pairs_text(const survey::Result& result) {
    std::string text;
    for (const PairTally& pair : result.pairs)
        if (pair.is_linked())
            text += "  chains " + name_in_text(result.components[pair.one]) + " and " +
                    name_in_text(result.components[pair.other]) + ": " + links_text(pair) + "; " + linking_text(pair) +
                    '\n';
    return text;
}

std::string left_text(const Tally& tally, std::size_t closures) {
    std::string text = "  down to three beads: " + std::to_string(tally.fully_reduced) + " of " +
                       counted(closures, "closure") + " (" + percent(tally.fully_reduced, closures) +
                       ")\n  beads left   closures\n";
    for (const auto& [left, times] : tally.left)
        text += words::right(std::to_string(left), 12) + words::right(std::to_string(times), 11) + "  " +
                std::string(std::max<std::size_t>(1, longest_bar * times / closures), '#') + '\n';
    return text;
}

std::string labels_of(const ComponentTally& tally) {
    std::vector<std::string> labels;
    for (std::size_t i = 0; i < tally.smallest->loop.beads.size(); ++i)
        labels.push_back(label_of(tally.smallest->loop, i, tally));
    return words::joined(labels, " ");
}

VerdictValues verdict_of(const ComponentTally& tally) { return {tally.verdict, tally.bonds, tally.residues}; }

std::string component_text(const ComponentTally& tally, std::size_t closures, bool together) {
    std::string text = together ? "  chain " + name_in_text(tally) + '\n' : "";
    text += knots_text(tally, closures);
    const std::string warning = words::gap_warning(tally.bonds);
    if (!warning.empty()) text += "  " + warning + '\n';
    text += verdict_of(tally).text() + left_text(tally, closures);
    if (tally.smallest)
        text += "  fewest beads left above three: " + std::to_string(tally.smallest->loop.beads.size()) + ", closure " +
                std::to_string(tally.smallest->closure) + ": " + labels_of(tally) + '\n';
    return text;
}

// JSON

Json json_of(const std::map<std::size_t, std::size_t>& left) {
    Json pairs = Json::array();
    for (const auto& [beads, closures] : left) pairs.push_back({{"beads", beads}, {"closures", closures}});
    return pairs;
}

Json json_of(const std::vector<KnotCount>& knots, std::size_t closures) {
    Json list = Json::array();
    for (const KnotCount& count : knots) {
        Json& json = list.emplace_back();
        add_knot(json, count.knot);
        for (const knots::Laurent& jones : count.jones) json["jones"].push_back(text(jones));
        json["closures"] = count.closures;
        json["share"] = static_cast<double>(count.closures) / static_cast<double>(closures);
    }
    return list;
}

Json json_of(const survey::Result& result, const PairTally& pair) {
    Json numbers = Json::array();
    for (const auto& [number, closures] : pair.numbers) numbers.push_back({{"number", number}, {"closures", closures}});
    return {{"chains", {result.components[pair.one].name, result.components[pair.other].name}},
            {"links", json_of(pair.knots, result.counted())},
            {"linking", numbers}};
}

Json fewest_left_of(const ComponentTally& tally) {
    if (!tally.smallest) return nullptr;
    const auto& [closure, loop] = *tally.smallest;
    Json beads = Json::array();
    for (std::size_t i = 0; i < loop.beads.size(); ++i)
        beads.push_back({{"label", label_of(loop, i, tally)},
                         {"appended", i >= loop.own},
                         {"x", loop.beads[i].x},
                         {"y", loop.beads[i].y},
                         {"z", loop.beads[i].z}});
    return {{"beads", loop.beads.size()}, {"closure", closure}, {"left", beads}};
}

Json json_of(const ComponentTally& tally, std::size_t closures) {
    return {{"chain", tally.name},
            {"beads", tally.beads},
            {"notes", tally.notes},
            {"gaps", bonds_json(tally.bonds.gaps, tally.residues)},
            {"short_bonds", bonds_json(tally.bonds.close, tally.residues)},
            {"knots", json_of(tally.knots, closures)},
            {"down_to_three", tally.fully_reduced},
            {"left", json_of(tally.left)},
            {"fewest_left", fewest_left_of(tally)},
            {"verdict", verdict_of(tally).json()},
            {"confidence", confidence_json(tally.confidence)}};
}

// CSV

std::string places_of(const Chain& beads) {
    std::vector<std::string> places;
    for (const ChainAtom& bead : beads)
        places.push_back(words::exact(bead.x) + ' ' + words::exact(bead.y) + ' ' + words::exact(bead.z));
    return words::joined(places, between);
}

/// The most frequent knot with its closures and share, then all knots as name:closures.
Row knot_fields(const Tally& tally, std::size_t closures) {
    if (tally.knots.empty()) return {"", "", "", ""};
    const KnotCount& first = tally.knots.front();
    std::vector<std::string> all;
    for (const KnotCount& count : tally.knots) all.push_back(text(count.knot) + ':' + std::to_string(count.closures));
    return {text(first.knot), std::to_string(first.closures),
            words::general(static_cast<double>(first.closures) / static_cast<double>(closures)),
            words::joined(all, between)};
}

Row row_of(const survey::Result& result, const char* part, const Tally& tally, const ComponentTally* chain,
           const std::vector<std::string>& notes) {
    const survey::Plan& plan = result.plan;
    Row row{result.file, result.model, part, tally.name, std::to_string(tally.beads)};
    const auto add = [&](const Row& fields) { row.insert(row.end(), fields.begin(), fields.end()); };
    add(chain ? Row{words::bonds_text(chain->bonds.gaps, chain->residues, " "), std::to_string(chain->bonds.missing())}
              : Row{"", ""});
    add({plan.method->name, plan.method->takes_scale() ? words::general(plan.scale) : "",
         plan.method->random ? std::to_string(plan.seed) : "", std::to_string(plan.closures),
         std::to_string(result.failed)});
    add(knot_fields(tally, result.counted()));
    std::vector<std::string> left;
    for (const auto& [beads, closures] : tally.left)
        left.push_back(std::to_string(beads) + ':' + std::to_string(closures));
    add({left.empty() ? "" : std::to_string(tally.fully_reduced), words::joined(left, " ")});
    if (chain && chain->smallest)
        add({std::to_string(chain->smallest->loop.beads.size()), std::to_string(chain->smallest->closure),
             labels_of(*chain), places_of(chain->smallest->loop.beads)});
    else
        add({"", "", "", ""});
    add({words::joined(notes, between), tally.knots.empty() ? "" : words::yes_or_no(tally.knots.front().knot.proven)});
    add(chain ? verdict_of(*chain).row() : Row(verdict_columns().size()));
    add(confidence_row(chain ? chain->confidence : std::nullopt));
    return row;
}

std::string noise_text(const survey::Noise& noise) {
    std::string text = "  noise of " + words::general(noise.plan.size) + ", " + counted(noise.plan.repeats, "repeat") +
                       ", seed " + std::to_string(noise.plan.seed) + ": " + short_text(noise.knot, longest_knot) +
                       " in " + percent(noise.least) + " to " + percent(noise.greatest) + ", mean " +
                       percent(noise.mean) + " of closures; most frequent in " + std::to_string(noise.kept) +
                       " repeats\n";
    if (noise.knot.is_knot() && noise.vanishes())
        text += "  the knot vanishes under a noise of " + words::general(noise.plan.size) +
                (noise.plan.size <= survey::small_noise ? ": it depends on details that no measurement is sure of\n"
                                                        : "\n");
    return text;
}

Json json_of(const std::optional<survey::Noise>& noise) {
    if (!noise) return nullptr;
    return {{"size", noise->plan.size},     {"repeats", noise->plan.repeats},
            {"seed", noise->plan.seed},     {"knot", text(noise->knot)},
            {"least", noise->least},        {"mean", noise->mean},
            {"greatest", noise->greatest},  {"kept", noise->kept},
            {"vanishes", noise->vanishes()}};
}

Row noise_row(const std::optional<survey::Noise>& noise) {
    if (!noise) return Row(4);
    return {words::general(noise->plan.size), words::general(noise->least), words::general(noise->greatest),
            std::to_string(noise->kept)};
}

} // namespace

Head survey_head(const survey::Plan& plan) {
    const survey::Method method = plan.method;
    Row columns{"file",        "model",          "part",          "chain",         "beads",         "gaps",
                "missing",     "method",         "scale",         "seed",          "closures",      "failed",
                "knot",        "knot_closures",  "knot_share",    "knots",         "down_to_three", "left",
                "fewest_left", "fewest_closure", "fewest_labels", "fewest_places", "notes",         "proven"};
    columns = extended(extended(std::move(columns), verdict_columns()), confidence_columns());
    columns.insert(columns.end(), {"noise", "noise_least", "noise_greatest", "noise_kept"});
    return {"survey",
            counted(plan.closures, "closure") + " of each " + (plan.together ? "structure" : "chain") + ", method " +
                method->name + (method->takes_scale() ? ", scale " + words::general(plan.scale) : "") +
                (method->random ? ", seed " + std::to_string(plan.seed) : "") + '\n',
            [plan](Json& head) {
                head["method"] = plan.method->name;
                head["closures"] = plan.closures;
                head["scale"] = plan.method->takes_scale() ? Json(plan.scale) : Json(nullptr);
                head["seed"] = plan.method->random ? Json(plan.seed) : Json(nullptr);
            },
            columns};
}

std::string SurveyEntry::text() const {
    const bool together = result_.plan.together;
    const std::size_t closures = result_.counted();
    std::string text =
        '\n' + words::printable(result_.file) + (result_.model.empty() ? "" : ", model " + result_.model);
    if (together) text += ": structure of " + counted(result_.components.size(), "chain") + '\n';
    for (const ComponentTally& tally : result_.components) text += introduction(tally, together);
    text += notes_text(result_.notes);
    for (const ComponentTally& tally : result_.components) text += notes_text(tally.notes);
    if (!result_.plan.method->closes)
        text += std::string("  reduced as ") +
                (result_.components.size() == 1 ? "the ring it is" : "the rings they are") + ", without a closure\n";
    if (result_.failed > 0)
        text += "  failed to close: " + std::to_string(result_.failed) + " of " +
                std::to_string(result_.plan.closures) + '\n';
    if (closures == 0) return text;
    if (together)
        text += "  all chains together\n" + knots_text(result_.whole, closures) + pairs_text(result_) +
                left_text(result_.whole, closures);
    for (const ComponentTally& tally : result_.components) text += component_text(tally, closures, together);
    if (noise_) text += noise_text(*noise_);
    return text;
}

Json SurveyEntry::json() const {
    Json entry = {{"file", result_.file},
                  {"model", text_or_null(result_.model)},
                  {"notes", result_.notes},
                  {"method", result_.plan.method->name},
                  {"closures", result_.plan.closures},
                  {"failed", result_.failed}};
    if (result_.plan.together) {
        entry["links"] = json_of(result_.whole.knots, result_.counted());
        for (const PairTally& pair : result_.pairs) entry["pairs"].push_back(json_of(result_, pair));
        entry["down_to_three"] = result_.whole.fully_reduced;
        entry["left"] = json_of(result_.whole.left);
    }
    for (const ComponentTally& tally : result_.components) entry["chains"].push_back(json_of(tally, result_.counted()));
    entry["noise"] = json_of(noise_);
    return entry;
}

std::vector<Row> SurveyEntry::rows() const {
    const bool together = result_.plan.together;
    std::vector<Row> rows;
    if (together) rows.push_back(row_of(result_, "structure", result_.whole, nullptr, result_.notes));
    for (const PairTally& pair : result_.pairs)
        if (pair.is_linked()) rows.push_back(row_of(result_, "pair", pair, nullptr, {linking_text(pair)}));
    for (const ComponentTally& tally : result_.components) {
        std::vector<std::string> notes = together ? std::vector<std::string>{} : result_.notes;
        notes.insert(notes.end(), tally.notes.begin(), tally.notes.end());
        rows.push_back(row_of(result_, together ? "component" : "chain", tally, &tally, notes));
    }
    for (Row& row : rows)
        for (const std::string& field : noise_row(noise_)) row.push_back(field);
    return rows;
}

} // namespace loopwise::app
