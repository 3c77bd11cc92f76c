// Methods of closure, and plans of surveys.
#include "python/arguments.hpp"

#include "python/module.hpp"

#include <algorithm>

namespace loopwise::python {
namespace {

using namespace py::literals;

std::string replaced(std::string text, char from, char to) {
    std::replace(text.begin(), text.end(), from, to);
    return text;
}

survey::Plan plan_of(const py::object& method, const py::object& closures, const py::object& scale,
                     const py::object& seed, const py::object& threads, bool names, bool together) {
    survey::Plan plan;
    plan.method = method_of(method, together, true);
    plan.closures = closures.is_none() ? plan.method->default_closures : whole<std::size_t>("closures", closures, 1);
    plan.scale = scale_of(scale, plan.method);
    plan.seed = whole<std::uint64_t>("seed", seed);
    plan.threads = threads_of(threads);
    plan.name_knots = names;
    plan.together = together;
    return plan;
}

} // namespace

std::string python_name(std::string_view name) { return replaced(std::string(name), '-', '_'); }

survey::Method method_of(const py::object& name, bool together, bool with_ring) {
    if (name.is_none()) return survey::Method::standard(together);
    std::optional<survey::Method> method;
    try {
        method = survey::Method::named(replaced(py::str(name), '_', '-'), with_ring);
    } catch (const std::invalid_argument& unknown) {
        throw py::value_error(replaced(unknown.what(), '-', '_'));
    }
    if (together && (*method)->most_components == 0)
        throw py::value_error("method '" + python_name((*method)->name) + "' closes single chains: use '" +
                              python_name(survey::Method::standard(true)->name) + "' for several");
    return *method;
}

double scale_of(const py::object& scale, survey::Method method) {
    if (scale.is_none()) return method->default_scale;
    if (!method->takes_scale()) throw py::value_error("method '" + python_name(method->name) + "' takes no scale");
    const double number = PyFloat_AsDouble(scale.ptr());
    if (PyErr_Occurred()) throw py::error_already_set();
    if (!survey::is_scale(number))
        throw py::value_error(std::string(py::str("scale must be above {:.0f}, up to {:.0f}, not {}")
                                              .format(survey::scales_above, survey::largest_scale, scale)));
    return number;
}

unsigned threads_of(const py::object& threads) {
    if (!threads.is_none()) return whole<unsigned>("threads", threads, 1, survey::most_threads);
    const py::object processors = py::module_::import("os").attr("sched_getaffinity")(0);
    return static_cast<unsigned>(std::min<std::size_t>(py::len(processors), survey::most_threads));
}

void refuse_number(const char* name, const py::object& low, const py::object& high, const py::object& given) {
    throw py::value_error(std::string(py::str("{} must be from {} to {}, not {}").format(name, low, high, given)));
}

void bind_plan(py::module_& module) {
    using Row = survey::MethodRow;
    py::class_<Row>(module, "Method", "A method of closure.")
        .def_property_readonly("name", [](const Row& row) { return python_name(row.name); })
        .def_readonly("help", &Row::help)
        .def_readonly("closes", &Row::closes)
        .def_readonly("default_scale", &Row::default_scale);
    module.attr("methods") = std::vector<Row>(survey::all_methods().begin(), survey::all_methods().end());
    py::class_<survey::Plan>(module, "Plan", "How chains are closed, and how often.")
        .def(py::init(&plan_of), "method"_a, "closures"_a, "scale"_a, "seed"_a, "threads"_a, "names"_a, "together"_a)
        .def_readonly("closures", &survey::Plan::closures)
        .def_readonly("threads", &survey::Plan::threads);
}

} // namespace loopwise::python
