#include "knots/signature.hpp"

#include "knots/invariants.hpp"

#include <utility>
#include <vector>

namespace loopwise::knots {
namespace {

__extension__ using Integer = __int128;

/// A symmetric matrix of integers.
class Form {
  public:
    explicit Form(std::size_t size) : size_(size), entries_(size * size, 0) {}
    Integer& at(std::size_t i, std::size_t j) { return entries_[i * size_ + j]; }
    std::optional<int> signature();

  private:
    std::size_t size_;
    std::vector<Integer> entries_;

    bool bring_pivot(std::size_t k);
    bool eliminate(std::size_t k, Integer before);
};

/// Brings a diagonal entry that is not 0 to place k, where there is any in the matrix from row k on.
bool Form::bring_pivot(std::size_t k) {
    std::size_t pivot = k;
    while (pivot < size_ && at(pivot, pivot) == 0) ++pivot;
    for (std::size_t i = k; i < size_ && pivot == size_; ++i)
        for (std::size_t j = i + 1; j < size_ && pivot == size_; ++j) {
            if (at(i, j) == 0) continue;
            for (std::size_t m = k; m < size_; ++m) at(i, m) += at(j, m);
            for (std::size_t m = k; m < size_; ++m) at(m, i) += at(m, j);
            pivot = i;
        }
    if (pivot == size_) return false;
    for (std::size_t m = k; m < size_; ++m) std::swap(at(k, m), at(pivot, m));
    for (std::size_t m = k; m < size_; ++m) std::swap(at(m, k), at(m, pivot));
    return true;
}

/// All entries are minors of the matrix, so the division is exact (Bareiss). Returns whether all fitted.
bool Form::eliminate(std::size_t k, Integer before) {
    bool fits = true;
    for (std::size_t i = k + 1; i < size_; ++i)
        for (std::size_t j = k + 1; j < size_; ++j) {
            Integer kept = 0, taken = 0;
            fits &= !__builtin_mul_overflow(at(i, j), at(k, k), &kept);
            fits &= !__builtin_mul_overflow(at(i, k), at(k, j), &taken);
            fits &= !__builtin_sub_overflow(kept, taken, &kept);
            at(i, j) = kept / before;
        }
    return fits;
}

std::optional<int> Form::signature() {
    int sum = 0;
    Integer before = 1;
    for (std::size_t k = 0; k < size_ && bring_pivot(k); ++k) {
        sum += (at(k, k) > 0) == (before > 0) ? 1 : -1;
        if (!eliminate(k, before)) return {};
        before = at(k, k);
    }
    return sum;
}

/// The faces are black and white in turn.
std::vector<bool> black_faces(const Diagram& diagram, const Faces& faces) {
    std::vector<bool> black(faces.any_end.size(), false), known(faces.any_end.size(), false);
    std::vector<int> waiting{0};
    known[0] = true;
    while (!waiting.empty()) {
        const int face = waiting.back();
        waiting.pop_back();
        const Dart first = faces.any_end[static_cast<std::size_t>(face)];
        Dart d = first;
        do {
            const auto next = static_cast<std::size_t>(faces.left_of[static_cast<std::size_t>(diagram.across(d))]);
            if (!known[next]) {
                known[next] = true;
                black[next] = !black[static_cast<std::size_t>(face)];
                waiting.push_back(static_cast<int>(next));
            }
            d = turned(diagram.across(d), 3);
        } while (d != first);
    }
    return black;
}

} // namespace

/// The corner to the left of the end at place p lies between p and p + 1. Turning the strand above counterclockwise
/// sweeps the corners 1 and 3. The directions of the strands agree with an orientation of the black surface near a
/// positive crossing if the corners 0 and 2 are black, near a negative one if 1 and 3 are.
std::optional<int> signature(const Diagram& diagram) {
    if (diagram.size() > most_crossings || diagram.loops != 1) return {};
    if (diagram.size() == 0) return 0;
    Faces faces;
    find_faces(diagram, faces);
    const std::vector<bool> black = black_faces(diagram, faces);
    std::vector<std::size_t> number(black.size(), 0); // of white faces; the first one has no row
    std::size_t white = 0;
    for (std::size_t face = 0; face < black.size(); ++face)
        if (!black[face]) number[face] = white++;
    Form form(white - 1);
    int correction = 0;
    for (int c = 0; c < diagram.size(); ++c) {
        const auto corner = [&](int place) {
            return static_cast<std::size_t>(faces.left_of[static_cast<std::size_t>(4 * c + place)]);
        };
        const int first = black[corner(0)] ? 1 : 0; // of the white corners
        const int sweep = first == 1 ? -1 : 1;
        if ((first == 1) != (diagram.at(4 * c).sign > 0)) correction += sweep;
        const std::size_t i = number[corner(first)], j = number[corner(first + 2)];
        if (i == j) continue;
        for (const auto& [a, b] : {std::pair{i, j}, std::pair{j, i}})
            if (a > 0) {
                form.at(a - 1, a - 1) += sweep;
                if (b > 0) form.at(a - 1, b - 1) -= sweep;
            }
    }
    std::optional<int> result = form.signature();
    if (result) *result -= correction;
    return result;
}

} // namespace loopwise::knots
