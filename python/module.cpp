// The compiled half of the Python package `loopwise`: what its functions do, on arrays and tuples. Their names,
// defaults and documentation are in the package.
#include "python/module.hpp"

#include "python/lock.hpp"

PYBIND11_MODULE(_core, module) {
    using namespace loopwise::python;
    module.attr("version") = LOOPWISE_VERSION;
    bind_chain(module);
    bind_operations(module);
    bind_plan(module);
    bind_knots(module);
    bind_survey(module);
    bind_fingerprint(module);
    pybind11::module_::import("atexit").attr("register")(pybind11::cpp_function(&begin_exit));
}
