#include "fingerprint/every_subchain.hpp"

#include "survey/parallel.hpp"

#include <algorithm>
#include <array>

namespace loopwise::fingerprint {
namespace {

/// A subchain is unknotted if no more of its first closures are knotted. A knot is most frequent only where at least
/// one half of the closures are knotted, and the first closures are spread evenly, too.
struct Stage {
    std::size_t closures, most_knotted;
};
constexpr std::array stages{Stage{10, 0}, Stage{20, 2}, Stage{40, 9}};

} // namespace

EverySubchain::EverySubchain(const Chain& chain, const FingerprintPlan& plan, KnotNumbers& knots,
                             FingerprintWatcher& watcher)
    : chain_(chain), plan_(plan), knots_(knots),
      workers_(std::max(plan.threads, 1U), {DirectionClasses(chain), DirectionCloser(chain, watcher)}),
      first_count_(chain.size() * (chain.size() + 1) / 2), closures_(first_count_.size()),
      whole_(FingerprintMatrix::index({0, chain.size() - 1})) {}

void EverySubchain::close(const std::function<void(double)>& told) {
    std::size_t begin = 0, done = 0;
    const auto close_until = [&](std::size_t end) {
        survey::in_parallel(end - begin, plan_.threads, [&](std::size_t i, std::size_t worker) {
            close_in(farthest_point_order()[begin + i], workers_[worker]);
            const std::scoped_lock lock(mutex_);
            told(static_cast<double>(++done) / static_cast<double>(plan_.closures));
        });
        begin = end;
    };
    for (const auto& [closures, most_knotted] : stages)
        if (plan_.policy.step != 1 && closures < plan_.closures) {
            close_until(closures);
            leave_out_unknotted(closures, most_knotted);
        }
    close_until(plan_.closures);
}

void EverySubchain::close_in(int row, Worker& worker) {
    worker.classes.find(row);
    const std::vector<std::uint32_t>& classes = worker.classes.classes();
    std::vector<char> is_wanted(worker.classes.shortest().size());
    for (std::size_t i = 0; i < classes.size(); ++i)
        if (closures_[i] == 0) is_wanted[classes[i]] = 1;
    is_wanted[DirectionClasses::unknotted] = 0;
    std::vector<std::size_t> numbers;
    std::vector<Subchain> subchains;
    for (std::size_t c = 0; c < is_wanted.size(); ++c)
        if (is_wanted[c]) {
            numbers.push_back(c);
            subchains.push_back(worker.classes.shortest()[c]);
        }
    std::vector<std::uint16_t> knots(is_wanted.size());
    worker.closer.close(row, subchains, [&](std::size_t i, const knots::KnotType& knot) {
        knots[numbers[i]] = knots_.number_of(counted_as(knot));
    });

    const std::scoped_lock lock(mutex_);
    for (std::size_t i = 0; i < classes.size(); ++i)
        if (const std::uint16_t knot = knots[classes[i]]; knot > 0 && closures_[i] == 0) count(i, knot);
}

void EverySubchain::count(std::size_t index, std::uint16_t knot) {
    for (std::uint32_t c = first_count_[index]; c != 0; c = counts_[c].next)
        if (counts_[c].knot == knot) {
            ++counts_[c].closures;
            return;
        }
    counts_.push_back({knot, 1, first_count_[index]});
    first_count_[index] = static_cast<std::uint32_t>(counts_.size() - 1);
}

std::size_t EverySubchain::knotted(std::size_t index) const {
    std::size_t closures = 0;
    for (std::uint32_t c = first_count_[index]; c != 0; c = counts_[c].next) closures += counts_[c].closures;
    return closures;
}

void EverySubchain::leave_out_unknotted(std::size_t closures, std::size_t most_knotted) {
    for (std::size_t i = 0; i < closures_.size(); ++i)
        if (closures_[i] == 0 && i != whole_ && knotted(i) <= most_knotted)
            closures_[i] = static_cast<std::uint16_t>(closures);
}

KnotCounts EverySubchain::counts_of(std::size_t index, const std::vector<knots::KnotType>& names) const {
    KnotCounts counts;
    for (std::uint32_t c = first_count_[index]; c != 0; c = counts_[c].next)
        counts.push_back({names[counts_[c].knot], counts_[c].closures});
    const std::size_t all = closures_[index] == 0 ? plan_.closures : closures_[index];
    if (const std::size_t left = all - knotted(index); left > 0) counts.push_back({names.front(), left});
    return counts;
}

KnotCounts EverySubchain::whole_chain() const { return counts_of(whole_, knots_.by_number()); }

void EverySubchain::into(FingerprintMatrix& matrix) const {
    const std::vector<knots::KnotType> names = knots_.by_number();
    for (std::size_t last = 0, i = 0; last < chain_.size(); ++last)
        for (std::size_t first = 0; first <= last; ++first, ++i) {
            const KnotCounts counts = counts_of(i, names);
            const survey::KnotCount& most = most_frequent(counts);
            std::size_t closures = most.closures;
            if (closures_[i] > 0) closures = closures * plan_.closures / closures_[i];
            matrix.test({first, last}, {knots_.number_of(most.knot), static_cast<std::uint16_t>(closures)});
        }
}

} // namespace loopwise::fingerprint
