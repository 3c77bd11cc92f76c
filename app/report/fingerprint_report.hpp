// Fingerprints as text for people, or as JSON or CSV for programs.
#pragma once

#include "app/report/report.hpp"
#include "fingerprint/cores.hpp"
#include "fingerprint/fingerprint.hpp"

namespace loopwise::app {

/// Fingerprints are written as they come.
class FingerprintReport {
  public:
    virtual ~FingerprintReport() = default;
    virtual void add(const fingerprint::ChainFingerprint& fingerprint) = 0;
    virtual void finish() {}
};

/// Writes the head; `out` must outlive the report, which leaves out knots of a smaller greatest share.
std::unique_ptr<FingerprintReport> make_fingerprint_report(Format format, std::ostream& out,
                                                           const fingerprint::FingerprintPlan& plan,
                                                           double least_share);

// One for each format.
std::unique_ptr<FingerprintReport>
make_text_fingerprints(std::ostream& out, const fingerprint::FingerprintPlan& plan, double least_share);
std::unique_ptr<FingerprintReport>
make_json_fingerprints(std::ostream& out, const fingerprint::FingerprintPlan& plan, double least_share);
std::unique_ptr<FingerprintReport> make_csv_fingerprints(std::ostream& out, double least_share);

/// The places whose greatest share is no smaller.
std::vector<fingerprint::KnotPlace> places_shown(const fingerprint::ChainFingerprint& fingerprint,
                                                 double least_share);

/// A row for every tested subchain: first and last residue, knot, share.
std::string matrix_csv(const fingerprint::ChainFingerprint& fingerprint);

/// With as many digits after the point, whatever the locale.
std::string fixed(double value, int digits);

} // namespace loopwise::app
