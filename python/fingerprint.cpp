// The knot of every subchain of a chain.
#include "fingerprint/fingerprint.hpp"

#include "python/background.hpp"
#include "python/module.hpp"

namespace loopwise::python {
namespace {

class JobWatcher final : public fingerprint::FingerprintWatcher {
  public:
    explicit JobWatcher(Job& job) : job_(job) {}
    void subchain_closed(std::size_t done, std::size_t planned, double) override {
        job_.reach(done, planned);
    }

  private:
    Job& job_;
};

/// A square of one number for each subchain, first beads down and last beads across; 0 below the diagonal.
template <class Number, class Value>
py::array_t<Number> square(const fingerprint::FingerprintMatrix& matrix, const Value& value) {
    const auto beads = static_cast<py::ssize_t>(matrix.beads());
    py::array_t<Number> result({beads, beads});
    Number* to = result.mutable_data();
    for (std::size_t first = 0; first < matrix.beads(); ++first)
        for (std::size_t last = 0; last < matrix.beads(); ++last)
            *to++ = last < first ? Number{} : static_cast<Number>(value(fingerprint::Subchain{first, last}));
    return result;
}

std::pair<std::size_t, std::size_t> pair_of(const fingerprint::Subchain& subchain) {
    return {subchain.first, subchain.last};
}

py::list list_of(const std::vector<fingerprint::KnotPlace>& places) {
    py::list result;
    for (const fingerprint::KnotPlace& place : places) {
        py::dict dict;
        dict["type"] = place.knot;
        dict["share"] = place.share;
        dict["greatest_share"] = place.greatest_share;
        dict["greatest"] = pair_of(place.greatest);
        dict["core"] = place.core ? py::cast(pair_of(*place.core)) : py::none();
        dict["core_within"] = place.core_within;
        dict["slipknot"] = place.slipknot;
        result.append(dict);
    }
    return result;
}

py::dict fingerprint(const Doubles& xyz, const py::dict& given, const py::object& progress) {
    polymer::NamedChain named{"", chain_of(xyz, std::nullopt), {}};
    named.residues = polymer::residues_of(named.beads);
    fingerprint::FingerprintPlan plan;
    plan.closures = given["closures"].cast<std::size_t>();
    plan.policy.step = given["step"].cast<std::size_t>();
    plan.threads = given["threads"].cast<unsigned>();
    plan.most_memory = given["most_memory"].cast<std::size_t>();
    const auto found = in_background<fingerprint::ChainFingerprint>(
        [named = std::move(named), plan](Job& job) {
            JobWatcher watcher(job);
            return fingerprint::fingerprint_of("", named, plan, watcher);
        },
        progress);
    const fingerprint::FingerprintMatrix& matrix = found.matrix;
    py::dict result;
    result["closures"] = found.closures;
    result["step"] = found.step;
    result["stretches"] = found.tested;
    result["types"] = found.knots;
    result["type"] = found.knot;
    result["share"] = found.share;
    result["depth"] = found.depth;
    result["depth_within"] = std::pair{found.depth_within[0], found.depth_within[1]};
    result["borders_within"] = found.borders_within;
    result["places"] = list_of(found.places);
    result["numbers"] =
        square<std::uint16_t>(matrix, [&](fingerprint::Subchain s) { return matrix.at(s).knot; });
    result["counts"] =
        square<std::uint16_t>(matrix, [&](fingerprint::Subchain s) { return matrix.at(s).closures; });
    result["tested"] = square<bool>(matrix, [&](fingerprint::Subchain s) { return matrix.is_tested(s); });
    return result;
}

} // namespace

void bind_fingerprint(py::module_& module) { module.def("fingerprint", fingerprint); }

} // namespace loopwise::python
