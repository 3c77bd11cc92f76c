// Values in JSON that several reports have.
#pragma once

#include "knots/knot_type.hpp"
#include "polymer/bonds.hpp"

#include <nlohmann/json.hpp>

namespace loopwise::app {

using Json = nlohmann::ordered_json;

/// The text, or null if it is empty.
Json text_or_null(const std::string& text);

/// A number if the residue is nothing else, otherwise its text.
Json residue_json(const polymer::ResidueId& residue);
Json bonds_json(const std::vector<polymer::OddBond>& bonds, const std::vector<polymer::ResidueId>& residues);

/// Adds the fields `knot`, its text; `names`, the candidates; `proven` and, if not, `why_not_proven`.
void add_knot(Json& json, const knots::KnotType& knot);

} // namespace loopwise::app
