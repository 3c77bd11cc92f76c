// Names of closed polygons, and how they are linked.
#include "knots/links.hpp"
#include "python/background.hpp"
#include "python/module.hpp"

#include <map>

namespace loopwise::python {
namespace {

/// Naming a polygon of more beads is worth a thread, so that it can be interrupted.
constexpr std::size_t many_beads = 300;

const char* name_of(knots::KnotStatus status) {
    switch (status) {
    case knots::KnotStatus::named:
        return "named";
    case knots::KnotStatus::several:
        return "several";
    case knots::KnotStatus::unknown:
        return "unknown";
    case knots::KnotStatus::too_complex:
        return "too complex";
    case knots::KnotStatus::bad_polygon:
        break;
    }
    return "bad polygon";
}

/// Exponents and their coefficients, those that are not 0.
std::map<double, std::int64_t> terms_of(const knots::Laurent& polynomial) {
    std::map<double, std::int64_t> terms;
    double exponent = polynomial.twice_lowest / 2.0;
    for (const std::int64_t coefficient : polynomial.coefficients) {
        if (coefficient != 0) terms[exponent] = coefficient;
        ++exponent;
    }
    return terms;
}

/// A knot, or the link of two polygons.
knots::KnotName named(const Structure& polygons) {
    return polygons.size() == 1 ? knots::knot_of(polygons.front())
                                : knots::link_of(polygons.front(), polygons.back());
}

template <class Result, class Work> Result maybe_in_background(Structure polygons, const Work& work) {
    std::size_t beads = 0;
    for (const Chain& polygon : polygons) beads += polygon.size();
    if (beads > many_beads)
        return in_background<Result>([polygons = std::move(polygons), work](Job&) { return work(polygons); });
    const py::gil_scoped_release others;
    return work(polygons);
}

py::dict knot(const py::sequence& polygons) {
    const knots::KnotName name = maybe_in_background<knots::KnotName>(structure_of(polygons), named);
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

knots::Linking linking(const Structure& polygons) {
    std::vector<std::span<const ChainAtom>> loops(polygons.begin(), polygons.end());
    return knots::linking_of(loops);
}

py::dict linking_numbers(const py::sequence& polygons) {
    const std::size_t count = polygons.size();
    const knots::Linking linked = maybe_in_background<knots::Linking>(structure_of(polygons), linking);
    if (linked.fault != knots::PolygonFault::none)
        throw py::value_error("the polygons meet, or one has fewer than three beads or two at one place");
    py::dict numbers;
    auto number = linked.numbers.begin();
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t j = i + 1; j < count && number != linked.numbers.end(); ++j)
            numbers[py::make_tuple(i, j)] = *number++;
    return numbers;
}

} // namespace

void bind_knots(py::module_& module) {
    module.def("knot", knot);
    module.def("linking_numbers", linking_numbers);
}

} // namespace loopwise::python
