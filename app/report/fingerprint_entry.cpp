#include "app/report/fingerprint_entry.hpp"

#include "app/report/confidence_values.hpp"
#include "app/report/json_values.hpp"
#include "app/report/knot_table.hpp"
#include "app/report/verdict_values.hpp"
#include "fingerprint/cores.hpp"
#include "words/numbers.hpp"
#include "words/residues.hpp"
#include "words/text.hpp"

#include <algorithm>

namespace loopwise::app {
namespace {

using fingerprint::KnotPlace, fingerprint::PlaceKind;
using words::counted, words::fixed, words::percent, words::yes_or_no;

constexpr int digits_of_share = 4;

/// Nothing where it is exact.
std::string within(std::size_t residues) {
    return residues > 1 ? ", to within " + std::to_string(residues) + " residues" : "";
}

/// Of the core, and of the tails, where there are any.
struct PlaceConfidence {
    std::optional<polymer::Confidence> core, before, after;
};

PlaceConfidence confidence_of(const KnotPlace& place, const fingerprint::ChainFingerprint& of) {
    if (!place.core || of.confidence.empty()) return {};
    const std::span<const double> all = of.confidence;
    const auto [first, last] = *place.core;
    return {polymer::confidence_of(all.subspan(first, last + 1 - first)), polymer::confidence_of(all.first(first)),
            polymer::confidence_of(all.subspan(last + 1))};
}

std::string place_confidence(const KnotPlace& place, const fingerprint::ChainFingerprint& of) {
    const PlaceConfidence parts = confidence_of(place, of);
    if (!parts.core) return "";
    std::string text = "    confidence of the core: " + confidence_text(*parts.core);
    if (parts.before) text += "; of the tail before: " + confidence_text(*parts.before);
    if (parts.after) text += "; of the tail after: " + confidence_text(*parts.after);
    text += '\n';
    if (parts.core->low > 0) text += "    the core crosses residues below 50: the knot may be an artefact\n";
    return text;
}

Json json_of(const KnotPlace& place, const fingerprint::ChainFingerprint& of) {
    Json json;
    add_knot(json, place.knot);
    json["share"] = place.share;
    json["greatest_share"] = place.greatest_share;
    const auto& core = place.core;
    json["core"] = core ? Json{residue_json(of.residues[core->first]), residue_json(of.residues[core->last])} : Json();
    json["tails"] = core ? Json(fingerprint::tails_of(*core, of.matrix.beads())) : Json();
    json["core_within"] = core ? Json(place.core_within) : Json();
    json["slipknot"] = place.kind == PlaceKind::slipknot;
    json["kind"] = text(place.kind);
    const PlaceConfidence parts = confidence_of(place, of);
    json["confidence"] = {{"core", confidence_json(parts.core)},
                          {"tails", {confidence_json(parts.before), confidence_json(parts.after)}}};
    return json;
}

VerdictValues verdict_of(const fingerprint::ChainFingerprint& of) { return {of.verdict, of.bonds, of.residues}; }

} // namespace

Head fingerprint_head(const fingerprint::FingerprintPlan& plan, double least_share) {
    Row columns{"file",     "model",       "chain",          "residues",     "gaps",      "chain_knot",  "chain_share",
                "knot",     "share",       "greatest_share", "core_first",   "core_last", "tail_before", "tail_after",
                "slipknot", "core_within", "borders_within", "chain_proven", "proven",    "kind"};
    columns = extended(extended(std::move(columns), verdict_columns()), confidence_columns());
    for (const char* part : {"core_confidence", "tail_before_confidence", "tail_after_confidence"})
        for (const char* value : {"_mean", "_least", "_low"}) columns.push_back(std::string(part) + value);
    columns.insert(columns.end(), {"top_core_first", "top_core_last"});
    return {"fingerprint", "The knot of every subchain, by " + counted(plan.closures, "closure") + " of each\n",
            [=, closures = plan.closures, core_share = plan.core_share](Json& head) {
                head["closures"] = closures;
                head["least_share"] = least_share;
                head["core_share"] = core_share;
            },
            columns};
}

std::string FingerprintEntry::text() const {
    std::string text = '\n' + words::printable(of_.file) + (of_.model.empty() ? "" : ", model " + of_.model) +
                       (of_.chain.empty() ? "" : " chain " + words::printable(of_.chain)) + ": " +
                       counted(of_.matrix.beads(), "bead") + ", " + words::number_of_gaps(of_.bonds) +
                       (of_.bonds.gaps.empty() ? "" : ": ") + words::bonds_text(of_.bonds.gaps, of_.residues, ", ") +
                       '\n';
    text += confidence_line(polymer::confidence_of(of_.confidence));
    for (const std::string& note : of_.notes) text += "  note: " + note + '\n';
    text += "  whole chain: " + short_text(of_.knot, longest_knot) + " in " + percent(of_.share) + " of its closures" +
            (of_.matrix.beads() < fingerprint::fewest_knotted ? " (too short for a knot)\n" : "\n");
    const std::string warning = words::gap_warning(of_.bonds);
    if (!warning.empty()) text += "  " + warning + '\n';
    text += verdict_of(of_).text();
    if (of_.depth)
        text += "  depth: the knot stays when up to " + std::to_string((*of_.depth)[0]) +
                " beads are taken off the front, or " + std::to_string((*of_.depth)[1]) + " off the back" +
                within(std::max(of_.depth_within[0], of_.depth_within[1])) + '\n';
    if (of_.core_from_top)
        text += "  core from the top: " +
                words::range(of_.residues[of_.core_from_top->first], of_.residues[of_.core_from_top->last]) + '\n';
    text += places_.empty() ? "  no subchain has a knot in " + percent(least_share_) + " of its closures\n" : table();
    text += "  " + counted(of_.tested, "subchain") + " closed, " +
            (of_.step == 1 ? "every one" : "on a grid of " + std::to_string(of_.step) + ", refined at borders") + '\n';
    if (of_.borders_within > 1)
        text += "  other borders are followed" + within(of_.borders_within).substr(1) +
                " only; --step N follows all to the residue, and takes longer\n";
    return text;
}

std::string FingerprintEntry::table() const {
    std::vector<std::string> names{"knot"};
    for (const KnotPlace& place : places_) names.push_back(short_text(place.knot, widest_knot_column));
    const std::size_t width = words::widest(names, 10);
    std::string text =
        "  " + words::left(names.front(), width) + "    share  greatest  core             beads  tails\n";
    for (std::size_t i = 0; i < places_.size(); ++i) {
        const KnotPlace& place = places_[i];
        text += "  " + words::left(names[i + 1], width) + words::right(percent(place.share), 9) +
                words::right(percent(place.greatest_share), 10) + "  ";
        if (place.core) {
            const auto [before, after] = fingerprint::tails_of(*place.core, of_.matrix.beads());
            text += words::left(words::range(of_.residues[place.core->first], of_.residues[place.core->last]), 14) +
                    words::right(std::to_string(place.core->size()), 8) + "  " + std::to_string(before) + " and " +
                    std::to_string(after);
        } else
            text +=
                of_.core_share == 0.5 ? "none with one half" : "none with a share of " + words::general(of_.core_share);
        text += within(place.core_within) +
                (place.kind == PlaceKind::knot ? "\n" : ", " + fingerprint::text(place.kind) + '\n');
        text += place_confidence(place, of_);
    }
    return text;
}

Json FingerprintEntry::json() const {
    Json entry = {{"file", of_.file},
                  {"model", text_or_null(of_.model)},
                  {"chain", of_.chain},
                  {"residues", of_.matrix.beads()},
                  {"gaps", words::bonds_text(of_.bonds.gaps, of_.residues, ", ")},
                  {"notes", of_.notes},
                  {"step", of_.step},
                  {"stretches", of_.tested}};
    add_knot(entry, of_.knot);
    entry["share"] = of_.share;
    entry["depth"] = of_.depth ? Json(*of_.depth) : Json(nullptr);
    entry["depth_within"] = of_.depth ? Json(of_.depth_within) : Json(nullptr);
    entry["borders_within"] = of_.borders_within;
    entry["knots"] = Json::array();
    for (const KnotPlace& place : places_) entry["knots"].push_back(json_of(place, of_));
    entry["verdict"] = verdict_of(of_).json();
    entry["core_from_top"] = nullptr;
    if (of_.core_from_top)
        entry["core_from_top"] = {{"first", of_.residues[of_.core_from_top->first].text()},
                                  {"last", of_.residues[of_.core_from_top->last].text()}};
    entry["confidence"] = confidence_json(polymer::confidence_of(of_.confidence));
    return entry;
}

std::vector<Row> FingerprintEntry::rows() const {
    const Row start{of_.file,
                    of_.model,
                    of_.chain,
                    std::to_string(of_.matrix.beads()),
                    words::bonds_text(of_.bonds.gaps, of_.residues, " "),
                    knots::text(of_.knot),
                    fixed(of_.share, digits_of_share)};
    const std::string borders = std::to_string(of_.borders_within), proven = yes_or_no(of_.knot.proven);
    std::vector<Row> rows;
    const auto add = [&](const Row& fields, const PlaceConfidence& parts) {
        Row top(2);
        if (of_.core_from_top)
            top = {of_.residues[of_.core_from_top->first].text(), of_.residues[of_.core_from_top->last].text()};
        rows.push_back(start);
        for (const Row& more :
             {fields, verdict_of(of_).row(), confidence_row(polymer::confidence_of(of_.confidence)),
              confidence_row(parts.core), confidence_row(parts.before), confidence_row(parts.after), top})
            rows.back().insert(rows.back().end(), more.begin(), more.end());
    };
    if (places_.empty()) add({"", "", "", "", "", "", "", "", "", borders, proven, "", ""}, {});
    for (const KnotPlace& place : places_) {
        Row core(4), core_within(1);
        if (place.core) {
            const auto [before, after] = fingerprint::tails_of(*place.core, of_.matrix.beads());
            core = {of_.residues[place.core->first].text(), of_.residues[place.core->last].text(),
                    std::to_string(before), std::to_string(after)};
            core_within = {std::to_string(place.core_within)};
        }
        add({knots::text(place.knot), fixed(place.share, digits_of_share), fixed(place.greatest_share, digits_of_share),
             core[0], core[1], core[2], core[3], yes_or_no(place.kind == PlaceKind::slipknot), core_within[0], borders,
             proven, yes_or_no(place.knot.proven), fingerprint::text(place.kind)},
            confidence_of(place, of_));
    }
    return rows;
}

std::vector<KnotPlace> places_shown(const fingerprint::ChainFingerprint& of, double least_share) {
    std::vector<KnotPlace> places = of.places;
    std::erase_if(places, [&](const KnotPlace& place) { return place.greatest_share < least_share; });
    return places;
}

std::string matrix_csv(const fingerprint::ChainFingerprint& of) {
    std::string table = words::csv_row({"first", "last", "knot", "share", "proven"});
    of.matrix.for_each_tested([&](fingerprint::Subchain s, const fingerprint::Cell& cell) {
        const knots::KnotType& knot = of.knots[cell.knot];
        table += words::csv_row({of.residues[s.first].text(), of.residues[s.last].text(), knots::text(knot),
                                 fixed(of.share_of(cell.closures), digits_of_share), yes_or_no(knot.proven)});
    });
    return table;
}

} // namespace loopwise::app
