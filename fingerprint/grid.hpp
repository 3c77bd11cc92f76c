// The blocks of a grid over all stretches, quartered along the borders between them.
#pragma once

#include "fingerprint/fingerprint.hpp"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

namespace loopwise::fingerprint {

/// Stretches whose first bead is between two numbers, both included, and whose last one is, too. Neighbours
/// share a side. Some may end before they begin: those are no stretches.
struct Block {
    std::size_t first_low, first_high, last_low, last_high;

    Subchain longest() const { return {first_low, last_high}; }
    std::size_t span() const { return std::max(first_high - first_low, last_high - last_low); }
    std::array<Subchain, 4> corners() const {
        return {Subchain{first_low, last_low}, Subchain{first_low, last_high}, Subchain{first_high, last_low},
                Subchain{first_high, last_high}};
    }
};

class SubchainGrid {
  public:
    /// Lines every `step` beads, counted from the whole chain; at the other ends they may be closer.
    SubchainGrid(std::size_t beads, std::size_t step);

    /// The stretches at the corners that were not given before.
    std::vector<Subchain> corners_to_test(const FingerprintMatrix& matrix);

    /// The numbers of the blocks of more than a bead on whose rim two tested stretches are of a different kind,
    /// where same_kind(a, b) says for two cells whether they are of one.
    template <class SameKind>
    std::vector<std::size_t> mixed(const FingerprintMatrix& matrix, const SameKind& same_kind) const;

    /// Quarters the blocks of these numbers, which are sorted.
    void refine(std::span<const std::size_t> numbers);

    const std::vector<Block>& blocks() const { return blocks_; }

  private:
    void quarter(const Block& block, std::vector<Block>& into) const;
    void add(const Block& block, std::vector<Block>& into) const;

    std::vector<Block> blocks_;
};

/// Whether body(stretch) is true for a stretch on the rim of the block.
template <class Body> bool any_on_rim(const Block& b, const Body& body) {
    const auto check = [&](std::size_t first, std::size_t last) {
        return first <= last && body({first, last});
    };
    for (std::size_t first = b.first_low; first <= b.first_high; ++first)
        if (check(first, b.last_low) || check(first, b.last_high)) return true;
    for (std::size_t last = b.last_low; last <= b.last_high; ++last)
        if (check(b.first_low, last) || check(b.first_high, last)) return true;
    return false;
}

template <class SameKind>
std::vector<std::size_t> SubchainGrid::mixed(const FingerprintMatrix& matrix,
                                             const SameKind& same_kind) const {
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        const Block& block = blocks_[i];
        if (block.span() <= 1) continue;
        const FingerprintMatrix::Cell& corner = matrix.at(block.longest());
        if (any_on_rim(block,
                       [&](Subchain s) { return matrix.is_tested(s) && !same_kind(matrix.at(s), corner); }))
            numbers.push_back(i);
    }
    return numbers;
}

} // namespace loopwise::fingerprint
