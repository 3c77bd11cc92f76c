#include "app/report/fingerprint_report.hpp"

#include <algorithm>
#include <iomanip>
#include <locale>
#include <sstream>

namespace loopwise::app {

std::unique_ptr<FingerprintReport> make_fingerprint_report(Format format, std::ostream& out,
                                                           const fingerprint::FingerprintPlan& plan,
                                                           double least_share) {
    out.imbue(std::locale::classic());
    switch (format) {
    case Format::json:
        return make_json_fingerprints(out, plan, least_share);
    case Format::csv:
        return make_csv_fingerprints(out, least_share);
    case Format::text:
        break;
    }
    return make_text_fingerprints(out, plan, least_share);
}

std::vector<fingerprint::KnotPlace> places_shown(const fingerprint::ChainFingerprint& fingerprint,
                                                 double least_share) {
    std::vector<fingerprint::KnotPlace> places;
    std::copy_if(fingerprint.places.begin(), fingerprint.places.end(), std::back_inserter(places),
                 [&](const fingerprint::KnotPlace& place) { return place.greatest_share >= least_share; });
    return places;
}

std::string fixed(double value, int digits) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(digits) << value;
    return text.str();
}

} // namespace loopwise::app
