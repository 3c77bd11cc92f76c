// What the files of the module add to it.
#pragma once

#include "survey/plan.hpp"

#include <pybind11/pybind11.h>

#include <string>

namespace loopwise::python {

void bind_chain(pybind11::module_& module);
void bind_operations(pybind11::module_& module);
void bind_survey(pybind11::module_& module);
void bind_fingerprint(pybind11::module_& module);
void bind_knots(pybind11::module_& module);
void bind_pictures(pybind11::module_& module);

/// Raises ValueError for another name.
survey::Method method_of(const std::string& name);

} // namespace loopwise::python
