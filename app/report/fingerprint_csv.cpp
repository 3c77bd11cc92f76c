#include "app/report/fingerprint_report.hpp"

namespace loopwise::app {
namespace {

class CsvFingerprints final : public FingerprintReport {
  public:
    CsvFingerprints(std::ostream& out, double least_share) : out_(out), least_share_(least_share) {
        out_ << "file,model,chain,residues,gaps,chain_knot,chain_share,knot,share,greatest_share,core_first,"
                "core_last,tail_before,tail_after,slipknot,core_within,borders_within\n";
    }

    void add(const fingerprint::ChainFingerprint& of) override {
        const std::vector<fingerprint::KnotPlace> places = places_shown(of, least_share_);
        if (places.empty()) out_ << start(of) << ",,,,,,,,,," << of.borders_within << '\n';
        for (const fingerprint::KnotPlace& place : places) {
            out_ << start(of) << ',' << csv_field(place.knot) << ',' << fixed(place.share, 4) << ','
                 << fixed(place.greatest_share, 4) << ',';
            if (place.core) {
                const auto [before, after] = fingerprint::tails_of(*place.core, of.matrix.beads());
                out_ << csv_field(of.labels[place.core->first]) << ','
                     << csv_field(of.labels[place.core->last]) << ',' << before << ',' << after;
            } else
                out_ << ",,,";
            out_ << ',' << (place.slipknot ? "yes" : "no") << ','
                 << (place.core ? std::to_string(place.core_within) : "") << ',' << of.borders_within << '\n';
        }
        out_.flush();
    }

  private:
    static std::string start(const fingerprint::ChainFingerprint& of) {
        return csv_field(of.file) + ',' + csv_field(of.model) + ',' + csv_field(of.chain) + ',' +
               std::to_string(of.matrix.beads()) + ',' + csv_field(gaps_text(of.bonds, of.labels, " ")) +
               ',' + csv_field(of.knot) + ',' + fixed(of.share, 4);
    }

    std::ostream& out_;
    double least_share_;
};

} // namespace

std::string matrix_csv(const fingerprint::ChainFingerprint& of) {
    std::string text = "first,last,knot,share\n";
    of.matrix.for_each_tested([&](fingerprint::Subchain s, const fingerprint::FingerprintMatrix::Cell& cell) {
        text += csv_field(of.labels[s.first]) + ',' + csv_field(of.labels[s.last]) + ',' +
                csv_field(of.names[cell.knot]) + ',' + fixed(of.share_of(cell.closures), 4) + '\n';
    });
    return text;
}

std::unique_ptr<FingerprintReport> make_csv_fingerprints(std::ostream& out, double least_share) {
    return std::make_unique<CsvFingerprints>(out, least_share);
}

} // namespace loopwise::app
