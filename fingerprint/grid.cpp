#include "fingerprint/grid.hpp"

namespace loopwise::fingerprint {
namespace {

/// From 0 in steps, and the last bead.
std::vector<std::size_t> lines(std::size_t beads, std::size_t step) {
    std::vector<std::size_t> at;
    for (std::size_t bead = 0; bead + 1 < beads; bead += step) at.push_back(bead);
    at.push_back(beads - 1);
    return at;
}

void add(const Block& block, std::vector<Block>& into) {
    if (block.first_low <= block.last_high) into.push_back(block);
}

void quarter(const Block& b, std::vector<Block>& into) {
    const std::size_t first = (b.first_low + b.first_high) / 2, last = (b.last_low + b.last_high) / 2;
    const bool in_first = first > b.first_low, in_last = last > b.last_low;
    const auto add_row = [&](std::size_t low, std::size_t high) {
        if (in_first) add({b.first_low, first, low, high}, into);
        add({in_first ? first : b.first_low, b.first_high, low, high}, into);
    };
    if (in_last) add_row(b.last_low, last);
    add_row(in_last ? last : b.last_low, b.last_high);
}

/// Calls body(subchain) for all of the block that were not tested.
template <class Body> void for_each_untested(const FingerprintMatrix& matrix, const Block& b, const Body& body) {
    for (std::size_t first = b.first_low; first <= b.first_high; ++first)
        for (std::size_t last = std::max(first, b.last_low); last <= b.last_high; ++last)
            if (!matrix.is_tested({first, last})) body(Subchain{first, last});
}

} // namespace

SubchainGrid::SubchainGrid(std::size_t beads, std::size_t step) {
    const std::vector<std::size_t> at = lines(beads, step);
    for (std::size_t i = 0; i + 1 < at.size(); ++i)
        for (std::size_t j = 0; j + 1 < at.size(); ++j)
            add({at[i], at[i + 1], beads - 1 - at[j + 1], beads - 1 - at[j]}, blocks_);
}

std::vector<std::size_t> SubchainGrid::mixed(const FingerprintMatrix& matrix, std::size_t closures,
                                             std::size_t least_closures) const {
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        const Block& block = blocks_[i];
        if (block.span() <= 1) continue;
        const Cell& corner = matrix.at(block.longest());
        const auto differs = [&](Subchain s) {
            if (!matrix.is_tested(s)) return false;
            const Cell& cell = matrix.at(s);
            return cell.knot != corner.knot ||
                   can_be_core(cell, least_closures) != can_be_core(corner, least_closures) ||
                   !is_clear(cell, closures);
        };
        if (any_on_rim(block, differs)) numbers.push_back(i);
    }
    return numbers;
}

void SubchainGrid::refine(std::span<const std::size_t> numbers) {
    std::vector<Block> refined;
    auto next = numbers.begin();
    for (std::size_t i = 0; i < blocks_.size(); ++i)
        if (next != numbers.end() && *next == i)
            ++next, quarter(blocks_[i], refined);
        else
            refined.push_back(blocks_[i]);
    blocks_ = std::move(refined);
}

std::vector<Subchain> SubchainGrid::corners_to_test(const FingerprintMatrix& matrix) const {
    std::vector<Subchain> corners;
    for (const Block& b : blocks_)
        for (const Subchain s : b.corners())
            if (s.first <= s.last && !matrix.is_tested(s)) corners.push_back(s);
    const auto key = [](Subchain s) { return std::array{s.first, s.last}; };
    std::sort(corners.begin(), corners.end(), [&](Subchain a, Subchain b) { return key(a) < key(b); });
    corners.erase(std::unique(corners.begin(), corners.end()), corners.end());
    return corners;
}

void infer_from_corners(FingerprintMatrix& matrix, const Block& block) {
    for_each_untested(matrix, block, [&](Subchain s) { matrix.infer(s, matrix.at(block.longest())); });
}

void infer_from_nearest_corners(FingerprintMatrix& matrix, const Block& block) {
    for_each_untested(matrix, block, [&](Subchain s) {
        const auto away = [&](const Subchain& corner) {
            return distance(corner.first, s.first) + distance(corner.last, s.last);
        };
        Subchain nearest = block.longest();
        for (const Subchain& corner : block.corners())
            if (corner.first <= corner.last && away(corner) < away(nearest)) nearest = corner;
        matrix.infer(s, matrix.at(nearest));
    });
}

} // namespace loopwise::fingerprint
