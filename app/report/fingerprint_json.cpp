#include "app/report/fingerprint_report.hpp"
#include "app/report/json_results.hpp"

#include <charconv>

namespace loopwise::app {
namespace {

/// A number where the label is one; labels with an insertion code are text.
Json residue(const std::string& label) {
    int number = 0;
    const auto [end, error] = std::from_chars(label.data(), label.data() + label.size(), number);
    if (error == std::errc() && end == label.data() + label.size()) return number;
    return label;
}

Json json_of(const fingerprint::KnotPlace& place, const fingerprint::ChainFingerprint& of) {
    Json json = {{"knot", place.knot}, {"share", place.share}, {"greatest_share", place.greatest_share}};
    if (place.core) {
        json["core"] = {residue(of.labels[place.core->first]), residue(of.labels[place.core->last])};
        json["tails"] = fingerprint::tails_of(*place.core, of.matrix.beads());
    } else {
        json["core"] = json["tails"] = nullptr;
    }
    json["core_within"] = place.core ? Json(place.core_within) : Json(nullptr);
    json["slipknot"] = place.slipknot;
    return json;
}

class JsonFingerprints final : public FingerprintReport {
  public:
    JsonFingerprints(std::ostream& out, const fingerprint::FingerprintPlan& plan, double least_share)
        : results_(out, {{"program", "loopwise fingerprint"},
                         {"version", LOOPWISE_VERSION},
                         {"closures", plan.closures},
                         {"least_share", least_share}}),
          least_share_(least_share) {}

    void add(const fingerprint::ChainFingerprint& of) override {
        Json knots = Json::array();
        for (const fingerprint::KnotPlace& place : places_shown(of, least_share_))
            knots.push_back(json_of(place, of));
        const Json entry = {{"file", of.file},
                            {"model", of.model.empty() ? Json(nullptr) : Json(of.model)},
                            {"chain", of.chain},
                            {"residues", of.matrix.beads()},
                            {"gaps", gaps_text(of.bonds, of.labels, ", ")},
                            {"notes", of.notes},
                            {"step", of.step},
                            {"stretches", of.tested},
                            {"knot", of.knot},
                            {"share", of.share},
                            {"depth", of.depth ? Json(*of.depth) : Json(nullptr)},
                            {"depth_within", of.depth ? Json(of.depth_within) : Json(nullptr)},
                            {"borders_within", of.borders_within},
                            {"knots", std::move(knots)}};
        results_.add(entry);
    }

    void finish() override { results_.finish(); }

  private:
    JsonResults results_;
    double least_share_;
};

} // namespace

std::unique_ptr<FingerprintReport>
make_json_fingerprints(std::ostream& out, const fingerprint::FingerprintPlan& plan, double least_share) {
    return std::make_unique<JsonFingerprints>(out, plan, least_share);
}

} // namespace loopwise::app
