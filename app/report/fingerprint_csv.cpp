#include "app/report/fingerprint_report.hpp"
#include "words/numbers.hpp"
#include "words/residues.hpp"
#include "words/text.hpp"

namespace loopwise::app {
namespace {

using words::csv_field, words::fixed, words::yes_or_no;

class CsvFingerprints final : public FingerprintReport {
  public:
    CsvFingerprints(std::ostream& out, double least_share) : out_(out), least_share_(least_share) {
        out_ << "file,model,chain,residues,gaps,chain_knot,chain_share,knot,share,greatest_share,core_first,"
                "core_last,tail_before,tail_after,slipknot,core_within,borders_within,"
                "chain_proven,proven\n";
    }

    void add(const fingerprint::ChainFingerprint& of) override {
        const std::vector<fingerprint::KnotPlace> places = places_shown(of, least_share_);
        if (places.empty())
            out_ << start(of) << ",,,,,,,,,," << of.borders_within << ',' << yes_or_no(of.knot.proven)
                 << ",\n";
        for (const fingerprint::KnotPlace& place : places) {
            out_ << start(of) << ',' << csv_field(text(place.knot)) << ',' << fixed(place.share, 4) << ','
                 << fixed(place.greatest_share, 4) << ',';
            if (place.core) {
                const auto [before, after] = tails_of(*place.core, of);
                out_ << csv_field(of.residues[place.core->first].text()) << ','
                     << csv_field(of.residues[place.core->last].text()) << ',' << before << ',' << after;
            } else
                out_ << ",,,";
            out_ << ',' << yes_or_no(place.slipknot) << ','
                 << (place.core ? std::to_string(place.core_within) : "") << ',' << of.borders_within << ','
                 << yes_or_no(of.knot.proven) << ',' << yes_or_no(place.knot.proven) << '\n';
        }
        out_.flush();
    }

  private:
    static std::string start(const fingerprint::ChainFingerprint& of) {
        return csv_field(of.file) + ',' + csv_field(of.model) + ',' + csv_field(of.chain) + ',' +
               std::to_string(of.matrix.beads()) + ',' +
               csv_field(words::gaps_text(of.bonds, of.residues, " ")) + ',' + csv_field(text(of.knot)) +
               ',' + fixed(of.share, 4);
    }

    std::ostream& out_;
    double least_share_;
};

} // namespace

std::string matrix_csv(const fingerprint::ChainFingerprint& of) {
    std::string table = "first,last,knot,share,proven\n";
    of.matrix.for_each_tested([&](fingerprint::Subchain s, const fingerprint::FingerprintMatrix::Cell& cell) {
        const knots::KnotType& knot = of.knots[cell.knot];
        table += csv_field(of.residues[s.first].text()) + ',' + csv_field(of.residues[s.last].text()) + ',' +
                 csv_field(text(knot)) + ',' + fixed(of.share_of(cell), 4) + ',' + yes_or_no(knot.proven) +
                 '\n';
    });
    return table;
}

std::unique_ptr<FingerprintReport> make_csv_fingerprints(std::ostream& out, double least_share) {
    return std::make_unique<CsvFingerprints>(out, least_share);
}

} // namespace loopwise::app
