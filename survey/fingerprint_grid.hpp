// The blocks of a grid over all stretches, quartered along the borders between them.
#pragma once

#include "survey/fingerprint.hpp"

#include <vector>

namespace loopwise {

/// Stretches whose first bead is between two numbers, both included, and whose last one is, too. Neighbours
/// share a side. Some may end before they begin: those are no stretches.
struct Block {
    std::size_t first_low, first_high, last_low, last_high;
};

class StretchGrid {
  public:
    /// Lines every `step` beads, counted from the whole chain; at the other ends they may be closer.
    StretchGrid(std::size_t beads, std::size_t step);

    /// The stretches at the corners that were not given before.
    std::vector<Stretch> corners_to_test(const FingerprintMatrix& matrix);

    /// Quarters the blocks on whose rim two tested stretches are of a different kind, where same_kind(a, b)
    /// says for two cells whether they are of one. Returns whether there were any.
    template <class SameKind> bool refine(const FingerprintMatrix& matrix, const SameKind& same_kind);

    const std::vector<Block>& blocks() const { return blocks_; }

  private:
    template <class Body> static bool any_on_rim(const Block& block, const Body& body);
    void quarter(const Block& block, std::vector<Block>& into) const;
    void add(const Block& block, std::vector<Block>& into) const;

    std::vector<Block> blocks_;
};

/// Whether body(stretch) is true for a stretch on the rim of the block.
template <class Body> bool StretchGrid::any_on_rim(const Block& b, const Body& body) {
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
bool StretchGrid::refine(const FingerprintMatrix& matrix, const SameKind& same_kind) {
    std::vector<Block> refined;
    bool any = false;
    for (const Block& block : blocks_) {
        const bool is_single =
            block.first_high - block.first_low <= 1 && block.last_high - block.last_low <= 1;
        // The longest stretch of the block is one of its corners.
        const FingerprintMatrix::Cell& corner = matrix.at({block.first_low, block.last_high});
        const bool differs = !is_single && any_on_rim(block, [&](Stretch s) {
            return matrix.is_tested(s) && !same_kind(matrix.at(s), corner);
        });
        any |= differs;
        differs ? quarter(block, refined) : refined.push_back(block);
    }
    blocks_ = std::move(refined);
    return any;
}

} // namespace loopwise
