#include "src/reduce/frame.hpp"

#include <cmath>

namespace loopwise::reduce {
namespace {

/// Outside these bounds products of coordinates could overflow or underflow in contact().
constexpr double least_reach = 1e-30, most_reach = 1e30;

} // namespace

bool Extent::Range::is_finite() const {
    constexpr double largest = std::numeric_limits<double>::max();
    return !(least < -largest) && !(most > largest);
}

// Comparisons with a not-a-number are false, so it widens nothing. The slower loop is for infinities.
void Extent::widen(std::span<const ChainAtom> atoms) {
    Extent all = *this;
    for (const ChainAtom& atom : atoms) {
        all.x_.widen(atom.x);
        all.y_.widen(atom.y);
        all.z_.widen(atom.z);
    }
    if (all.x_.is_finite() && all.y_.is_finite() && all.z_.is_finite()) {
        *this = all;
        return;
    }
    const auto widen_if_finite = [](Range& range, double value) {
        if (std::isfinite(value)) range.widen(value);
    };
    for (const ChainAtom& atom : atoms) {
        widen_if_finite(x_, atom.x);
        widen_if_finite(y_, atom.y);
        widen_if_finite(z_, atom.z);
    }
}

Frame Extent::frame() const {
    const double reach = std::max({x_.reach(), y_.reach(), z_.reach()});
    const bool in_range = reach > least_reach && reach < most_reach;
    return {{x_.middle(), y_.middle(), z_.middle()},
            in_range ? std::ldexp(1.0, -1 - std::ilogb(reach)) : 0.0};
}

} // namespace loopwise::reduce
