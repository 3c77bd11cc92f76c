// Closing a molecule in many ways, reducing every loop, naming its knot and counting what came of it. Prints
// nothing, reads no file, and leaves the process's generator alone.
#pragma once

#include "polymer/bonds.hpp"
#include "survey/plan.hpp"

#include <map>
#include <optional>

namespace loopwise::survey {

/// The beads that the reduction leaves of a loop when nothing holds it.
inline constexpr std::size_t fully_reduced_beads = 3;

/// A closed chain, reduced or not: beads of the chain, then those that close it. The identifier of a bead
/// is its position in the closed chain, so those of the chain's own beads say which they are.
struct Loop {
    Chain beads;
    std::size_t own = 0; ///< how many are the chain's own

    std::size_t position(std::size_t bead) const { return static_cast<std::size_t>(beads[bead].id); }
};

/// What one closure came to: the loops of all components, before and after their reduction.
struct ClosureResult {
    std::size_t closure = 0;
    std::vector<Loop> closed;
    std::vector<Loop> reduced;
    std::vector<std::string> knots; ///< of the loops, see KnotName::text(); none where they are not named
    std::string link;               ///< of two loops, see link_of()
    std::vector<int> linking;       ///< numbers of all pairs, in the order of linking_of()
};

/// A knot and how many closures gave it.
struct KnotCount {
    std::string knot;
    std::size_t closures = 0;
};

/// The closures of a chain, or of a whole structure, counted by what was left.
struct Tally {
    std::string name;
    std::size_t beads = 0;
    std::map<std::size_t, std::size_t> left; ///< beads left -> closures
    std::size_t fully_reduced = 0;           ///< closures of which no component kept more than three beads
    /// The most frequent first, equals by name; none where not named. Of a whole structure: the link of its two
    /// chains, see link_of(); none for more.
    std::vector<KnotCount> knots;
};

/// How two chains of a structure are linked: linking number -> closures.
struct PairTally {
    std::size_t one, other;
    std::map<int, std::size_t> numbers;
};

/// Structures of more chains get no linking numbers: the work grows with the square of the loops.
inline constexpr std::size_t most_linked_chains = 100;

struct ComponentTally : Tally {
    polymer::Bonds bonds;
    polymer::BeadKind kind = polymer::BeadKind::any;
    std::vector<polymer::ResidueId> residues; ///< of the beads
    std::vector<std::string> notes;           ///< about the chain, see NamedChain
    struct Smallest {
        std::size_t closure = 0;
        Loop loop;
    };
    std::optional<Smallest> smallest; ///< of the loops that kept more than three beads
};

/// What a bead of a loop is called: the residue of a chain's own bead; +1, +2, ... for those that close it.
std::string label_of(const Loop& loop, std::size_t bead, const ComponentTally& component);

struct Result {
    std::string file;
    std::string model;
    std::vector<std::string> notes; ///< about the whole, see Molecule
    Plan plan;                      ///< what was done
    Tally whole;
    std::vector<ComponentTally> components;
    std::vector<PairTally> pairs; ///< of a structure, where named
    std::size_t failed = 0;
    std::optional<ClosureResult> first_fully_reduced;
    std::optional<ClosureResult> smallest; ///< fewest beads among the closures that are not bare

    std::size_t counted() const;
    /// The closure to show: where most closures come down to three beads, the first that does,
    /// otherwise the one with the fewest beads left. Null when every closure failed.
    const ClosureResult* typical() const;
};

/// Told about the work by those who do it.
class Watcher {
  public:
    virtual ~Watcher() = default;
    /// How far the work on a closure is: 0 when it begins, 1 when it is done, and whatever a long reduction
    /// says in between. Any thread may say so; what it throws ends the survey.
    virtual void closure_at(std::size_t closure, double part) {
        static_cast<void>(closure), static_cast<void>(part);
    }
    /// What a closure came to, one after another, from the thread that surveys. Those that failed are left out.
    virtual void closure_counted(const ClosureResult&) {}
};

/// The plan for this molecule: chains that are stored as rings are reduced as they are. Throws
/// std::invalid_argument when only some chains of a structure are rings.
Plan plan_for(const polymer::Molecule& molecule, const Plan& plan);

/// The same result for any number of threads. Throws std::invalid_argument when the molecule has no chain
/// or an empty one, more components than the method can close, or, for Method::directions, more closures
/// than rows; and what the watcher throws.
Result survey(const polymer::Molecule& molecule, const Plan& plan, Watcher& watcher);

} // namespace loopwise::survey
