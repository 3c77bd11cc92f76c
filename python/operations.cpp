// Measures, closures, reductions, projections and predicates.
#include "python/arguments.hpp"
#include "python/background.hpp"
#include "python/module.hpp"
#include "src/closure/circle_arc.hpp"
#include "src/closure/closures.hpp"
#include "src/closure/point_tables.hpp"
#include "src/projection/projection.hpp"
#include "src/reduce/reduction.hpp"

namespace loopwise::python {
namespace {

/// Reductions of more beads are worth a thread, so that they can be interrupted.
constexpr std::size_t many_beads = 4000;

template <class What> What closed(What what, closure::Closing closing, survey::Method method) {
    switch (closing) {
    case closure::Closing::closed: return what;
    case closure::Closing::nothing_to_close: throw py::value_error("a chain without beads cannot be closed");
    case closure::Closing::no_such_row:
        throw py::value_error("closure must be from 0 to " + std::to_string(closure::uniform_rows - 1));
    case closure::Closing::too_many_components:
        throw py::value_error("too many chains: method '" + python_name(method->name) + "' closes at most " +
                              std::to_string(method->most_components) + " together");
    case closure::Closing::no_direction:
    case closure::Closing::no_arc: break;
    }
    throw py::value_error("method '" + python_name(method->name) +
                          "' finds no way around: centre and ends span no plane");
}

/// What methods are told; their draws come from the seed and the closure's number.
survey::ClosureInput input_of(survey::Method method, const py::object& scale, const py::object& seed,
                              const py::object& closure) {
    survey::Plan plan;
    plan.method = method;
    plan.scale = scale_of(scale, method);
    plan.seed = whole<std::uint64_t>("seed", seed);
    return survey::input_of(plan, whole<std::size_t>("closure", closure));
}

/// With a direction nothing is drawn.
py::tuple close_chain(const Doubles& xyz, const Ids& ids, const py::object& name, const py::object& direction,
                      const py::object& scale, const py::object& seed, const py::object& closure) {
    const survey::Method method = method_of(name, false);
    survey::ClosureInput input = input_of(method, scale, seed, closure);
    if (!direction.is_none()) {
        if (!method->takes_direction)
            throw py::value_error("method '" + python_name(method->name) + "' takes no direction");
        const int row = whole<int>("direction", direction, 0, closure::uniform_rows - 1);
        input.closure = static_cast<std::size_t>(row);
        input.draw = [row] { return row; };
    }
    Chain chain = chain_of(xyz, ids);
    closure::Closing closing = closure::Closing::closed;
    {
        const Unlocked others;
        closing = method->close_chain(chain, input);
    }
    return arrays_of(closed(std::move(chain), closing, method));
}

py::list close_structure(const py::sequence& components, const py::object& name, const py::object& scale,
                         const py::object& seed, const py::object& closure) {
    const survey::Method method = method_of(name, true);
    const survey::ClosureInput input = input_of(method, scale, seed, closure);
    Structure structure = structure_of(components);
    closure::Closing closing = closure::Closing::closed;
    {
        const Unlocked others;
        closing = method->close_structure(structure, input);
    }
    return arrays_of(closed(std::move(structure), closing, method));
}

/// Positions instead of identifiers. A loop stored with its first atom repeated at its end, which the reduction knows
/// by the identifiers, stays one.
void number_by_position(Chain& chain) {
    if (chain.empty()) return;
    const auto place = [](const ChainAtom& a) { return PointR3{a.x, a.y, a.z}; };
    const bool repeated =
        chain.front().id == chain.back().id && CompareEq(0.0, Dist(place(chain.front()), place(chain.back())));
    std::int32_t position = 0;
    for (ChainAtom& atom : chain) atom.id = position++;
    if (repeated) chain.back().id = 0;
}

std::size_t beads_of(const Chain& chain) { return chain.size(); }
std::size_t beads_of(const Structure& structure) {
    std::size_t beads = 0;
    for (const Chain& chain : structure) beads += chain.size();
    return beads;
}

template <class What> What reduced(What what, bool closed) {
    if (beads_of(what) > many_beads)
        return in_background<What>([what = std::move(what), closed](Job&) mutable {
            reduce::reduce(what, closed);
            return std::move(what);
        });
    const Unlocked others;
    reduce::reduce(what, closed);
    return what;
}

py::array_t<std::int64_t> reduce_chain(const Doubles& xyz, const Ids& ids, bool closed) {
    Chain chain = chain_of(xyz, ids);
    number_by_position(chain);
    return positions_of(reduced(std::move(chain), closed));
}

py::list reduce_structure(const py::sequence& components, bool closed) {
    Structure structure = structure_of(components);
    for (Chain& chain : structure) number_by_position(chain);
    py::list kept;
    for (const Chain& chain : reduced(std::move(structure), closed)) kept.append(positions_of(chain));
    return kept;
}

py::array_t<double> project_chain(const Doubles& xyz, const Ids& ids, const py::object& direction, bool closed) {
    const int row = whole<int>("direction", direction, 0, closure::fullerene_rows - 1);
    const std::vector<Edge> edges = projection::project(chain_of(xyz, ids), row, closed);
    py::array_t<double> result({static_cast<py::ssize_t>(edges.size()), py::ssize_t{2}, py::ssize_t{3}});
    double* to = result.mutable_data();
    for (const Edge& edge : edges)
        for (const PointR3 p : {edge.start, edge.end}) *to++ = p.x, *to++ = p.y, *to++ = p.z;
    return result;
}

void bind_measures(py::module_& module) {
    module.def("centre", [](const Doubles& xyz) { return array_of(CentreOfChain(chain_of(xyz, {}))); });
    module.def("radius", [](const Doubles& xyz) { return RadiusOfChain(chain_of(xyz, {})); });
    module.def("diameter", [](const Doubles& xyz) {
        const Chain chain = chain_of(xyz, {});
        const Unlocked others;
        return DiameterOfChain(chain);
    });
    module.def("diameter_together", [](const py::sequence& components) {
        const Structure structure = structure_of(components);
        const Unlocked others;
        return DiameterOfStructure(structure);
    });
    module.def("max_id", [](const py::sequence& components) {
        Structure structure = structure_of(components, Finite::any);
        return maxIdComps(structure);
    });
    module.def("is_empty", [](const py::sequence& components) {
        Structure structure = structure_of(components, Finite::any);
        return IsEmptyStructure(structure);
    });
    module.def("distance", [](const Doubles& a, const Doubles& b) {
        return Dist(points_of(a, 1).front(), points_of(b, 1).front());
    });
}

void bind_predicates(py::module_& module) {
    module.def("compare_eq", CompareEq);
    module.def("compare_gt", CompareGt);
    module.def("compare_geq", CompareGeq);
    module.def("intersection", [](const Doubles& triangle, const Doubles& segment) {
        return intersection(points_of(triangle, 3).data(), points_of(segment, 2).data());
    });
    module.def("segments_cross", TwoSegmentsCrossedSimple);
    module.def("on_segment", on_segment);
    module.def("orientation", det_segments);
    module.def("scalar_product", [](const Doubles& a, const Doubles& b) {
        PointR3 p = points_of(a, 1).front(), q = points_of(b, 1).front();
        double u[] = {p.x, p.y, p.z}, v[] = {q.x, q.y, q.z};
        return ScalarProduct(u, v);
    });
    module.def("determinant", [](const Doubles& matrix) {
        double rows[3][3] = {};
        double* to = rows[0];
        for (const PointR3 p : points_of(matrix, 3)) *to++ = p.x, *to++ = p.y, *to++ = p.z;
        return Determinant(rows[0], rows[1], rows[2]);
    });
    module.def("project_point", [](const Doubles& point, const Doubles& direction) {
        return array_of(ProjectPointF(points_of(point, 1).front(), points_of(direction, 1).front()));
    });
}

} // namespace

void bind_operations(py::module_& module) {
    bind_measures(module);
    bind_predicates(module);
    module.def("close", close_chain);
    module.def("close_together", close_structure);
    module.def("arc", [](const Doubles& start, const Doubles& end, const Doubles& centre, double radius,
                         const py::object& last_id) {
        if (!std::isfinite(radius)) throw py::value_error("radius must be finite, not " + std::to_string(radius));
        const auto one = [](const Doubles& point) { return points_of(point, 1).front(); };
        return arrays_of(
            closure::circle_arc(one(start), one(end), one(centre), radius, whole<std::int32_t>("last_id", last_id))
                .atoms);
    });
    module.def("reduce", reduce_chain);
    module.def("reduce_together", reduce_structure);
    module.def("project", project_chain);
}

} // namespace loopwise::python
