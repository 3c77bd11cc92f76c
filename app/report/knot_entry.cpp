#include "app/report/knot_entry.hpp"

#include "app/commands/inputs.hpp"
#include "app/report/confidence_values.hpp"
#include "app/report/json_values.hpp"
#include "words/text.hpp"

namespace loopwise::app {
namespace {

std::string text_of(const std::string& label, const knots::KnotName& name) {
    std::string all = label + ": " + text(name.type) + '\n';
    if (name.type.status == knots::KnotStatus::no_polygon) return all;
    if (const std::string why = why_not_proven(name.type); !why.empty()) all += "  not proven: " + why + '\n';
    all += "  crossings: " + std::to_string(name.crossings) + '\n';
    for (const auto& [invariant, value] : name.invariants)
        all += std::string("  ") + invariant->name + ": " + text(value) + '\n';
    return all;
}

void add_name(Json& json, const knots::KnotName& name) {
    add_knot(json, name.type);
    json["crossings"] = name.crossings;
    for (const auto& [invariant, value] : name.invariants) json[invariant->key] = text(value);
}

/// By the columns of knot_head(), between the beads and the linking number.
Row fields_of(const knots::KnotName& name) {
    Row row{text(name.type), words::yes_or_no(name.type.proven), std::to_string(name.crossings)};
    for (const knots::Invariant& invariant : knots::all_invariants()) {
        std::string& field = row.emplace_back();
        for (const auto& [computed, value] : name.invariants)
            if (computed == &invariant) field = text(value);
    }
    return row;
}

Row row_of(const polymer::Molecule& molecule, const std::string& chain, std::size_t beads, Row name,
           const std::string& linking, const std::vector<std::string>& notes,
           const std::optional<polymer::Confidence>& confidence = {}) {
    Row row{molecule.file, molecule.model, chain, std::to_string(beads)};
    name.resize(fields_of({}).size());
    row = extended(extended(std::move(row), name), {linking, words::joined(notes, "; ")});
    return extended(std::move(row), confidence_row(confidence));
}

} // namespace

Head knot_head() {
    Row columns{"file", "model", "chain", "beads", "knot", "proven", "crossings"};
    for (const knots::Invariant& invariant : knots::all_invariants()) columns.emplace_back(invariant.key);
    columns.insert(columns.end(), {"linking", "notes"});
    return {"knot", "", {}, extended(std::move(columns), confidence_columns())};
}

std::string PolygonEntry::text() const {
    const std::string label = label_of(molecule, chain);
    std::string all;
    for (const std::string& note : chain.notes) all += label + ": note: " + note + '\n';
    return all + text_of(label, name) + confidence_line(polymer::confidence_of(chain.confidence)) +
           (warning.empty() ? "" : "  " + warning + '\n');
}

Json PolygonEntry::json() const {
    Json json = {{"file", molecule.file},
                 {"model", text_or_null(molecule.model)},
                 {"chain", chain.name},
                 {"beads", chain.beads.size()},
                 {"notes", chain.notes}};
    add_name(json, name);
    json["warning"] = text_or_null(warning);
    json["confidence"] = confidence_json(polymer::confidence_of(chain.confidence));
    return json;
}

std::vector<Row> PolygonEntry::rows() const {
    std::vector<std::string> notes = chain.notes;
    if (!warning.empty()) notes.push_back(warning);
    return {row_of(molecule, chain.name, chain.beads.size(), fields_of(name), "", notes,
                   polymer::confidence_of(chain.confidence))};
}

std::string LinkEntry::text() const {
    const auto& chains = molecule.chains;
    std::vector<std::string> first;
    for (std::size_t i = 0; i + 1 < chains.size(); ++i) first.push_back(chains[i].name);
    std::string all;
    if (name)
        all = text_of(label_of(molecule) + ": chains " + words::listed(first) + " and " + chains.back().name, *name);
    for (const Pair& pair : pairs)
        all += "  " + chains[pair.one].name + " and " + chains[pair.other].name + ": " + knots::text(pair.type) +
               ", linking number " + std::to_string(pair.linking) + '\n';
    return all;
}

Json LinkEntry::json() const {
    Json json = {{"file", molecule.file}, {"model", text_or_null(molecule.model)}, {"chains", Json::array()}};
    for (const polymer::NamedChain& chain : molecule.chains) json["chains"].push_back(chain.name);
    if (name) add_name(json, *name);
    json["pairs"] = Json::array();
    for (const Pair& pair : pairs) {
        Json& entry = json["pairs"].emplace_back();
        entry["chains"] = {molecule.chains[pair.one].name, molecule.chains[pair.other].name};
        add_knot(entry, pair.type);
        entry["linking"] = pair.linking;
    }
    return json;
}

/// Two polygons are in one row; of more, the first row is about all of them.
std::vector<Row> LinkEntry::rows() const {
    std::vector<Row> rows;
    if (name && pairs.size() != 1) {
        std::vector<std::string> names;
        std::size_t beads = 0;
        for (const polymer::NamedChain& chain : molecule.chains) {
            names.push_back(chain.name);
            beads += chain.beads.size();
        }
        rows.push_back(row_of(molecule, words::joined(names, "+"), beads, fields_of(*name), "", {}));
    }
    for (const Pair& pair : pairs) {
        const polymer::NamedChain &a = molecule.chains[pair.one], &b = molecule.chains[pair.other];
        rows.push_back(row_of(molecule, a.name + '+' + b.name, a.beads.size() + b.beads.size(),
                              pairs.size() == 1 ? fields_of(*name)
                                                : Row{knots::text(pair.type), words::yes_or_no(pair.type.proven)},
                              std::to_string(pair.linking), {}));
    }
    return rows;
}

} // namespace loopwise::app
