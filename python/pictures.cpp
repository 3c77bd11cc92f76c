// Pictures of results, as SVG, and what the package draws by itself.
#include "draw/matrix_picture.hpp"
#include "draw/picture.hpp"

#include "python/arrays.hpp"
#include "python/module.hpp"

#include <algorithm>

namespace loopwise::python {
namespace {

using namespace py::literals;

std::vector<survey::KnotCount> counts_of(const py::handle& knots) {
    std::vector<survey::KnotCount> counts;
    for (const auto& [knot, closures] : knots.cast<py::dict>())
        counts.push_back({knot.cast<knots::KnotType>(), closures.cast<std::size_t>()});
    return counts;
}

/// As much of a result as its picture shows. Each component is the chain's name, its labels, the knots, the closed
/// chain of the typical closure, and the positions that are left of it.
survey::Result result_of(const py::sequence& components, survey::Method method, const py::dict& whole) {
    survey::Result result;
    result.plan.method = method;
    result.whole.left = whole["left"].cast<std::map<std::size_t, std::size_t>>();
    result.whole.fully_reduced = whole["bare"].cast<std::size_t>();
    result.whole.knots = counts_of(whole["links"]);
    survey::ClosureResult typical;
    typical.closure = whole["closure"].cast<std::size_t>();
    for (const py::handle component : components) {
        const auto [name, labels, knots, xyz, kept] = component.cast<
            std::tuple<std::string, std::vector<std::string>, py::dict, Doubles, std::vector<std::size_t>>>();
        const Chain closed = chain_of(xyz, std::nullopt);
        std::vector<std::size_t> all(closed.size());
        for (std::size_t i = 0; i < all.size(); ++i) all[i] = i;
        typical.closed.push_back(survey::loop_at(closed, all, labels.size()));
        typical.reduced.push_back(survey::loop_at(closed, kept, labels.size()));

        survey::ComponentTally tally;
        tally.name =
            name.empty() && components.size() > 1 ? std::to_string(result.components.size() + 1) : name;
        tally.beads = labels.size();
        tally.residues = polymer::parsed(labels);
        tally.knots = counts_of(knots);
        const Chain open(closed.begin(), closed.begin() + static_cast<std::ptrdiff_t>(
                                                              std::min(labels.size(), closed.size())));
        tally.bonds = polymer::bonds_of({name, open, tally.residues});
        result.whole.beads += tally.beads;
        result.components.push_back(std::move(tally));
    }
    result.file = result.components.size() == 1 ? result.components.front().name : "structure";
    if (result.file.empty()) result.file = "chain";
    const bool fully_reduced = 2 * result.whole.fully_reduced >= result.counted();
    (fully_reduced ? result.first_fully_reduced : result.smallest) = std::move(typical);
    return result;
}

std::string survey_picture(const py::sequence& components, const std::string& method, const py::dict& whole) {
    const survey::Result result = result_of(components, survey::Method::named(method, true), whole);
    const py::gil_scoped_release others;
    return draw::picture(result, std::nullopt);
}

std::string chain_picture(const std::string& name, const Doubles& xyz,
                          const std::vector<std::string>& labels) {
    const polymer::NamedChain chain{name, chain_of(xyz, std::nullopt), polymer::parsed(labels)};
    if (labels.size() != chain.beads.size() || labels.size() < 2)
        throw py::value_error("a chain of " + std::to_string(labels.size()) + " beads cannot be drawn");
    const py::gil_scoped_release others;
    return draw::picture(chain);
}

using Subchains = py::array_t<std::uint16_t, py::array::forcecast>;

/// Of each subchain the number of its knot and the closures that gave it, as in the package.
fingerprint::FingerprintMatrix matrix_of(const Subchains& numbers, const Subchains& counts,
                                         std::size_t knots) {
    if (numbers.ndim() != 2 || numbers.shape(0) != numbers.shape(1) || counts.ndim() != 2 ||
        counts.shape(0) != numbers.shape(0) || counts.shape(1) != numbers.shape(1))
        throw py::value_error("a number and a count are needed for every subchain");
    const auto beads = static_cast<std::size_t>(numbers.shape(0));
    fingerprint::FingerprintMatrix matrix(beads, SIZE_MAX);
    const auto knot = numbers.unchecked<2>(), closures = counts.unchecked<2>();
    for (std::size_t first = 0; first < beads; ++first)
        for (std::size_t last = first; last < beads; ++last) {
            const auto row = static_cast<py::ssize_t>(first), column = static_cast<py::ssize_t>(last);
            if (knot(row, column) >= knots) throw py::value_error("a knot has no name");
            matrix.infer({first, last}, {knot(row, column), closures(row, column)});
        }
    return matrix;
}

/// As much of a fingerprint as its picture shows.
draw::MatrixPicture picture_of(const Subchains& numbers, const Subchains& counts, const py::dict& given,
                               const py::list& places) {
    const auto knots = given["types"].cast<std::vector<knots::KnotType>>();
    fingerprint::ChainFingerprint found{{given["closures"].cast<std::size_t>(),
                                         given["step"].cast<std::size_t>(), 0, knots,
                                         matrix_of(numbers, counts, knots.size())}};
    found.file = given["chain"].cast<std::string>();
    found.residues = polymer::parsed(given["labels"].cast<std::vector<std::string>>());
    found.knot = given["type"].cast<knots::KnotType>();
    found.share = given["share"].cast<double>();
    found.borders_within = given["borders_within"].cast<std::size_t>();
    for (const py::handle place : places) {
        const auto [knot, first, last, slipknot] =
            place.cast<std::tuple<knots::KnotType, std::size_t, std::size_t, bool>>();
        fingerprint::KnotPlace shown;
        shown.knot = knot;
        shown.core = fingerprint::Subchain{first, last};
        shown.slipknot = slipknot;
        found.places.push_back(std::move(shown));
    }
    const py::gil_scoped_release others;
    return draw::picture_of(found, found.places);
}

/// The SVG text, and what else a picture is drawn from.
py::dict fingerprint_picture(const Subchains& numbers, const Subchains& counts, const py::dict& given,
                             const py::list& places) {
    const draw::MatrixPicture picture = picture_of(numbers, counts, given, places);
    py::list rows, ticks, cores;
    for (const auto& row : picture.rows) {
        py::list runs;
        for (const auto& [knot, shade, dots] : row) runs.append(py::make_tuple(knot, shade, dots));
        rows.append(runs);
    }
    for (const auto& [bead, label] : picture.ticks) ticks.append(py::make_tuple(bead, label));
    for (const auto& [subchain, knot, label] : picture.cores)
        cores.append(py::make_tuple(subchain.first, subchain.last, knot, label));
    return py::dict("svg"_a = draw::matrix_svg(picture), "beads"_a = picture.beads, "dot"_a = picture.dot,
                    "rows"_a = rows, "knots"_a = picture.knots, "colours"_a = picture.colours,
                    "legend"_a = picture.legend, "is_legend_complete"_a = picture.is_legend_complete,
                    "ticks"_a = ticks, "cores"_a = cores, "title"_a = picture.title,
                    "about"_a = picture.about,
                    "axes"_a = py::make_tuple(picture.first_axis, picture.last_axis));
}

} // namespace

void bind_pictures(py::module_& module) {
    module.def("chain_picture", chain_picture);
    module.def("survey_picture", survey_picture);
    module.def("fingerprint_picture", fingerprint_picture);
}

} // namespace loopwise::python
