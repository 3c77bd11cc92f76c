// The knot of every subchain of a chain.
#include "fingerprint/fingerprint.hpp"

#include "draw/matrix_picture.hpp"
#include "python/arguments.hpp"
#include "python/background.hpp"
#include "python/module.hpp"
#include "python/pickle.hpp"
#include "python/survey_values.hpp"

namespace loopwise::python {
namespace {

using draw::MatrixPicture;
using fingerprint::ChainFingerprint;
using fingerprint::FingerprintMatrix;
using fingerprint::KnotPlace;
using fingerprint::PlaceKind;
using fingerprint::Subchain;
using Numbers = py::array_t<std::uint16_t>;
using Flags = py::array_t<bool>;

struct Fingerprint : ChainFingerprint {
    Fingerprint() : Fingerprint({{0, 1, 0, {}, FingerprintMatrix(0, SIZE_MAX)}}, py::none()) {}
    Fingerprint(ChainFingerprint found, py::object of) : ChainFingerprint(std::move(found)), given(std::move(of)) {}

    py::object given;                  ///< the loopwise.Chain
    py::object numbers, counts, flags; ///< squares, once they were asked for
};

/// A square of one number for each subchain, first beads down and last beads across; 0 below the diagonal.
template <class Number, class Value> py::array_t<Number> square(const FingerprintMatrix& matrix, const Value& value) {
    const auto beads = static_cast<py::ssize_t>(matrix.beads());
    py::array_t<Number> result({beads, beads});
    Number* to = result.mutable_data();
    for (std::size_t first = 0; first < matrix.beads(); ++first)
        for (std::size_t last = 0; last < matrix.beads(); ++last)
            *to++ = last < first ? Number{} : static_cast<Number>(value(Subchain{first, last}));
    return result;
}
Numbers numbers_of(const FingerprintMatrix& m) {
    return square<std::uint16_t>(m, [&](Subchain s) { return m.at(s).knot; });
}
Numbers counts_of(const FingerprintMatrix& m) {
    return square<std::uint16_t>(m, [&](Subchain s) { return m.at(s).closures; });
}
Flags tested_of(const FingerprintMatrix& m) {
    return square<bool>(m, [&](Subchain s) { return m.is_tested(s); });
}

using Squares = std::tuple<Numbers, Numbers, Flags>;

FingerprintMatrix matrix_of(const Squares& squares) {
    const auto knots = std::get<0>(squares).unchecked<2>(), counts = std::get<1>(squares).unchecked<2>();
    const auto tested = std::get<2>(squares).unchecked<2>();
    FingerprintMatrix matrix(static_cast<std::size_t>(knots.shape(0)), SIZE_MAX);
    for (py::ssize_t i = 0; i < knots.shape(0); ++i)
        for (py::ssize_t j = i; j < knots.shape(0); ++j) {
            const Subchain s{static_cast<std::size_t>(i), static_cast<std::size_t>(j)};
            const fingerprint::Cell cell{knots(i, j), counts(i, j)};
            tested(i, j) ? matrix.test(s, cell) : matrix.infer(s, cell);
        }
    return matrix;
}

} // namespace

template <>
constexpr auto converters<FingerprintMatrix> = std::pair(
    [](const FingerprintMatrix& m) { return Squares(numbers_of(m), counts_of(m), tested_of(m)); }, &matrix_of);
template <> constexpr auto fields<Subchain> = [](auto& s) { return std::tie(s.first, s.last); };
template <>
constexpr auto fields<KnotPlace> =
    [](auto& p) { return std::tie(p.knot, p.share, p.greatest_share, p.greatest, p.core, p.core_within, p.kind); };
/// All but what only the work needs.
template <>
constexpr auto fields<Fingerprint> = [](auto& f) {
    return std::tie(f.given, f.closures, f.step, f.tested, f.knots, f.matrix, f.file, f.residues, f.knot, f.share,
                    f.depth, f.places, f.depth_within, f.borders_within, f.bonds, f.verdict);
};
template <> constexpr auto fields<MatrixPicture::Run> = [](auto& r) { return std::tie(r.knot, r.shade, r.dots); };
template <> constexpr auto fields<MatrixPicture::Tick> = [](auto& t) { return std::tie(t.bead, t.label); };
template <> constexpr auto fields<MatrixPicture::Core> = [](auto& c) { return std::tie(c.subchain, c.knot, c.label); };
template <>
constexpr auto fields<MatrixPicture> = [](auto& p) {
    return std::tie(p.beads, p.dot, p.rows, p.knots, p.colours, p.legend, p.is_legend_complete, p.ticks, p.cores,
                    p.title, p.about, p.first_axis, p.last_axis);
};

namespace {

class JobWatcher final : public fingerprint::FingerprintWatcher {
  public:
    explicit JobWatcher(Job& job) : job_(job) {}
    void subchain_closed(std::size_t done, std::size_t planned, double) override { job_.reach(done, planned); }
    void closure_begins() override { job_.look(); }

  private:
    Job& job_;
};

Fingerprint fingerprint_of(const py::object& chain, const py::object& step, const py::object& closures,
                           const py::object& threads, const py::object& most_memory, const py::object& progress) {
    fingerprint::FingerprintPlan plan;
    plan.closures = whole<std::size_t>("closures", closures);
    if (!step.is_none()) plan.policy.step = whole<std::size_t>("step", step, 1);
    plan.threads = threads_of(threads);
    plan.most_memory = whole<std::size_t>("most_memory", most_memory);
    polymer::NamedChain named = named_chain_of(chain);
    std::string file = std::exchange(named.name, "");
    if (file.empty()) file = "chain";
    auto found = in_background<ChainFingerprint>(
        [named = std::move(named), file, plan](Job& job) {
            JobWatcher watcher(job);
            return fingerprint::fingerprint_of(file, named, plan, watcher);
        },
        progress);
    return {std::move(found), chain};
}

py::object core_of(const Fingerprint& found) {
    for (const KnotPlace& place : found.places)
        if (place.knot == found.knot) return plain(place.core);
    return py::none();
}

MatrixPicture picture_of(const Fingerprint& found) {
    const Unlocked others;
    return draw::picture_of(found, found.places);
}

void bind_place(py::module_& module) {
    py::class_<KnotPlace> bound(module, "Place",
                                "A place of a knot in a :class:`Fingerprint`. A subchain is the positions of its\n"
                                "first and its last bead, from 0, both included.");
    bind_type(bound, [](const KnotPlace& p) { return p.knot; });
    const Property property{bound};
    property("share", "Its share of the closures of the whole chain, 0 to 1.", &KnotPlace::share);
    property("greatest_share", "Its greatest share among subchains that hold the core and are mostly this knot.",
             &KnotPlace::greatest_share);
    property("greatest", "The shortest subchain with that share.",
             [](const KnotPlace& p) { return plain(p.greatest); });
    property("core", "The knot core: the shortest subchain with a share of at least one half; None if there is none.",
             [](const KnotPlace& p) { return plain(p.core); });
    property("core_within", "Each end of the core is known to within this number of beads; 1 is exact.",
             &KnotPlace::core_within);
    property("kind",
             "What the knot is: 'knot' (the chain's own), 'factor' (of the chain's knot), 'slipknot' (the chain,\n"
             "or a subchain around the core, lacks it) or 'subknot' (it cannot be told).",
             [](const KnotPlace& p) { return text(p.kind); });
    property("slipknot", "Whether it is a slipknot.", [](const KnotPlace& p) { return p.kind == PlaceKind::slipknot; });
    bound.def(pickled<KnotPlace>());
}

template <class Bound> void bind_found(Bound& bound) {
    const Property property{bound};
    bind_type(bound, [](const Fingerprint& f) { return f.knot; });
    property("chain", "The chain, as it was given.", &Fingerprint::given);
    property("share", "The share of its knot among the closures of the whole chain, 0 to 1.", &Fingerprint::share);
    property("closures", "Closures of each subchain.", &Fingerprint::closures);
    property("step", "Beads between two lines of the grid; 1: every subchain was closed.", &Fingerprint::step);
    property("stretches", "Number of subchains that were closed.", &Fingerprint::tested);
    property("depth", "Beads that can be taken off the front, or off the back, and the knot stays; None if unknotted.",
             [](const Fingerprint& f) {
                 return f.depth ? py::object(py::make_tuple(f.depth->front(), f.depth->back())) : py::none();
             });
    property("depth_within", "Each depth is known to within this number of beads; 1 is exact.",
             [](const Fingerprint& f) { return py::make_tuple(f.depth_within[0], f.depth_within[1]); });
    property("borders_within", "The borders between knots are known to within this number of beads; 1 is exact.",
             &Fingerprint::borders_within);
    property("verdict", "What the knot of a chain with gaps is worth, a :class:`GapVerdict`; None without gaps.",
             [](const Fingerprint& f) { return verdict_of(f.verdict, f.bonds, f.residues); });
    property("places", "A :class:`Place` for each place of a knot: the chain's own first, then by greatest share.",
             &Fingerprint::places);
    property("core", "The core of the chain's own knot; None if it has none.", core_of);
    property("types", "The knots as values, by their numbers; the unknot first.",
             [](const Fingerprint& f) { return f.knots; });
    property("names", "The knots as text, by their numbers.", [](const Fingerprint& f) { return knot_texts(f.knots); });
}

template <class Bound> void bind_matrix(Bound& bound) {
    const auto property = [&](const char* name, const char* doc, py::object Fingerprint::*square, auto make) {
        const auto get = [square, make](Fingerprint& f) {
            if (!(f.*square)) f.*square = make(f.matrix);
            return f.*square;
        };
        bound.def_property_readonly(name, get, doc);
    };
    property("numbers",
             "(n, n): the number of the most frequent knot of the subchain from row to column; 0 below the "
             "diagonal.",
             &Fingerprint::numbers, numbers_of);
    property("counts", "(n, n): the closures that gave it; 0 below the diagonal.", &Fingerprint::counts, counts_of);
    property("tested",
             "(n, n): whether the subchain was closed or is too short for a knot. The knot of any other is "
             "inferred\n"
             "from tested subchains around it, which agree, or from the nearest one near a border that was not\n"
             "followed.",
             &Fingerprint::flags, tested_of);
}

} // namespace

void bind_fingerprint(py::module_& module) {
    bind_place(module);
    py::class_<Fingerprint> bound(module, "Fingerprint", "The result of :func:`fingerprint` for a chain of n beads.");
    bind_found(bound);
    bind_matrix(bound);
    bound.def("_picture", [](const Fingerprint& f) { return plain(picture_of(f)); })
        .def(
            "to_svg", [](const Fingerprint& f) { return draw::matrix_svg(picture_of(f)); },
            "The matrix as the text of an SVG picture: first residues across, last residues upwards, a "
            "colour for\n"
            "each knot, stronger for a greater share, the cores marked.")
        .def(pickled<Fingerprint>());
    module.def("fingerprint", fingerprint_of);
}

} // namespace loopwise::python
