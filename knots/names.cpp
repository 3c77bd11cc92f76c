#include "knots/names.hpp"

#include "knots/braid_words.hpp"
#include "knots/modular.hpp"
#include "knots/signature.hpp"
#include "knots/table.hpp"

#include <algorithm>
#include <array>

namespace loopwise::knots {
namespace {

/// Search for the factors, one after the other. Determinants that do not divide the rest and hashes rule nearly all
/// combinations out; polynomials decide.
class Search {
  public:
    Search(const Laurent& jones, const Laurent& alexander, int crossings)
        : jones_(jones), alexander_(alexander), crossings_(crossings) {}

    std::vector<KnotSum> run(std::size_t most) {
        const auto det = determinant(jones_);
        if (det && *det > 0)
            for (std::size_t count = 1; count <= most; ++count)
                extend(0, count, {0, 0}, *det, polynomial_hash(jones_, alexander_), crossings_);
        return std::move(found_);
    }

  private:
    struct Place {
        std::size_t row, hand;
    };

    const Laurent &jones_, &alexander_;
    int crossings_;
    std::array<const TableKnot*, most_factors> factors_{};
    std::vector<KnotSum> found_;

    /// So many crossings are left for the factors from this depth on. Only small numbers of crossings are known to add
    /// up.
    void extend(std::size_t depth, std::size_t count, Place first, std::int64_t det, PolynomialHash rest,
                int crossings) {
        const bool last = depth + 1 == count;
        for (Place at = first; at.row < braid_rows.size(); ++at.row, at.hand = 0) {
            const BraidRow& row = braid_rows[at.row];
            if (last ? row.determinant != det : det % row.determinant != 0) continue;
            if (row.crossings > crossings) break;
            const std::span<const TableKnot> hands = hands_of(at.row);
            for (; at.hand < hands.size(); ++at.hand) {
                const TableKnot& knot = hands[at.hand];
                if (last && knot.hash != rest) continue;
                factors_[depth] = &knot;
                if (!last)
                    extend(depth + 1, count, at, det / row.determinant,
                           {modular::multiply(rest.jones, knot.inverse.jones),
                            modular::multiply(rest.alexander, knot.inverse.alexander)},
                           crossings_ <= table_crossings ? crossings - row.crossings : crossings);
                else if (is_the_product(count))
                    keep(count);
            }
        }
    }

    bool is_the_product(std::size_t count) const {
        std::optional<Laurent> jones = Laurent::one(), alexander = Laurent::one();
        for (std::size_t i = 0; i < count && jones && alexander; ++i) {
            jones = product(*jones, factors_[i]->jones);
            alexander = product(*alexander, factors_[i]->alexander);
        }
        return jones == jones_ && alexander == alexander_;
    }

    void keep(std::size_t count) {
        KnotSum& sum = found_.emplace_back();
        for (std::size_t i = 0; i < count; ++i) sum.push_back(factors_[i]->knot);
    }
};

int signature_of(const KnotSum& sum) {
    int all = 0;
    for (const PrimeKnot& knot : sum) all += entry_of(knot).signature;
    return all;
}

std::optional<Colourings> colourings_of(const KnotSum& sum) {
    std::optional<Colourings> all = colourings(Diagram{});
    for (const PrimeKnot& knot : sum)
        if (all) all = product(*all, colourings_of(knot));
    return all;
}

} // namespace

std::vector<KnotSum> candidates_of(const Laurent& jones, const Laurent& alexander, int crossings, bool prime) {
    if (jones != Laurent::one()) return Search(jones, alexander, crossings).run(prime ? 1 : most_factors);
    if (crossings < unknot_is_proven_below) return {KnotSum{}};
    return {};
}

void exclude(std::vector<KnotSum>& candidates, const Diagram& diagram, bool one_is_right) {
    if (const std::optional<int> own = signature(diagram))
        std::erase_if(candidates, [&](const KnotSum& sum) { return signature_of(sum) != *own; });
    if (candidates.empty() || (one_is_right && candidates.size() == 1)) return;
    if (const std::optional<Colourings> own = colourings(diagram))
        std::erase_if(candidates, [&](const KnotSum& sum) {
            const std::optional<Colourings> other = colourings_of(sum);
            return other && *other != *own;
        });
}

} // namespace loopwise::knots
