#include "python/arrays.hpp"

#include <cmath>
#include <cstring>

namespace loopwise::python {
namespace {

constexpr py::ssize_t coordinates = 3;

double element(const char* at) { // which need not be aligned
    double number = 0.0;
    std::memcpy(&number, at, sizeof number);
    return number;
}

[[noreturn]] void refuse_not_finite(py::ssize_t bead, const ChainAtom& a) {
    const std::string place = py::repr(py::make_tuple(a.x, a.y, a.z));
    throw py::value_error("coordinates must be finite, not " + place + " at position " + std::to_string(bead));
}

/// As "(4, 2)".
std::string shape_of(const py::array& array) { return py::repr(array.attr("shape")); }

bool is_finite(const ChainAtom& a) { return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z); }

} // namespace

Chain chain_of(const Doubles& xyz, const Ids& ids, Finite finite) {
    if (xyz.ndim() != 2 || xyz.shape(1) != coordinates)
        throw py::value_error("coordinates must have the shape (n, 3), not " + shape_of(xyz));
    const py::ssize_t count = xyz.shape(0);
    Chain chain(static_cast<std::size_t>(count));
    const char* row = reinterpret_cast<const char*>(xyz.data());
    const py::ssize_t down = xyz.strides(0), right = xyz.strides(1);
    for (py::ssize_t i = 0; i < count; ++i, row += down) {
        const std::int32_t id = ids ? ids->at(i) : static_cast<std::int32_t>(i + 1);
        ChainAtom& atom = chain[static_cast<std::size_t>(i)];
        atom = {element(row), element(row + right), element(row + 2 * right), id};
        if (finite == Finite::needed && !is_finite(atom)) refuse_not_finite(i, atom);
    }
    return chain;
}

Structure structure_of(const py::sequence& components, Finite finite) {
    Structure structure;
    for (const py::handle component : components) {
        const auto [xyz, ids] = component.cast<std::pair<Doubles, Ids>>();
        structure.push_back(chain_of(xyz, ids, finite));
    }
    return structure;
}

polymer::NamedChain named_chain_of(const py::handle& chain) {
    polymer::NamedChain named;
    named.name = py::str(chain.attr("name"));
    named.beads = chain_of(chain.attr("xyz").cast<Doubles>(), chain.attr("ids").cast<Ids>());
    const py::object labels = chain.attr("_labels");
    named.residues =
        labels.is_none() ? polymer::residues_of(named.beads) : polymer::parsed(labels.cast<std::vector<std::string>>());
    return named;
}

py::array_t<double> coordinates_of(const Chain& chain) {
    py::array_t<double> xyz({static_cast<py::ssize_t>(chain.size()), coordinates});
    double* to = xyz.mutable_data();
    for (const ChainAtom& a : chain) *to++ = a.x, *to++ = a.y, *to++ = a.z;
    return xyz;
}

py::tuple arrays_of(const Chain& chain) {
    py::array_t<std::int32_t> ids(static_cast<py::ssize_t>(chain.size()));
    std::int32_t* to = ids.mutable_data();
    for (const ChainAtom& a : chain) *to++ = a.id;
    return py::make_tuple(coordinates_of(chain), ids);
}

py::list arrays_of(const Structure& structure) {
    py::list components;
    for (const Chain& chain : structure) components.append(arrays_of(chain));
    return components;
}

py::array_t<std::int64_t> positions_of(const Chain& chain) {
    py::array_t<std::int64_t> positions(static_cast<py::ssize_t>(chain.size()));
    std::int64_t* to = positions.mutable_data();
    for (const ChainAtom& a : chain) *to++ = a.id;
    return positions;
}

std::vector<PointR3> points_of(const Doubles& given, std::size_t rows) {
    const bool is_point = rows == 1 && given.ndim() == 1 && given.shape(0) == coordinates;
    const Doubles points = is_point ? Doubles(given.attr("reshape")(1, coordinates)) : given;
    if (points.ndim() != 2 || points.shape(0) != static_cast<py::ssize_t>(rows) || points.shape(1) != coordinates)
        throw py::value_error("points must have the shape " +
                              (rows == 1 ? std::string("(3,)") : "(" + std::to_string(rows) + ", 3)") + ", not " +
                              shape_of(given));
    std::vector<PointR3> result;
    for (const ChainAtom& a : chain_of(points, std::nullopt)) result.push_back({a.x, a.y, a.z});
    return result;
}

py::array_t<double> array_of(PointR3 point) {
    py::array_t<double> array(coordinates);
    double* to = array.mutable_data();
    to[0] = point.x, to[1] = point.y, to[2] = point.z;
    return array;
}

} // namespace loopwise::python
