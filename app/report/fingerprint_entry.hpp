// Fingerprints in reports.
#pragma once

#include "app/report/report.hpp"
#include "fingerprint/fingerprint.hpp"

namespace loopwise::app {

Head fingerprint_head(const fingerprint::FingerprintPlan& plan, double least_share);

class FingerprintEntry final : public Entry {
  public:
    /// Both must outlive the entry: the fingerprint, and those of its places that are reported.
    FingerprintEntry(const fingerprint::ChainFingerprint& of, const std::vector<fingerprint::KnotPlace>& places,
                     double least_share)
        : of_(of), places_(places), least_share_(least_share) {}

    std::string text() const override;
    Json json() const override;
    /// A row for each place, or one if there is none.
    std::vector<Row> rows() const override;

  private:
    std::string table() const;

    const fingerprint::ChainFingerprint& of_;
    const std::vector<fingerprint::KnotPlace>& places_;
    double least_share_;
};

/// The places whose greatest share is no smaller.
std::vector<fingerprint::KnotPlace> places_shown(const fingerprint::ChainFingerprint& of, double least_share);

/// CSV with a row for every subchain that was closed: first and last residue, knot, share.
std::string matrix_csv(const fingerprint::ChainFingerprint& of);

} // namespace loopwise::app
