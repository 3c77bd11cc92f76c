#include "src/reduce/frame.hpp"

#include <cmath>

namespace loopwise::reduce {
namespace {

/// Outside these bounds products of coordinates could overflow or underflow in contact().
constexpr double least_reach = 1e-30, most_reach = 1e30;

} // namespace

// A comparison with a not-a-number is false, so it widens nothing.
void Extent::widen(std::span<const ChainAtom> atoms) {
    Extent all = *this; // in registers
    for (const ChainAtom& atom : atoms) {
        all.x_.widen(atom.x);
        all.y_.widen(atom.y);
        all.z_.widen(atom.z);
    }
    *this = all;
}

Frame Extent::frame() const {
    const double reach = std::max({x_.reach(), y_.reach(), z_.reach()});
    const bool in_range = reach > least_reach && reach < most_reach;
    return {{x_.middle(), y_.middle(), z_.middle()},
            in_range ? std::ldexp(1.0, -1 - std::ilogb(reach)) : 0.0};
}

} // namespace loopwise::reduce
