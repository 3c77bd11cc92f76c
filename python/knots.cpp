// Names of closed polygons.
#include "background.hpp"
#include "knots/knot.hpp"
#include "module.hpp"

#include <map>

namespace loopwise {
namespace {

/// Naming a polygon of more beads is worth a thread, so that it can be interrupted.
constexpr std::size_t many_beads = 300;

const char* name_of(KnotStatus status) {
    switch (status) {
    case KnotStatus::named:
        return "named";
    case KnotStatus::several:
        return "several";
    case KnotStatus::unknown:
        return "unknown";
    case KnotStatus::too_complex:
        return "too complex";
    case KnotStatus::bad_polygon:
        break;
    }
    return "bad polygon";
}

/// Exponents and their coefficients, those that are not 0.
std::map<double, std::int64_t> terms_of(const Laurent& polynomial) {
    std::map<double, std::int64_t> terms;
    double exponent = polynomial.twice_lowest / 2.0;
    for (const std::int64_t coefficient : polynomial.coefficients) {
        if (coefficient != 0) terms[exponent] = coefficient;
        ++exponent;
    }
    return terms;
}

KnotName named(Chain polygon) {
    if (polygon.size() > many_beads)
        return in_background<KnotName>([polygon = std::move(polygon)](Job&) { return knot_of(polygon); });
    const py::gil_scoped_release others;
    return knot_of(polygon);
}

py::dict knot(const Doubles& xyz) {
    const KnotName name = named(chain_of(xyz, {}));
    py::dict result;
    result["status"] = name_of(name.status);
    result["text"] = name.text();
    result["names"] = name.names;
    result["proven"] = name.proven;
    result["crossings"] = name.crossings;
    result["jones"] = terms_of(name.jones);
    result["alexander"] = terms_of(name.alexander);
    return result;
}

} // namespace

void bind_knots(py::module_& module) { module.def("knot", knot); }

} // namespace loopwise
