// Results of surveys as Python holds them.
#pragma once

#include "python/pickle.hpp"
#include "survey/survey.hpp"

namespace loopwise::python {

/// A row for each closure that was counted, a column for each chain.
struct ClosureTable {
    std::vector<std::int64_t> closures;
    std::vector<std::int64_t> left;     ///< beads left, by rows
    std::vector<std::int64_t> numbers;  ///< of the knots, by rows; empty where loops are not named
    std::vector<knots::KnotType> knots; ///< by number
};

struct Survey {
    py::object chains; ///< the list of loopwise.Chain that was given
    survey::Result result;
    ClosureTable table;
    py::object arrays; ///< of the table, once they were asked for
};
using SurveyPtr = std::shared_ptr<Survey>;

/// A verdict and what its numbers refer to.
struct GapVerdict : survey::GapVerdict {
    polymer::Bonds bonds;
    std::vector<polymer::ResidueId> residues;
};
/// None of a chain without gaps.
std::optional<GapVerdict> verdict_of(const std::optional<survey::GapVerdict>& verdict, const polymer::Bonds& bonds,
                                     const std::vector<polymer::ResidueId>& residues);

template <> constexpr auto fields<survey::KnotCount> = [](auto& k) { return std::tie(k.knot, k.closures, k.jones); };
template <> constexpr auto fields<polymer::OddBond> = [](auto& b) { return std::tie(b.bead, b.length, b.missing); };
template <>
constexpr auto fields<polymer::Bonds> = [](auto& b) { return std::tie(b.longest, b.gaps, b.close, b.usual); };
template <> constexpr auto fields<survey::PathCount> = [](auto& c) { return std::tie(c.paths, c.agreeing); };
template <> constexpr auto fields<survey::Fragment> = [](auto& f) { return std::tie(f.first, f.last, f.knots); };
template <>
constexpr auto fields<survey::GapVerdict> =
    [](auto& v) { return std::tie(v.verdict, v.hangs_on, v.knot, v.all, v.knots, v.beads, v.alone, v.fragments); };
template <>
constexpr auto fields<GapVerdict> =
    [](auto& v) { return std::tuple_cat(fields<survey::GapVerdict>(v), std::tie(v.bonds, v.residues)); };

void bind_survey_values(py::module_& module);

} // namespace loopwise::python
