#include "app/report/json_values.hpp"

namespace loopwise::app {

Json text_or_null(const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); }

Json residue_json(const polymer::ResidueId& residue) {
    return residue.is_number() ? Json(*residue.number()) : Json(residue.text());
}

Json bonds_json(const std::vector<polymer::OddBond>& bonds, const std::vector<polymer::ResidueId>& residues) {
    Json list = Json::array();
    for (const polymer::OddBond& bond : bonds)
        list.push_back({{"first", residues[bond.bead].text()},
                        {"second", residues[bond.bead + 1].text()},
                        {"length", bond.length},
                        {"missing", bond.missing}});
    return list;
}

void add_knot(Json& json, const knots::KnotType& knot) {
    json["knot"] = text(knot);
    json["names"] = names_of(knot);
    json["proven"] = knot.proven;
    if (const std::string why = why_not_proven(knot); !why.empty()) json["why_not_proven"] = why;
}

} // namespace loopwise::app
