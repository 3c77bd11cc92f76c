// Surveys: a molecule is closed in many ways, every loop is reduced and named, and the results are counted. Prints
// nothing, reads no file, and leaves the process's random generator alone.
#pragma once

#include "polymer/bonds.hpp"
#include "polymer/confidence.hpp"
#include "survey/close_reduce_name.hpp"
#include "survey/gap_verdict.hpp"

#include <map>

namespace loopwise::survey {

/// Beads of a fully reduced loop: a triangle.
inline constexpr std::size_t fully_reduced_beads = 3;

/// Counts over the closures of a chain, or of a whole structure.
struct Tally {
    std::string name;
    std::size_t beads = 0;
    std::map<std::size_t, std::size_t> left; ///< beads left -> closures
    std::size_t fully_reduced = 0;           ///< closures whose loops are all fully reduced
    /// The most frequent first, equals in the order of KnotType; empty where loops are not named. Of a structure: what
    /// all its chains are together, see link_of().
    std::vector<KnotCount> knots;
};

/// How two chains of a structure are linked.
struct PairTally : Tally {
    std::size_t one = 0, other = 0;
    std::map<int, std::size_t> numbers; ///< linking number -> closures

    /// Whether any closure links them.
    bool is_linked() const;
};

struct ComponentTally : Tally {
    polymer::Bonds bonds;
    polymer::BeadKind kind = polymer::BeadKind::any;
    std::vector<polymer::ResidueId> residues;      ///< of the beads
    std::vector<std::string> notes;                ///< about the chain, see NamedChain
    std::optional<polymer::Confidence> confidence; ///< of the residues of a prediction
    struct Smallest {
        std::size_t closure = 0;
        Loop loop;
    };
    std::optional<Smallest> smallest;  ///< of the loops that are not fully reduced
    std::optional<GapVerdict> verdict; ///< of a chain with gaps, where its loops are named
};

/// The label of a bead of a loop: the residue of a chain's own bead; +1, +2, ... for those that close it.
std::string label_of(const Loop& loop, std::size_t bead, const ComponentTally& component);

struct Result {
    std::string file;
    std::string model;
    std::vector<std::string> notes; ///< about the whole, see Molecule
    Plan plan;
    Tally whole;
    std::vector<ComponentTally> components;
    std::vector<PairTally> pairs; ///< of a structure, where named
    std::size_t failed = 0;
    std::optional<ClosureResult> first_fully_reduced;
    std::optional<ClosureResult> smallest; ///< fewest beads among the closures that are not fully reduced

    std::size_t counted() const;
    /// The closure to show: where most closures are fully reduced, the first of these; otherwise the one with the
    /// fewest beads left. Null when every closure failed.
    const ClosureResult* typical() const;
};

/// Listener of a survey.
class Watcher {
  public:
    virtual ~Watcher() = default;
    /// Progress of a closure: part 0 when it begins, 1 when it is done. Called from any thread. An exception ends the
    /// survey.
    virtual void closure_at(std::size_t closure, double part) { static_cast<void>(closure), static_cast<void>(part); }
    /// The result of a closure, in order of their numbers, from the thread that surveys. Closures that failed are left
    /// out.
    virtual void closure_counted(const ClosureResult&) {}
    /// A path across a gap is drawn. Called from any thread. An exception ends the survey.
    virtual void path_begins() {}
};

/// The plan for this molecule: chains that are stored as rings are reduced as they are. Throws std::invalid_argument
/// when only some chains of a structure are rings.
Plan plan_for(const polymer::Molecule& molecule, const Plan& plan);

/// Surveys a molecule. The result is the same for any number of threads. Throws std::invalid_argument when the
/// molecule has no chain, an empty one, or more chains than the method can close, and when the method has fewer
/// closures than asked for; and what the watcher throws.
Result survey(const polymer::Molecule& molecule, const Plan& plan, Watcher& watcher);

} // namespace loopwise::survey
