// Names of closed polygons, and how they are linked.
#include "knots/links.hpp"
#include "python/background.hpp"
#include "python/module.hpp"

#include <map>

namespace loopwise::python {
namespace {

/// Naming a polygon of more beads is worth a thread, so that it can be interrupted.
constexpr std::size_t many_beads = 300;

const char* status_of(const knots::KnotType& type) {
    switch (type.status) {
    case knots::KnotStatus::named:
        return type.candidates.size() > 1 ? "several" : "named";
    case knots::KnotStatus::apart:
        return "named";
    case knots::KnotStatus::unknown:
        return "unknown";
    case knots::KnotStatus::too_complex:
        return "too complex";
    case knots::KnotStatus::no_polygon:
        return "bad polygon";
    case knots::KnotStatus::unnamed:
        break;
    }
    return "not named";
}

/// Exponents and their coefficients, those that are not 0.
std::map<double, std::int64_t> value_of(const knots::Laurent& polynomial) {
    std::map<double, std::int64_t> terms;
    double exponent = polynomial.twice_lowest / 2.0;
    for (const std::int64_t coefficient : polynomial.coefficients) {
        if (coefficient != 0) terms[exponent] = coefficient;
        ++exponent;
    }
    return terms;
}

std::int64_t value_of(std::int64_t number) { return number; }

std::string text_of(const knots::KnotType& type) { return text(type); }

void bind_knot_type(py::module_& module) {
    py::class_<knots::PrimeKnot>(module, "PrimeKnot")
        .def(py::pickle(
            [](const knots::PrimeKnot& k) {
                return py::make_tuple(k.crossings, k.number, static_cast<int>(k.hand), k.loops);
            },
            [](const py::tuple& state) {
                const auto [crossings, number, hand, loops] = state.cast<std::tuple<int, int, int, int>>();
                return knots::PrimeKnot{crossings, number, static_cast<knots::Hand>(hand), loops};
            }));
    py::class_<knots::KnotType>(module, "KnotType",
                                "What a polygon, or a link of two, is: a value to compare and to count.")
        .def_property_readonly("names", knots::names_of, "Every knot of the table that it can be.")
        .def_readonly("proven", &knots::KnotType::proven,
                      "Whether every knot that it can be is among the names.")
        .def_property_readonly("has_name", &knots::KnotType::has_name)
        .def_property_readonly("is_knot", &knots::KnotType::is_knot,
                               "Whether it has a name and is not the unknot.")
        .def("short", knots::short_text, py::arg("width"), "The text in at most so many characters.")
        .def("__str__", text_of)
        .def("__repr__", [](const knots::KnotType& type) { return "<KnotType " + text(type) + ">"; })
        .def(
            "__eq__", [](const knots::KnotType& a, const knots::KnotType& b) { return a == b; },
            py::is_operator())
        .def("__hash__", [](const knots::KnotType& type) { return std::hash<knots::KnotType>()(type); })
        .def(py::pickle(
            [](const knots::KnotType& k) {
                return py::make_tuple(static_cast<int>(k.status), k.proven, k.candidates, k.loops,
                                      k.jones.twice_lowest, k.jones.coefficients, k.crossings,
                                      static_cast<int>(k.fault));
            },
            [](const py::tuple& state) {
                const auto [status, proven, candidates, loops, lowest, coefficients, crossings, fault] =
                    state
                        .cast<std::tuple<int, bool, std::vector<knots::KnotSum>, std::vector<knots::KnotType>,
                                         int, std::vector<std::int64_t>, int, int>>();
                return knots::KnotType{static_cast<knots::KnotStatus>(status),
                                       proven,
                                       candidates,
                                       loops,
                                       {lowest, coefficients},
                                       crossings,
                                       static_cast<knots::PolygonFault>(fault)};
            }));
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
    py::dict invariants;
    for (const auto& [invariant, value] : name.invariants)
        invariants[invariant->key] = std::visit([](const auto& v) { return py::cast(value_of(v)); }, value);
    py::dict result;
    result["status"] = status_of(name.type);
    result["text"] = text(name.type);
    result["names"] = names_of(name.type);
    result["proven"] = name.type.proven;
    result["crossings"] = name.crossings;
    result["invariants"] = invariants;
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
    bind_knot_type(module);
    module.def("knot", knot);
    module.def("linking_numbers", linking_numbers);
}

} // namespace loopwise::python
