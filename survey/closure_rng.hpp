// The random numbers of one closure.
#pragma once

#include <cstdint>

namespace loopwise::survey {

/// Random whole numbers from 0 to 2^31 - 1. The closure's number is part of the seed, so that closures can be made in
/// any order and on any thread. SplitMix64 (Steele, Lea and Flood, "Fast splittable pseudorandom number generators",
/// OOPSLA 2014): consecutive closures start far apart in one sequence of 2^64.
class ClosureRng {
  public:
    ClosureRng(std::uint64_t seed, std::uint64_t closure) : state_(mixed(seed) + mixed(closure + golden)) {}
    int operator()() { return static_cast<int>(mixed(state_ += golden) >> 33); }

  private:
    static constexpr std::uint64_t golden = 0x9e3779b97f4a7c15;
    static constexpr std::uint64_t mixed(std::uint64_t z) {
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
        z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
        return z ^ (z >> 31);
    }
    std::uint64_t state_;
};

} // namespace loopwise::survey
