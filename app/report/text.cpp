#include "app/report/report.hpp"
#include "words/numbers.hpp"
#include "words/residues.hpp"

#include <iomanip>

namespace loopwise::app {
namespace {

constexpr std::size_t longest_bar = 40;

using words::counted, words::percent;

/// Chain text has no names.
std::string name_in_text(const survey::Tally& tally) {
    return tally.name.empty() ? "without name" : tally.name;
}

class TextReport final : public Report {
  public:
    TextReport(std::ostream& out, const survey::Plan& plan) : out_(out), plan_(plan) {
        out_ << counted(plan.closures, "closure") << " of each " << (plan.together ? "structure" : "chain")
             << ", method " << plan.method->name;
        if (plan.method->takes_scale()) out_ << ", scale " << words::general(plan.scale);
        if (plan.method->random) out_ << ", seed " << plan.seed;
        out_ << '\n';
    }

    void add(const survey::Result& result) override {
        out_ << '\n' << result.file;
        if (!result.model.empty()) out_ << ", model " << result.model;
        if (plan_.together) out_ << ": structure of " << counted(result.components.size(), "chain") << '\n';
        for (const survey::ComponentTally& tally : result.components) introduce(tally);
        for (const std::string& note : result.notes) out_ << "  note: " << note << '\n';
        for (const survey::ComponentTally& tally : result.components)
            for (const std::string& note : tally.notes) out_ << "  note: " << note << '\n';
        if (!result.plan.method->closes)
            out_ << "  reduced as "
                 << (result.components.size() == 1 ? "the ring it is" : "the rings they are")
                 << ", without a closure\n";
        if (result.failed > 0)
            out_ << "  failed to close: " << result.failed << " of " << result.plan.closures << '\n';
        if (result.counted() > 0 && plan_.together) {
            out_ << "  all chains together\n";
            show_knots(result.whole, result.counted());
            show_linking(result);
            show(result.whole, result.counted());
        }
        if (result.counted() > 0)
            for (const survey::ComponentTally& tally : result.components)
                show_component(tally, result.counted());
        out_.flush();
    }

  private:
    void introduce(const survey::ComponentTally& tally) {
        const std::size_t gaps = tally.bonds.gaps.size();
        if (plan_.together) out_ << ' ';
        if (plan_.together || !tally.name.empty()) out_ << " chain " << name_in_text(tally);
        out_ << ": " << counted(tally.beads, "bead") << ", " << words::number_of_gaps(tally.bonds) << '\n';
        if (gaps > 0)
            out_ << "  " << (gaps == 1 ? "gap: " : "gaps: ")
                 << words::gaps_text(tally.bonds, tally.residues, ", ") << '\n';
        introduce_short_bonds(tally, true);
        introduce_short_bonds(tally, false);
    }

    void introduce_short_bonds(const survey::ComponentTally& tally, bool cis) {
        std::string text;
        for (const polymer::OddBond& bond : tally.bonds.close)
            if (polymer::may_be_cis(bond.length) == cis)
                text += (text.empty() ? "" : ", ") + words::bond_text(bond, tally.residues);
        if (!text.empty())
            out_ << (cis ? "  short as a cis peptide: " : "  too short for a bond: ") << text << '\n';
    }

    void show_component(const survey::ComponentTally& tally, std::size_t closures) {
        if (plan_.together) out_ << "  chain " << name_in_text(tally) << '\n';
        show_knots(tally, closures);
        const std::string warning = words::gap_warning(tally.bonds);
        if (!warning.empty()) out_ << "  " << warning << '\n';
        show(tally, closures);
        if (tally.smallest)
            out_ << "  fewest beads left above three: " << tally.smallest->loop.beads.size() << ", closure "
                 << tally.smallest->closure << ": " << labels_of(*tally.smallest, tally) << '\n';
    }

    /// The most frequent knot in a sentence, and a table where there are several.
    void show_knots(const survey::Tally& tally, std::size_t closures) {
        if (tally.knots.empty()) return;
        const survey::KnotCount& most = tally.knots.front();
        out_ << "  " << short_text(most.knot, longest_knot) << " in " << percent(most.closures, closures)
             << " of " << counted(closures, "closure") << '\n';
        if (tally.knots.size() == 1) return;
        std::size_t width = 14;
        for (const survey::KnotCount& count : tally.knots)
            width = std::max(width, short_text(count.knot, widest_knot_column).size());
        const auto column = [&](const std::string& knot) {
            return knot + std::string(width - knot.size(), ' ');
        };
        out_ << "  " << column("knot") << " closures\n";
        for (const survey::KnotCount& count : tally.knots)
            out_ << "  " << column(short_text(count.knot, widest_knot_column)) << std::setw(9)
                 << count.closures << std::setw(9) << percent(count.closures, closures) << '\n';
    }

    /// Pairs that no closure links are left out.
    void show_linking(const survey::Result& result) {
        for (const survey::PairTally& pair : result.pairs) {
            if (pair.numbers.empty() || (pair.numbers.size() == 1 && pair.numbers.begin()->first == 0))
                continue;
            out_ << "  chains " << name_in_text(result.components[pair.one]) << " and "
                 << name_in_text(result.components[pair.other]) << ", linking number:";
            for (const auto& [number, closures] : pair.numbers)
                out_ << ' ' << number << " in " << closures
                     << (&number == &pair.numbers.rbegin()->first ? "\n" : ",");
        }
    }

    void show(const survey::Tally& tally, std::size_t closures) {
        out_ << "  down to three beads: " << tally.fully_reduced << " of " << counted(closures, "closure")
             << " (" << percent(tally.fully_reduced, closures) << ")\n  beads left   closures\n";
        for (const auto& [left, times] : tally.left) {
            const std::size_t bar = std::max<std::size_t>(1, longest_bar * times / closures);
            out_ << std::setw(12) << left << std::setw(11) << times << "  " << std::string(bar, '#') << '\n';
        }
    }

    std::ostream& out_;
    const survey::Plan& plan_;
};

} // namespace

std::unique_ptr<Report> make_text_report(std::ostream& out, const survey::Plan& plan) {
    return std::make_unique<TextReport>(out, plan);
}

} // namespace loopwise::app
