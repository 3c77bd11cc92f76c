#include "app/report/fingerprint_report.hpp"
#include "app/report/json_results.hpp"
#include "words/residues.hpp"

namespace loopwise::app {
namespace {

/// A number if it is nothing else, otherwise text.
Json json_of(const polymer::ResidueId& residue) {
    return residue.is_number() ? Json(*residue.number()) : Json(residue.text());
}

Json json_of(const fingerprint::KnotPlace& place, const fingerprint::ChainFingerprint& of) {
    Json json;
    add_knot(json, place.knot);
    json["share"] = place.share;
    json["greatest_share"] = place.greatest_share;
    if (place.core) {
        json["core"] = {json_of(of.residues[place.core->first]), json_of(of.residues[place.core->last])};
        json["tails"] = tails_of(*place.core, of);
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
        Json entry = {{"file", of.file},
                      {"model", of.model.empty() ? Json(nullptr) : Json(of.model)},
                      {"chain", of.chain},
                      {"residues", of.matrix.beads()},
                      {"gaps", words::gaps_text(of.bonds, of.residues, ", ")},
                      {"notes", of.notes},
                      {"step", of.step},
                      {"stretches", of.tested}};
        add_knot(entry, of.knot);
        entry["share"] = of.share;
        entry["depth"] = of.depth ? Json(*of.depth) : Json(nullptr);
        entry["depth_within"] = of.depth ? Json(of.depth_within) : Json(nullptr);
        entry["borders_within"] = of.borders_within;
        entry["knots"] = std::move(knots);
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
