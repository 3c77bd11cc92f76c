// What Python's functions are told in numbers and names, checked.
#pragma once

#include "python/arrays.hpp"
#include "survey/plan.hpp"

#include <limits>

namespace loopwise::python {

/// The method with this name, written with underscores as Python does; the default for None. Raises ValueError for
/// another name, and for a method that does not close several chains together where it has to.
survey::Method method_of(const py::object& name, bool together, bool with_ring = false);

/// The name of a method with underscores.
std::string python_name(std::string_view name);

/// The scale; for None the method's own. Raises ValueError.
double scale_of(const py::object& scale, survey::Method method);

/// The number of threads; for None one for each processor of this process.
unsigned threads_of(const py::object& threads);

[[noreturn]] void refuse_number(const char* name, const py::object& low, const py::object& high,
                                const py::object& given);

/// A whole number within limits. Raises TypeError for what is no whole number, ValueError out of the limits.
template <class Number>
Number whole(const char* name, const py::object& given, Number low = std::numeric_limits<Number>::min(),
             Number high = std::numeric_limits<Number>::max()) {
    const auto number = py::reinterpret_steal<py::object>(PyNumber_Index(given.ptr()));
    if (!number) throw py::error_already_set();
    const py::int_ lowest(low), highest(high);
    if (number < lowest || number > highest) refuse_number(name, lowest, highest, number);
    return number.cast<Number>();
}

} // namespace loopwise::python
