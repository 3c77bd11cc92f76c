// Pictures of chains, and the data of the matrix picture.
#include "draw/matrix_picture.hpp"
#include "draw/picture.hpp"
#include "python/arrays.hpp"
#include "python/module.hpp"

namespace loopwise::python {
namespace {

std::string chain_picture(const py::object& chain) {
    const polymer::NamedChain named = named_chain_of(chain);
    if (named.beads.size() < 2)
        throw py::value_error("a chain of " + std::to_string(named.beads.size()) + " beads cannot be drawn");
    const py::gil_scoped_release others;
    return draw::picture(named);
}

void bind_matrix_picture(py::module_& module) {
    using Picture = draw::MatrixPicture;
    py::class_<Picture>(module, "MatrixPicture", "The content of a picture of a fingerprint's matrix.")
        .def_readonly("beads", &Picture::beads)
        .def_readonly("dot", &Picture::dot)
        .def_property_readonly("rows",
                               [](const Picture& picture) {
                                   py::list rows;
                                   for (const auto& row : picture.rows) {
                                       py::list runs;
                                       for (const auto& [knot, shade, dots] : row)
                                           runs.append(py::make_tuple(knot, shade, dots));
                                       rows.append(runs);
                                   }
                                   return rows;
                               })
        .def_property_readonly("ticks",
                               [](const Picture& picture) {
                                   py::list ticks;
                                   for (const auto& [bead, label] : picture.ticks)
                                       ticks.append(py::make_tuple(bead, label));
                                   return ticks;
                               })
        .def_property_readonly("cores",
                               [](const Picture& picture) {
                                   py::list cores;
                                   for (const auto& [core, knot, label] : picture.cores)
                                       cores.append(py::make_tuple(core.first, core.last, knot, label));
                                   return cores;
                               })
        .def_readonly("knots", &Picture::knots)
        .def_readonly("colours", &Picture::colours)
        .def_readonly("legend", &Picture::legend)
        .def_readonly("is_legend_complete", &Picture::is_legend_complete)
        .def_readonly("title", &Picture::title)
        .def_readonly("about", &Picture::about)
        .def_readonly("first_axis", &Picture::first_axis)
        .def_readonly("last_axis", &Picture::last_axis);
}

} // namespace

void bind_pictures(py::module_& module) {
    bind_matrix_picture(module);
    module.def("chain_picture", chain_picture);
}

} // namespace loopwise::python
