// Between numpy's arrays and the library's values.
#pragma once

#include "libloopwise.h"
#include "polymer/molecule.hpp"

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <optional>
#include <string>
#include <vector>

namespace loopwise::python {

namespace py = pybind11;

/// Read where it is, whatever its strides; converted once when it holds no doubles.
using Doubles = py::array_t<double, py::array::forcecast>;
using Ids = std::optional<py::array_t<std::int32_t, py::array::forcecast>>;

/// Whether infinities and not-a-numbers pass.
enum class Finite { needed, any };

/// A chain from (n, 3) coordinates and n identifiers, by default 1 to n. Raises ValueError.
Chain chain_of(const Doubles& xyz, const Ids& ids, Finite finite = Finite::needed);

/// The components of a structure, each a tuple (xyz, ids).
Structure structure_of(const py::sequence& components, Finite finite = Finite::needed);

/// A loopwise.Chain; its labels become residues. Raises ValueError where coordinates are not finite.
polymer::NamedChain named_chain_of(const py::handle& chain);

/// Coordinates and identifiers as new arrays.
py::tuple arrays_of(const Chain& chain);
py::list arrays_of(const Structure& structure);

/// The identifiers as an array of positions.
py::array_t<std::int64_t> positions_of(const Chain& chain);

py::array_t<double> coordinates_of(const Chain& chain);

/// Finite coordinates of `rows` points: an array (rows, 3), or (3,) for one.
std::vector<PointR3> points_of(const Doubles& points, std::size_t rows);
py::array_t<double> array_of(PointR3 point);

/// Adds a property to a class: its name, its documentation, and a member or how to get it.
template <class Bound> struct Property {
    Bound& bound;

    void operator()(const char* name, const char* doc, const auto& get) const {
        if constexpr (std::is_member_object_pointer_v<std::decay_t<decltype(get)>>)
            bound.def_readonly(name, get, doc);
        else
            bound.def_property_readonly(name, get, doc);
    }
};
template <class Bound> Property(Bound&) -> Property<Bound>;

} // namespace loopwise::python
