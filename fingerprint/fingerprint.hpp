// Where in a chain is its knot? The knot of every subchain, and what follows from it. Prints nothing and reads no file.
//
// As in N. P. King, E. O. Yeates and T. O. Yeates, "Identification of rare slipknots in proteins and their implications
// for stability and folding", J. Mol. Biol. 373, 2007.
#pragma once

#include "fingerprint/places.hpp"
#include "polymer/molecule.hpp"
#include "survey/gap_verdict.hpp"

namespace loopwise::fingerprint {

struct ChainFingerprint : SampledSubchains {
    std::string file{}, model{}, chain{};       ///< the model only of a file that has several
    std::vector<polymer::ResidueId> residues{}; ///< of the beads
    polymer::Bonds bonds{};
    std::optional<survey::GapVerdict> verdict{}; ///< of a chain with gaps
    std::vector<std::string> notes{};            ///< about the chain, see NamedChain
    std::vector<double> confidence{};            ///< of the beads, see NamedChain
    polymer::ChainInFile in_file{};

    knots::KnotType knot{}; ///< of the whole chain
    double share = 0;       ///< of its closures
    /// How many residues can be taken off the front, or off the back, and the chain's knot stays all the way; none if
    /// the chain is not knotted.
    std::optional<std::array<std::size_t, 2>> depth{};
    /// See core_from_top() in cores.hpp; none if the chain is not knotted or some subchain was not closed.
    std::optional<Subchain> core_from_top{};
    std::vector<KnotPlace> places{}; ///< see find_places()
    /// The depths, and the borders between knots anywhere, are known to within as many residues; 1 is exact.
    std::array<std::size_t, 2> depth_within{1, 1};
    std::size_t borders_within = 1;
};

/// The fingerprint of a chain. Closes subchains in each direction, reduces every loop and names its knot.
///
/// Closes every subchain where the limit of work allows it: one of each class (see direction_classes.hpp), and by
/// default only in the first directions if these show the subchain to be unknotted.
///
/// Otherwise on a grid whose corner is the whole chain: mixed blocks (see SubchainGrid::mixed()) are quartered
/// until the blocks are of one bead. Every border that the grid meets is thereby followed to the residue, and a
/// core is the shortest subchain within such borders. What fits between the lines of the grid is not seen, so that
/// cores and depths are known to within a step at best. A bound on the work (see SamplingPolicy) ends this
/// earlier; core_within, depth_within and borders_within say how far the borders are known.
///
/// The same for any number of threads. Throws std::invalid_argument for a chain without beads, and for closures that
/// are none or more than the table has rows; std::length_error for a matrix that is too large; what the watcher throws.
ChainFingerprint fingerprint_of(const std::string& file, const polymer::NamedChain& chain, const FingerprintPlan& plan,
                                FingerprintWatcher& watcher);

} // namespace loopwise::fingerprint
