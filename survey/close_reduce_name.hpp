// One closure: chains are closed, the loops are reduced and named.
#pragma once

#include "knots/links.hpp"
#include "survey/loop.hpp"
#include "survey/plan.hpp"

#include <optional>
#include <vector>

namespace loopwise::survey {

/// How the chains of larger structures are linked is left out: the work grows with the square of their number.
inline constexpr std::size_t most_linked_chains = 100;

/// What one closure gives: for every component its loop, before and after the reduction.
struct ClosureResult {
    std::size_t closure = 0;
    std::vector<Loop> closed;
    std::vector<Loop> reduced;
    std::vector<knots::KnotType> knots;      ///< of the loops; empty where they are not named
    std::optional<knots::Linking> linking{}; ///< of a structure whose loops are named
};

/// Memory that closures use again, one after the other.
struct Workspace {
    Structure closed, reduced;
    knots::KnotNamer namer;
};

/// Makes the closure with this number, in the memory of the workspace and of an earlier result. The chains are closed
/// together where the plan says so, otherwise there is one. The diameter is that of the chain, where it is known.
/// Returns whether they could be closed; if not, the result is of no use.
bool close_reduce_name(std::span<const Chain> open, const Plan& plan, std::size_t closure, Workspace& workspace,
                       ClosureResult& result, std::optional<double> diameter = {});

} // namespace loopwise::survey
