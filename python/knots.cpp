// Names of closed polygons, and how they are linked.
#include "knots/links.hpp"
#include "python/background.hpp"
#include "python/module.hpp"
#include "python/pickle.hpp"

#include <map>

namespace loopwise::python {

template <>
constexpr auto fields<knots::KnotName> = [](auto& n) { return std::tie(n.type, n.crossings, n.invariants); };

template <> constexpr auto fields<knots::ComputedInvariant> = [](auto& i) { return std::tie(i.invariant, i.value); };
using InvariantRow = const knots::Invariant*;
template <>
constexpr auto converters<InvariantRow> = std::pair([](InvariantRow row) { return std::string(row->key); },
                                                    [](const std::string& key) {
                                                        for (const knots::Invariant& row : knots::all_invariants())
                                                            if (row.key == key) return &row;
                                                        throw py::value_error("no invariant has the key " + key);
                                                    });

namespace {

using namespace py::literals;

/// Naming a polygon of more beads is worth a thread, so that it can be interrupted.
constexpr std::size_t many_beads = 300;

const char* status_of(const knots::KnotType& type) {
    // By KnotStatus.
    constexpr std::array texts{"named", "named", "unknown", "too complex", "bad polygon", "not named"};
    return type.candidates.size() > 1 ? "several" : texts[static_cast<std::size_t>(type.status)];
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

py::dict values_of(const knots::KnotName& name) {
    py::dict values;
    for (const auto& [invariant, value] : name.invariants)
        values[invariant->key] = std::visit([](const auto& v) { return py::cast(value_of(v)); }, value);
    return values;
}

/// By the names for people.
py::dict invariant_texts_of(const knots::KnotName& name) {
    py::dict texts;
    for (const auto& [invariant, value] : name.invariants) texts[invariant->name] = text(value);
    return texts;
}

std::map<double, std::int64_t> polynomial_of(const knots::KnotName& name, const char* key) {
    const knots::Laurent* polynomial = knots::find_polynomial(name.invariants, key);
    return polynomial ? value_of(*polynomial) : std::map<double, std::int64_t>{};
}

std::optional<std::string> only_name_of(const knots::KnotName& name) {
    const std::vector<std::string> names = names_of(name.type);
    return names.size() == 1 ? std::optional(names.front()) : std::nullopt;
}

void bind_knot_type(py::module_& module) {
    using Type = knots::KnotType;
    py::class_<Type> bound(module, "KnotType",
                           "The type of a closed polygon, or of a link: a value to compare, hash, "
                           "count and pickle. Two are equal\n"
                           "if their texts are: the same knot as far as the invariants tell, proven for "
                           "both or for neither. str() gives\n"
                           "the text, as \"-3_1\", \"+3_1 # 4_1\", \"beyond ten crossings\", \"-5_1 or beyond "
                           "ten crossings\" or \"not named:\n"
                           "repeated beads\".");
    bound.attr("__module__") = "loopwise";
    const Property property{bound};
    property("names", "Names in Rolfsen's table that fit, as \"+3_1\"; empty if there is none.", knots::names_of);
    property("proven",
             "Whether every knot that the polygon can be is among the names. Otherwise a knot of more "
             "crossings than\n"
             "the table has may share the invariants.",
             &Type::proven);
    property("why_not_proven", "The reason in a sentence; empty if it is proven.", knots::why_not_proven);
    property("has_name", "Whether the polynomials are known, even if no knot of the table has them.", &Type::has_name);
    property("is_knot", "Whether it has a name and is not the unknot.", &Type::is_knot);
    bound.def("short", knots::short_text, "width"_a, "The text in at most ``width`` characters, at least 4.")
        .def("__str__", text_of)
        .def("__repr__", [](const Type& type) { return "<KnotType " + text(type) + ">"; })
        .def(
            "__eq__", [](const Type& a, const Type& b) { return a == b; }, py::is_operator())
        .def("__hash__", std::hash<Type>())
        .def(pickled<Type>());
}

void bind_knot_name(py::module_& module) {
    using Name = knots::KnotName;
    py::class_<Name> bound(
        module, "Knot", "What a closed polygon is, or a link of several, as far as invariants tell: see :func:`knot`.");
    const Property property{bound};
    property("type", "The knot as a value to compare and to count.", &Name::type);
    property("status",
             "\"named\"; \"several\" names fit; \"unknown\" to the table; \"too complex\"; or \"bad polygon\".",
             [](const Name& n) { return status_of(n.type); });
    property("text", "The text of the type.", [](const Name& n) { return text(n.type); });
    property("names", "Rolfsen's numbers with a hand: \"0_1\", \"+3_1\", \"4_1\", \"+3_1 # -3_1\"; empty if none fits.",
             [](const Name& n) { return names_of(n.type); });
    property("name", "The one name; None if there is none or several fit.", only_name_of);
    property("proven", "Whether every knot that the polygon can be is among the names.",
             [](const Name& n) { return n.type.proven; });
    property("why_not_proven", "The reason in a sentence; empty if it is proven.",
             [](const Name& n) { return why_not_proven(n.type); });
    property("crossings", "Crossings of the simplified diagram.", &Name::crossings);
    property("invariants",
             "The computed invariants by their keys. A polynomial in t is a dict from exponents to coefficients.",
             values_of);
    property("invariant_texts", "The same as text, as {\"Jones polynomial\": \"t + t^3 - t^4\"}.", invariant_texts_of);
    property("jones", "The Jones polynomial, from exponents to coefficients; empty if it was not computed.",
             [](const Name& n) { return polynomial_of(n, "jones"); });
    property("alexander", "The Alexander polynomial likewise; empty for links.",
             [](const Name& n) { return polynomial_of(n, "alexander"); });
    bound.def("__str__", [](const Name& n) { return text(n.type); })
        .def(
            "__eq__", [](const Name& a, const Name& b) { return fields<Name>(a) == fields<Name>(b); },
            py::is_operator())
        .def(pickled<Name>());
}

/// A knot, or the link of several polygons.
knots::KnotName named(const Structure& polygons) {
    if (polygons.size() == 1) return knots::knot_of(polygons.front());
    return knots::link_of(std::vector<std::span<const ChainAtom>>(polygons.begin(), polygons.end()));
}

template <class Result, class Work> Result maybe_in_background(Structure polygons, const Work& work) {
    std::size_t beads = 0;
    for (const Chain& polygon : polygons) beads += polygon.size();
    if (beads > many_beads)
        return in_background<Result>([polygons = std::move(polygons), work](Job&) { return work(polygons); });
    const Unlocked others;
    return work(polygons);
}

knots::KnotName knot(const py::sequence& polygons) {
    return maybe_in_background<knots::KnotName>(structure_of(polygons), named);
}

knots::Linking linking(const Structure& polygons) {
    std::vector<std::span<const ChainAtom>> loops(polygons.begin(), polygons.end());
    return knots::linking_of(loops);
}

py::dict linking_numbers(const py::sequence& polygons) {
    const std::size_t count = polygons.size();
    const knots::Linking linked = maybe_in_background<knots::Linking>(structure_of(polygons), linking);
    if (linked.all.fault != knots::PolygonFault::none)
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
    bind_knot_name(module);
    module.def("knot", knot);
    module.def("linking_numbers", linking_numbers);
}

} // namespace loopwise::python
