// The knot of every subchain of a chain.
#include "fingerprint/fingerprint.hpp"

#include "draw/matrix_picture.hpp"
#include "python/background.hpp"
#include "python/module.hpp"
#include "python/pickle.hpp"
#include "python/plan.hpp"

namespace loopwise::python {
namespace {

using fingerprint::ChainFingerprint;
using fingerprint::FingerprintMatrix;
using fingerprint::KnotPlace;
using fingerprint::Subchain;

struct Fingerprint {
    ChainFingerprint found{{0, 1, 0, {}, FingerprintMatrix(0, SIZE_MAX)}};
    py::object chain{};                       ///< the loopwise.Chain that was given
    py::object numbers{}, counts{}, tested{}; ///< arrays, once they were asked for
};

/// A square of one number for each subchain, first beads down and last beads across; 0 below the diagonal.
template <class Number, class Value>
py::array_t<Number> square(const FingerprintMatrix& matrix, const Value& value) {
    const auto beads = static_cast<py::ssize_t>(matrix.beads());
    py::array_t<Number> result({beads, beads});
    Number* to = result.mutable_data();
    for (std::size_t first = 0; first < matrix.beads(); ++first)
        for (std::size_t last = 0; last < matrix.beads(); ++last)
            *to++ = last < first ? Number{} : static_cast<Number>(value(Subchain{first, last}));
    return result;
}
auto numbers_of(const FingerprintMatrix& m) {
    return square<std::uint16_t>(m, [&](Subchain s) { return m.at(s).knot; });
}
auto counts_of(const FingerprintMatrix& m) {
    return square<std::uint16_t>(m, [&](Subchain s) { return m.at(s).closures; });
}
auto tested_of(const FingerprintMatrix& m) {
    return square<bool>(m, [&](Subchain s) { return m.is_tested(s); });
}

} // namespace

template <> struct Pickled<FingerprintMatrix> {
    static py::object state(const FingerprintMatrix& m) {
        return py::make_tuple(numbers_of(m), counts_of(m), tested_of(m));
    }
    static FingerprintMatrix value(const py::handle& state) {
        using Numbers = py::array_t<std::uint16_t>;
        const auto [numbers, counts, tested] = state.cast<std::tuple<Numbers, Numbers, py::array_t<bool>>>();
        const auto knot = numbers.unchecked<2>(), closures = counts.unchecked<2>();
        const auto is_tested = tested.unchecked<2>();
        FingerprintMatrix matrix(static_cast<std::size_t>(knot.shape(0)), SIZE_MAX);
        for (py::ssize_t first = 0; first < knot.shape(0); ++first)
            for (py::ssize_t last = first; last < knot.shape(0); ++last) {
                const Subchain s{static_cast<std::size_t>(first), static_cast<std::size_t>(last)};
                const fingerprint::Cell cell{knot(first, last), closures(first, last)};
                is_tested(first, last) ? matrix.test(s, cell) : matrix.infer(s, cell);
            }
        return matrix;
    }
};
template <> constexpr auto fields<Subchain> = [](auto& s) { return std::tie(s.first, s.last); };
template <>
constexpr auto fields<KnotPlace> = [](auto& p) {
    return std::tie(p.knot, p.share, p.greatest_share, p.greatest, p.core, p.core_within, p.slipknot);
};
/// All but what only the work needs.
template <>
constexpr auto fields<Fingerprint> = [](auto& f) {
    auto& found = f.found;
    return std::tie(f.chain, found.closures, found.step, found.tested, found.knots, found.matrix, found.file,
                    found.residues, found.knot, found.share, found.depth, found.places, found.depth_within,
                    found.borders_within);
};

namespace {

using namespace py::literals;
using Pair = std::pair<std::size_t, std::size_t>;

class JobWatcher final : public fingerprint::FingerprintWatcher {
  public:
    explicit JobWatcher(Job& job) : job_(job) {}
    void subchain_closed(std::size_t done, std::size_t planned, double) override {
        job_.reach(done, planned);
    }

  private:
    Job& job_;
};

Fingerprint fingerprint_of(const py::object& chain, const py::object& step, const py::object& closures,
                           const py::object& threads, const py::object& most_memory,
                           const py::object& progress) {
    fingerprint::FingerprintPlan plan;
    plan.closures = whole<std::size_t>("closures", closures);
    if (!step.is_none()) plan.policy.step = whole<std::size_t>("step", step, 1);
    plan.threads = threads_of(threads);
    plan.most_memory = whole<std::size_t>("most_memory", most_memory);
    polymer::NamedChain named = named_chain_of(chain);
    std::string file = std::exchange(named.name, "");
    if (file.empty()) file = "chain";
    return {in_background<ChainFingerprint>(
                [named = std::move(named), file, plan](Job& job) {
                    JobWatcher watcher(job);
                    return fingerprint::fingerprint_of(file, named, plan, watcher);
                },
                progress),
            chain};
}

Pair pair_of(const Subchain& subchain) { return {subchain.first, subchain.last}; }
std::optional<Pair> pair_of(const std::optional<Subchain>& subchain) {
    return subchain ? std::optional(pair_of(*subchain)) : std::nullopt;
}
std::optional<Pair> pair_of(const std::optional<std::array<std::size_t, 2>>& depth) {
    return depth ? std::optional(Pair((*depth)[0], (*depth)[1])) : std::nullopt;
}

std::optional<Pair> core_of(const ChainFingerprint& found) {
    for (const KnotPlace& place : found.places)
        if (place.knot == found.knot) return pair_of(place.core);
    return std::nullopt;
}

draw::MatrixPicture picture_of(const Fingerprint& fingerprint) {
    const py::gil_scoped_release others;
    return draw::picture_of(fingerprint.found, fingerprint.found.places);
}

void bind_place(py::module_& module) {
    py::class_<KnotPlace> bound(
        module, "Place",
        "A place of a knot in a :class:`Fingerprint`. A subchain is the positions of its first\n"
        "and its last bead, from 0, both included.");
    const Property property{bound};
    property("type", "The knot as a value to compare and to count.",
             [](const KnotPlace& p) { return p.knot; });
    property("knot", "The knot as text.", [](const KnotPlace& p) { return text(p.knot); });
    property("proven", "Whether the knot is proven.", [](const KnotPlace& p) { return p.knot.proven; });
    property("share", "Its share of the closures of the whole chain, 0 to 1.",
             [](const KnotPlace& p) { return p.share; });
    property("greatest_share",
             "Its greatest share among subchains that hold the core and are this knot most often.",
             [](const KnotPlace& p) { return p.greatest_share; });
    property("greatest", "The shortest subchain with that share.",
             [](const KnotPlace& p) { return pair_of(p.greatest); });
    property("core",
             "The knot core: the shortest subchain with a share of at least one half; None if there is none.",
             [](const KnotPlace& p) { return pair_of(p.core); });
    property("core_within", "Each end of the core is known to within this number of beads; 1 is exact.",
             [](const KnotPlace& p) { return p.core_within; });
    property("slipknot",
             "Whether the chain, or a subchain around the core, is unknotted or a different knot.",
             [](const KnotPlace& p) { return p.slipknot; });
    bound.def(pickled<KnotPlace>());
}

template <class Bound> void bind_found(Bound& bound) {
    using Found = ChainFingerprint;
    const auto property = [&](const char* name, const char* doc, auto get) {
        bound.def_property_readonly(
            name, [get](const Fingerprint& f) { return get(f.found); }, doc);
    };
    property("type", "The knot of the whole chain as a value.", [](const Found& f) { return f.knot; });
    property("knot", "The knot of the whole chain as text.", [](const Found& f) { return text(f.knot); });
    property("proven", "Whether that knot is proven.", [](const Found& f) { return f.knot.proven; });
    property("share", "Its share of the whole chain's closures, 0 to 1.",
             [](const Found& f) { return f.share; });
    property("closures", "Closures of each subchain.", [](const Found& f) { return f.closures; });
    property("step", "Beads between two lines of the grid; 1: every subchain was closed.",
             [](const Found& f) { return f.step; });
    property("stretches", "Number of subchains that were closed.", [](const Found& f) { return f.tested; });
    property("depth",
             "How many beads can be taken off the front, or off the back, and the knot stays all the way; "
             "None if the\n"
             "chain is unknotted.",
             [](const Found& f) { return pair_of(f.depth); });
    property("depth_within", "Each depth is known to within this number of beads; 1 is exact.",
             [](const Found& f) { return Pair(f.depth_within[0], f.depth_within[1]); });
    property("borders_within",
             "The borders between knots are known to within this number of beads; 1 is exact.",
             [](const Found& f) { return f.borders_within; });
    property("places",
             "A :class:`Place` for each place of a knot: the chain's own first, then by greatest share.",
             [](const Found& f) { return f.places; });
    property("core", "The core of the chain's own knot; None if it has none.", core_of);
    property("types", "The knots as values, by their numbers; the unknot first.",
             [](const Found& f) { return f.knots; });
    property("names", "The knots as text, by their numbers.",
             [](const Found& f) { return knot_texts(f.knots); });
}

template <class Bound> void bind_matrix(Bound& bound) {
    const auto property = [&](const char* name, const char* doc, py::object Fingerprint::*array, auto make) {
        const auto get = [array, make](Fingerprint& f) {
            if (!(f.*array)) f.*array = make(f.found.matrix);
            return f.*array;
        };
        bound.def_property_readonly(name, get, doc);
    };
    property("numbers",
             "(n, n): the number of the most frequent knot of the subchain from row to column; 0 below the "
             "diagonal.",
             &Fingerprint::numbers, numbers_of);
    property("counts", "(n, n): the closures that gave it; 0 below the diagonal.", &Fingerprint::counts,
             counts_of);
    property(
        "tested",
        "(n, n): whether the subchain was closed or is too short for a knot. The knot of any other is "
        "inferred\n"
        "from tested subchains around it, which agree, or from the nearest one near a border that was not\n"
        "followed.",
        &Fingerprint::tested, tested_of);
}

} // namespace

void bind_fingerprint(py::module_& module) {
    bind_place(module);
    py::class_<Fingerprint> bound(module, "Fingerprint",
                                  "The result of :func:`fingerprint` for a chain of n beads.");
    bind_found(bound);
    bind_matrix(bound);
    bound.def_readonly("chain", &Fingerprint::chain, "The chain, as it was given.")
        .def("_picture", picture_of)
        .def(
            "to_svg", [](const Fingerprint& f) { return draw::matrix_svg(picture_of(f)); },
            "The matrix as the text of an SVG picture: first residues across, last residues upwards, a "
            "colour for each\n"
            "knot, stronger for a greater share, the cores marked.")
        .def(pickled<Fingerprint>());
    module.def("fingerprint", fingerprint_of);
}

} // namespace loopwise::python
