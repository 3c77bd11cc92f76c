// What all JSON reports have in common: a head, and results that are written as they come.
#pragma once

#include "knots/knot_type.hpp"

#include <nlohmann/json.hpp>

#include <ostream>

namespace loopwise::app {

using Json = nlohmann::ordered_json;

/// Adds the fields `knot`, its text; `names`, the candidates; and `proven`.
void add_knot(Json& json, const knots::KnotType& knot);

class JsonResults {
  public:
    /// Writes the head, an object; `out` must outlive the results.
    JsonResults(std::ostream& out, const Json& head);

    void add(const Json& result);
    void finish() { out_ << "\n]}\n"; }

  private:
    std::ostream& out_;
    bool first_ = true;
};

} // namespace loopwise::app
