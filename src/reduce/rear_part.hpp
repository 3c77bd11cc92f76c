// Some of the beads for which a component has no slots, placed for one search.
#pragma once

#include "src/reduce/kernels.hpp"

#include <algorithm>
#include <cstddef>
#include <span>

namespace loopwise::reduce {

/// The positions of the first atoms of a rear, on the stack.
class RearPart {
  public:
    /// So many segments are between them at most.
    static constexpr std::size_t most = 512;

    RearPart(std::span<const ChainAtom> rear, const Frame& frame, PutPositions put_positions)
        : segments_(std::min(most, rear.size() - 1)) {
        const std::size_t atoms = segments_ + 1;
        for (float* const to : {x_, y_, z_}) std::fill_n(to + atoms, position_padding, 0.0F);
        put_positions(frame, rear.first(atoms), x_, y_, z_);
    }
    std::size_t segments() const { return segments_; }
    Positions3 positions() const { return {x_, y_, z_}; }

  private:
    static constexpr std::size_t row = most + 1 + position_padding;
    std::size_t segments_;
    float x_[row], y_[row], z_[row];
};

} // namespace loopwise::reduce
