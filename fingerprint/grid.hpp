// The blocks of a grid over all subchains, quartered along the borders between them.
#pragma once

#include "fingerprint/matrix.hpp"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

namespace loopwise::fingerprint {

/// The subchains whose first bead lies between two numbers, both included, and whose last bead lies between two
/// others. Neighbouring blocks share a side. Pairs that end before they begin are no subchains.
struct Block {
    std::size_t first_low, first_high, last_low, last_high;

    Subchain longest() const { return {first_low, last_high}; }
    std::size_t span() const { return std::max(first_high - first_low, last_high - last_low); }
    std::array<Subchain, 4> corners() const {
        return {Subchain{first_low, last_low}, Subchain{first_low, last_high}, Subchain{first_high, last_low},
                Subchain{first_high, last_high}};
    }
};

inline std::size_t distance(std::size_t bead, std::size_t other) { return bead > other ? bead - other : other - bead; }

/// Whether body(subchain) is true for a subchain on the rim of the block.
template <class Body> bool any_on_rim(const Block& b, const Body& body) {
    const auto check = [&](std::size_t first, std::size_t last) { return first <= last && body({first, last}); };
    for (std::size_t first = b.first_low; first <= b.first_high; ++first)
        if (check(first, b.last_low) || check(first, b.last_high)) return true;
    for (std::size_t last = b.last_low; last <= b.last_high; ++last)
        if (check(b.first_low, last) || check(b.first_high, last)) return true;
    return false;
}

class SubchainGrid {
  public:
    /// Lines every `step` beads, counted from both ends of the whole chain; the last two may be closer.
    SubchainGrid(std::size_t beads, std::size_t step);

    /// The subchains at the corners that are not yet tested.
    std::vector<Subchain> corners_to_test(const FingerprintMatrix& matrix) const;

    /// The numbers of the mixed blocks: those longer than a bead on whose rim two tested subchains differ, in the
    /// knot or in whether its closures are enough for a core, or one is not clear.
    std::vector<std::size_t> mixed(const FingerprintMatrix& matrix, std::size_t closures,
                                   std::size_t least_closures) const;

    /// Quarters the blocks of these numbers, which are sorted.
    void refine(std::span<const std::size_t> numbers);

    const std::vector<Block>& blocks() const { return blocks_; }

  private:
    std::vector<Block> blocks_;
};

/// Infers what was not tested in a block whose corners agree.
void infer_from_corners(FingerprintMatrix& matrix, const Block& block);
/// Infers what was not tested in a mixed block: each subchain is as the nearest corner.
void infer_from_nearest_corners(FingerprintMatrix& matrix, const Block& block);

} // namespace loopwise::fingerprint
