// Memory for the beads of a gap buffer.
#pragma once

#include "src/reduce/kernels.hpp"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace loopwise::reduce {

/// Arrays over slots; a slot holds a bead.
template <class Id> struct Slots {
    std::size_t count;
    float *x, *y, *z; ///< positions in units of the frame, with position_padding more
    Id* bead;         ///< the number of the bead
    Id* blocker;      ///< see BlockerMemory
};

/// Slots on the stack, not initialised: a short chain touches few of them.
template <class Id, std::size_t most> struct StackSlots {
    static constexpr std::size_t count = most;
    alignas(64) float x[most + position_padding];
    float y[most + position_padding], z[most + position_padding];
    Id bead[most], blocker[most];
    Slots<Id> get() { return {most, x, y, z, bead, blocker}; }
};

class HeapSlots {
  public:
    using Id = std::uint32_t;
    explicit HeapSlots(std::size_t count)
        : count_(count), row_(count + position_padding), positions_(3 * row_), ids_(2 * count) {}
    Slots<Id> get() {
        float* const x = positions_.data();
        return {count_, x, x + row_, x + 2 * row_, ids_.data(), ids_.data() + count_};
    }

  private:
    std::size_t count_, row_;
    std::vector<float> positions_;
    std::vector<Id> ids_;
};

} // namespace loopwise::reduce
