// What the files of the module add to it.
#pragma once

#include <pybind11/pybind11.h>

namespace loopwise::python {

void bind_chain(pybind11::module_& module);
void bind_operations(pybind11::module_& module);
void bind_plan(pybind11::module_& module);
void bind_survey(pybind11::module_& module);
void bind_fingerprint(pybind11::module_& module);
void bind_knots(pybind11::module_& module);

} // namespace loopwise::python
