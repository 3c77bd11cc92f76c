#include "app/report/fingerprint_report.hpp"

#include <iomanip>

namespace loopwise::app {
namespace {

std::string percent(double share) { return fixed(100.0 * share, 1) + " %"; }

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// Nothing where it is exact.
std::string within(std::size_t residues) {
    return residues > 1 ? ", to within " + std::to_string(residues) + " residues" : "";
}

class TextFingerprints final : public FingerprintReport {
  public:
    TextFingerprints(std::ostream& out, const fingerprint::FingerprintPlan& plan, double least_share)
        : out_(out), least_share_(least_share) {
        out_ << "The knot of every subchain, by " << counted(plan.closures, "closure") << " of each\n";
    }

    void add(const fingerprint::ChainFingerprint& of) override {
        out_ << '\n'
             << of.file << (of.model.empty() ? "" : ", model " + of.model)
             << (of.chain.empty() ? "" : " chain " + of.chain) << ": " << counted(of.matrix.beads(), "bead")
             << ", "
             << (of.bonds.gaps.empty()
                     ? "no gap"
                     : counted(of.bonds.gaps.size(), "gap") + ": " + gaps_text(of.bonds, of.labels, ", "))
             << '\n';
        for (const std::string& note : of.notes) out_ << "  note: " << note << '\n';
        out_ << "  whole chain: " << of.knot << " in " << percent(of.share) << " of its closures"
             << (of.matrix.beads() < fingerprint::fewest_knotted ? " (too short for a knot)" : "") << '\n';
        const std::string warning = gap_warning(of.bonds);
        if (!warning.empty()) out_ << "  " << warning << '\n';
        if (of.depth)
            out_ << "  depth: it stays when up to " << (*of.depth)[0] << " beads are taken off the front, or "
                 << (*of.depth)[1] << " off the back"
                 << within(std::max(of.depth_within[0], of.depth_within[1])) << '\n';
        const std::vector<fingerprint::KnotPlace> places = places_shown(of, least_share_);
        if (places.empty())
            out_ << "  no subchain has a knot in " << percent(least_share_) << " of its closures\n";
        else
            show(places, of);
        out_ << "  " << of.tested << (of.tested == 1 ? " subchain" : " subchains") << " closed, "
             << (of.step == 1 ? "every one"
                              : "on a grid of " + std::to_string(of.step) + ", refined at borders")
             << '\n';
        if (of.borders_within > 1)
            out_ << "  other borders are followed" << within(of.borders_within).substr(1)
                 << " only; --step N follows all to the residue, and takes longer\n";
        out_.flush();
    }

  private:
    void show(const std::vector<fingerprint::KnotPlace>& places, const fingerprint::ChainFingerprint& of) {
        out_ << "  knot          share  greatest  core             beads  tails\n";
        for (const fingerprint::KnotPlace& place : places) {
            out_ << "  " << std::left << std::setw(10) << place.knot << std::right << std::setw(9)
                 << percent(place.share) << std::setw(10) << percent(place.greatest_share) << "  ";
            if (place.core) {
                const auto [before, after] = fingerprint::tails_of(*place.core, of.matrix.beads());
                out_ << std::left << std::setw(14)
                     << of.labels[place.core->first] + "-" + of.labels[place.core->last] << std::right
                     << std::setw(8) << place.core->size() << "  " << before << " and " << after;
            } else
                out_ << "none with one half";
            out_ << within(place.core_within) << (place.slipknot ? ", slipknot" : "") << '\n';
        }
    }

    std::ostream& out_;
    double least_share_;
};

} // namespace

std::unique_ptr<FingerprintReport>
make_text_fingerprints(std::ostream& out, const fingerprint::FingerprintPlan& plan, double least_share) {
    return std::make_unique<TextFingerprints>(out, plan, least_share);
}

} // namespace loopwise::app
