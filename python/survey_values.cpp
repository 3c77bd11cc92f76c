// The classes of a survey's result.
#include "python/survey_values.hpp"

#include "draw/picture.hpp"
#include "python/arguments.hpp"
#include "python/lock.hpp"
#include "python/pickle.hpp"

#include <algorithm>

namespace loopwise::python {
namespace {

/// One chain of a survey.
struct Component {
    SurveyPtr survey;
    std::size_t number;

    const survey::ComponentTally& tally() const { return survey->result.components[number]; }
};
/// Its smallest loop.
struct Core : Component {
    const survey::ComponentTally::Smallest& smallest() const { return *tally().smallest; }
};

} // namespace

template <>
constexpr auto
    converters<survey::Method> = std::pair([](const survey::Method& method) { return std::string(method->name); },
                                           [](const std::string& name) { return survey::Method::named(name, true); });
template <>
constexpr auto fields<survey::Plan> =
    [](auto& p) { return std::tie(p.method, p.closures, p.scale, p.seed, p.threads, p.name_knots, p.together); };
template <> constexpr auto fields<survey::Loop> = [](auto& l) { return std::tie(l.beads, l.own); };
template <>
constexpr auto fields<survey::ClosureResult> =
    [](auto& c) { return std::tie(c.closure, c.closed, c.reduced, c.knots, c.linking); };
template <> constexpr auto fields<knots::Linking> = [](auto& l) { return std::tie(l.all, l.pairs, l.numbers); };
template <> constexpr auto fields<survey::KnotCount> = [](auto& k) { return std::tie(k.knot, k.closures, k.jones); };
template <> constexpr auto fields<polymer::OddBond> = [](auto& b) { return std::tie(b.bead, b.length, b.missing); };
template <> constexpr auto fields<polymer::Bonds> = [](auto& b) { return std::tie(b.longest, b.gaps, b.close); };
template <>
constexpr auto fields<survey::Tally> =
    [](auto& t) { return std::tie(t.name, t.beads, t.left, t.fully_reduced, t.knots); };
template <>
constexpr auto fields<survey::PairTally> =
    [](auto& p) { return std::tuple_cat(fields<survey::Tally>(p), std::tie(p.one, p.other, p.numbers)); };
template <>
constexpr auto fields<survey::ComponentTally::Smallest> = [](auto& s) { return std::tie(s.closure, s.loop); };
template <>
constexpr auto fields<survey::ComponentTally> = [](auto& t) {
    return std::tuple_cat(fields<survey::Tally>(t), std::tie(t.bonds, t.kind, t.residues, t.notes, t.smallest));
};
template <>
constexpr auto fields<survey::Result> = [](auto& r) {
    return std::tie(r.file, r.model, r.notes, r.plan, r.whole, r.components, r.pairs, r.failed, r.first_fully_reduced,
                    r.smallest);
};
template <>
constexpr auto fields<ClosureTable> = [](auto& t) { return std::tie(t.closures, t.left, t.numbers, t.knots); };
template <> constexpr auto fields<Survey> = [](auto& s) { return std::tie(s.chains, s.result, s.table); };
template <> constexpr auto fields<Component> = [](auto& c) { return std::tie(c.survey, c.number); };
template <> constexpr auto fields<Core> = fields<Component>;

namespace {

using survey::ClosureResult;
using survey::KnotCount;
using survey::Result;

/// Knots, as text or as values, -> closures.
template <class Key> py::dict dict_of(const std::vector<KnotCount>& counts, const Key& key) {
    py::dict dict;
    for (const KnotCount& count : counts) dict[py::cast(key(count.knot))] = count.closures;
    return dict;
}
py::dict types_of(const std::vector<KnotCount>& counts) { return dict_of(counts, std::identity()); }
py::dict texts_of(const std::vector<KnotCount>& counts) { return dict_of(counts, text_of); }

/// Two of several chains, by their positions -> what the value says of them.
template <class Value> py::dict of_pairs(const Result& result, const Value& value) {
    py::dict dict;
    for (const survey::PairTally& pair : result.pairs) dict[py::make_tuple(pair.one, pair.other)] = value(pair);
    return dict;
}

std::vector<std::string> labels_of(const Core& core) {
    const survey::Loop& loop = core.smallest().loop;
    std::vector<std::string> labels;
    for (std::size_t i = 0; i < loop.beads.size(); ++i) labels.push_back(label_of(loop, i, core.tally()));
    return labels;
}

template <class Value> py::list list_of(const std::vector<survey::Loop>& loops, const Value& value) {
    py::list values;
    for (const survey::Loop& loop : loops) values.append(value(loop.beads));
    return values;
}

py::array_t<std::int64_t> rows_of(const std::vector<std::int64_t>& numbers, std::size_t rows) {
    const std::size_t columns = rows == 0 ? 0 : numbers.size() / rows;
    return py::array_t<std::int64_t>({rows, columns}, numbers.data());
}

py::object arrays_of_table(Survey& survey) {
    const ClosureTable& table = survey.table;
    const std::size_t rows = table.closures.size();
    if (!survey.arrays)
        survey.arrays = py::make_tuple(rows_of(table.closures, rows).attr("ravel")(), rows_of(table.left, rows),
                                       rows_of(table.numbers, rows), knot_texts(table.knots));
    return survey.arrays;
}

Component only_component(const SurveyPtr& survey) {
    const std::size_t chains = survey->result.components.size();
    if (chains > 1) throw py::value_error("the survey is of " + std::to_string(chains) + " chains: see its components");
    return {survey, 0};
}
Component only_component(const Component& component) { return component; }

std::vector<Component> components_of(const SurveyPtr& survey) {
    std::vector<Component> components;
    for (std::size_t i = 0; i < survey->result.components.size(); ++i) components.push_back({survey, i});
    return components;
}

const KnotCount* most_frequent(const Component& component) {
    const std::vector<KnotCount>& knots = component.tally().knots;
    return knots.empty() ? nullptr : &knots.front();
}

double share_of_counted(const SurveyPtr& survey, bool (*is_counted)(const KnotCount&, const KnotCount& most)) {
    std::size_t closures = 0;
    const std::vector<KnotCount>& knots = only_component(survey).tally().knots;
    for (const KnotCount& count : knots)
        if (is_counted(count, knots.front())) closures += count.closures;
    return closures == 0 ? 0.0 : static_cast<double>(closures) / static_cast<double>(survey->result.counted());
}

std::string picture_of(const Survey& survey) {
    if (!survey.result.typical()) throw py::value_error("every closure failed: there is nothing to draw");
    const Unlocked others;
    return draw::picture(survey.result, std::nullopt);
}

/// What a component has, and the survey of a single chain has of it.
template <class Self, class Bound> void bind_one_chain(Bound& bound) {
    const auto property = [&](const char* name, const char* doc, auto get) {
        bound.def_property_readonly(
            name, [get](const Self& self) { return get(only_component(self)); }, doc);
    };
    property("chain", "The chain, as it was given.",
             [](const Component& c) -> py::object { return c.survey->chains[py::int_(c.number)]; });
    property("types", "Knots as :class:`KnotType` -> closures, the most frequent first; empty if not named.",
             [](const Component& c) { return types_of(c.tally().knots); });
    property("knots", "Knots as text -> closures, the most frequent first; empty if not named.",
             [](const Component& c) { return texts_of(c.tally().knots); });
    property("knot", "The most frequent knot as text; None if no closure was named.", [](const Component& c) {
        const KnotCount* most = most_frequent(c);
        return most ? std::optional(text(most->knot)) : std::nullopt;
    });
    property("proven", "Whether the most frequent knot is proven, see :class:`KnotType`.",
             [](const Component& c) { return most_frequent(c) && most_frequent(c)->knot.proven; });
    property("smallest", "The smallest loop that is not fully reduced, a :class:`Core`; None if there is none.",
             [](const Component& c) { return c.tally().smallest ? std::optional(Core{c}) : std::nullopt; });
}

void bind_component(py::module_& module) {
    py::class_<Component> bound(module, "Component", "What the closures of a survey made of one chain.");
    bind_one_chain<Component>(bound);
    const Property property{bound};
    property("left", "Number of beads left -> closures.", [](const Component& c) { return c.tally().left; });
    property("bare", "Closures whose loop is fully reduced: three beads are left.",
             [](const Component& c) { return c.tally().fully_reduced; });
    bound.def(pickled<Component>());
}

void bind_core(py::module_& module) {
    py::class_<Core> bound(module, "Core", "The smallest loop of a chain that is not fully reduced.");
    const Property property{bound};
    property("closure", "The number of its closure.", [](const Core& c) { return c.smallest().closure; });
    property("kept", "Positions of the m beads left in the closed chain, where the closure's follow the chain's.",
             [](const Core& c) { return positions_of(c.smallest().loop.beads); });
    property("xyz", "Their coordinates, (m, 3), in the unit of the chain.",
             [](const Core& c) { return coordinates_of(c.smallest().loop.beads); });
    property("labels", "Their labels; +1, +2, ... for beads of the closure.", labels_of);
    bound.def(pickled<Core>());
}

void bind_specimen(py::module_& module) {
    py::class_<ClosureResult> bound(module, "Specimen", "One closure, before and after the reduction.");
    const Property property{bound};
    property("closure", "Its number.", &ClosureResult::closure);
    property("closed", "For each chain the coordinates (m, 3) of its own beads, then those of its closure.",
             [](const ClosureResult& c) { return list_of(c.closed, coordinates_of); });
    property("kept", "For each chain the positions among them that are left.",
             [](const ClosureResult& c) { return list_of(c.reduced, positions_of); });
    property("knots", "The knot of each chain as text; empty if not named.",
             [](const ClosureResult& c) { return knot_texts(c.knots); });
    bound.def(pickled<ClosureResult>());
}

template <class Bound> void bind_result(Bound& bound) {
    const auto property = [&](const char* name, const char* doc, auto get) {
        bound.def_property_readonly(
            name, [get](const Survey& survey) { return get(survey.result); }, doc);
    };
    property("method", "The name of the method; \"ring\" for chains that end where they begin.",
             [](const Result& r) { return python_name(r.plan.method->name); });
    property("closures", "Closures that were tried.", [](const Result& r) { return r.plan.closures; });
    property("scale", "The scale, see :func:`close`; None for a method without one.",
             [](const Result& r) { return r.plan.method->takes_scale() ? std::optional(r.plan.scale) : std::nullopt; });
    property("seed", "The seed; None for a method that is not random.",
             [](const Result& r) { return r.plan.method->random ? std::optional(r.plan.seed) : std::nullopt; });
    property("counted", "Closures that could be made.", [](const Result& r) { return r.counted(); });
    property("failed", "Closures that could not be made.", [](const Result& r) { return r.failed; });
    property("left", "Number of beads left, of all chains together -> closures.",
             [](const Result& r) { return r.whole.left; });
    property("bare", "Closures whose loops are all fully reduced: three beads are left of each.",
             [](const Result& r) { return r.whole.fully_reduced; });
    property("link_types", "What several chains are together, as :class:`KnotType` -> closures; empty for one.",
             [](const Result& r) { return types_of(r.whole.knots); });
    property("links", "The same as text -> closures, the most frequent first.",
             [](const Result& r) { return texts_of(r.whole.knots); });
    property("linking_numbers", "Two of several chains, by their positions -> linking number -> closures.",
             [](const Result& r) { return of_pairs(r, [](const auto& pair) { return pair.numbers; }); });
    property("pair_links", "Two of several chains, by their positions -> links as text -> closures.",
             [](const Result& r) { return of_pairs(r, [](const auto& pair) { return texts_of(pair.knots); }); });
    property("typical",
             "The closure to look at: where most are fully reduced the first of these, otherwise the one "
             "with the\n"
             "fewest beads left. None if every closure failed.",
             [](const Result& r) { return r.typical() ? std::optional(*r.typical()) : std::nullopt; });
}

} // namespace

void bind_survey_values(py::module_& module) {
    bind_component(module);
    bind_core(module);
    bind_specimen(module);
    py::class_<Survey, SurveyPtr> bound(module, "Survey",
                                        "The result of :func:`survey`. ``chain``, ``types``, ``knots``, "
                                        "``knot``, ``proven``, ``smallest``, ``share``\n"
                                        "and ``knotted`` are of a single chain; for several they raise "
                                        "ValueError, and ``components`` have their own.");
    bind_one_chain<SurveyPtr>(bound);
    bind_result(bound);
    const Property property{bound};
    property("components", "A :class:`Component` for each chain.", components_of);
    property("share", "The share of the most frequent knot among the counted closures, 0 to 1.",
             [](const SurveyPtr& s) {
                 return share_of_counted(s, [](const KnotCount& k, const KnotCount& most) { return &k == &most; });
             });
    property("knotted", "The share of the counted closures that are a knot; a loop without a name is none.",
             [](const SurveyPtr& s) {
                 return share_of_counted(s, [](const KnotCount& k, const KnotCount&) { return k.knot.is_knot(); });
             });
    property("table",
             "The counted closures: their numbers (m,); the beads left of each chain (m, chains); the "
             "numbers of the\n"
             "knots (m, chains), or (m, 0) if not named; and the list of knots as text.",
             arrays_of_table);
    bound
        .def("to_svg", picture_of,
             "The typical closure before and after its reduction, as the text of an SVG picture. Raises "
             "ValueError if\n"
             "every closure failed.")
        .def(pickled<Survey>());
}

} // namespace loopwise::python
