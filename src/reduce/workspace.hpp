// The memory that a reduction works in: on the stack for one chain, whatever its length, and on the
// heap for a structure, taken before anything is changed.
#pragma once

#include "reduce/clearing.hpp"

#include <cstdint>
#include <span>
#include <vector>

namespace loopwise {

/// No slot, or a position that does not exist.
constexpr std::uint32_t nowhere = UINT32_MAX;

/// Arrays over slots. A slot holds one atom of a component, in the order of the structure.
struct Workspace {
    std::size_t slots; ///< a multiple of block_size

    /// Positions relative to a centre, with cloud_padding more.
    float *x, *y, *z;

    /// For the triangle that begins at a slot: where the segment that blocked it begins.
    std::uint32_t* obstacles;

    // One bit per slot.
    std::uint64_t* alive;       ///< the slot's atom is not removed
    std::uint64_t* segments;    ///< a segment begins there
    std::uint64_t* in_question; ///< the triangle that begins there may be free
    std::uint64_t* is_obstacle; ///< the segment that begins there has been an obstacle
};

/// Room for the first few thousand atoms of a chain in less than 64 KiB.
class StackWorkspace {
  public:
    Workspace get() { return {slots, x_, y_, z_, obstacles_, alive_, segments_, in_question_, is_obstacle_}; }

  private:
    static constexpr std::size_t slots = 54 * block_size;

    // Not initialised: a short chain uses little of it.
    alignas(64) float x_[slots + cloud_padding];
    float y_[slots + cloud_padding], z_[slots + cloud_padding];
    std::uint32_t obstacles_[slots];
    std::uint64_t alive_[slots / block_size], segments_[slots / block_size], in_question_[slots / block_size],
        is_obstacle_[slots / block_size];
};
static_assert(sizeof(StackWorkspace) < std::size_t{60} * 1024);

/// Room for a given number of slots.
class HeapWorkspace {
  public:
    explicit HeapWorkspace(std::size_t wanted)
        : slots_((wanted + block_size - 1) / block_size * block_size), floats_(3 * (slots_ + cloud_padding)),
          obstacles_(slots_), bits_(4 * slots_ / block_size) {}

    Workspace get() {
        const std::size_t row = slots_ + cloud_padding, words = slots_ / block_size;
        float* const x = floats_.data();
        std::uint64_t* const bits = bits_.data();
        return {
            slots_,          x, x + row, x + 2 * row, obstacles_.data(), bits, bits + words, bits + 2 * words,
            bits + 3 * words};
    }

  private:
    std::size_t slots_;
    std::vector<float> floats_;
    std::vector<std::uint32_t> obstacles_;
    std::vector<std::uint64_t> bits_;
};

} // namespace loopwise
