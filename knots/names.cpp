#include "knots/names.hpp"

#include "knots/modular.hpp"
#include "knots/table.hpp"

#include <array>

namespace loopwise::knots {
namespace {

/// Search for the factors, one after the other. Determinants that do not divide the rest and hashes rule nearly all
/// combinations out; polynomials decide.
class Search {
  public:
    Search(const Laurent& jones, const Laurent& alexander) : jones_(jones), alexander_(alexander) {}

    std::vector<KnotSum> run() {
        const auto det = determinant(jones_);
        if (det && *det > 0)
            for (std::size_t count = 1; count <= most_factors; ++count)
                extend(0, count, 0, *det, polynomial_hash(jones_, alexander_));
        return std::move(found_);
    }

  private:
    const Laurent &jones_, &alexander_;
    const std::vector<TableKnot>& table_ = knot_table();
    std::array<std::size_t, most_factors> factors_{};
    std::vector<KnotSum> found_;

    void extend(std::size_t depth, std::size_t count, std::size_t first, std::int64_t det, PolynomialHash rest) {
        constexpr std::int64_t least = 3; // the trefoil's
        const bool last = depth + 1 == count;
        if (det < least || (!last && det < least * least)) return;
        for (std::size_t i = first; i < table_.size(); ++i) {
            const TableKnot& knot = table_[i];
            if (last ? !(knot.determinant == det && knot.hash == rest) : det % knot.determinant != 0) continue;
            factors_[depth] = i;
            if (!last)
                extend(depth + 1, count, i, det / knot.determinant,
                       {modular::multiply(rest.jones, knot.inverse.jones),
                        modular::multiply(rest.alexander, knot.inverse.alexander)});
            else if (is_the_product(count))
                keep(count);
        }
    }

    bool is_the_product(std::size_t count) const {
        std::optional<Laurent> jones = Laurent::one(), alexander = Laurent::one();
        for (std::size_t i = 0; i < count && jones && alexander; ++i) {
            jones = product(*jones, table_[factors_[i]].jones);
            alexander = product(*alexander, table_[factors_[i]].alexander);
        }
        return jones == jones_ && alexander == alexander_;
    }

    void keep(std::size_t count) {
        KnotSum& sum = found_.emplace_back();
        for (std::size_t i = 0; i < count; ++i) sum.push_back(table_[factors_[i]].knot);
    }
};

} // namespace

std::vector<KnotSum> candidates_of(const Laurent& jones, const Laurent& alexander, int crossings) {
    if (jones != Laurent::one()) return Search(jones, alexander).run();
    if (crossings < unknot_is_proven_below) return {KnotSum{}};
    return {};
}

} // namespace loopwise::knots
