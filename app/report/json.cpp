#include "app/report/json_results.hpp"
#include "app/report/report.hpp"

namespace loopwise::app {
namespace {

Json json_of(const std::map<std::size_t, std::size_t>& left) {
    Json pairs = Json::array();
    for (const auto& [beads, closures] : left) pairs.push_back({{"beads", beads}, {"closures", closures}});
    return pairs;
}

Json json_of(const std::vector<survey::KnotCount>& knots, std::size_t closures) {
    Json list = Json::array();
    for (const auto& [knot, times] : knots) {
        Json& json = list.emplace_back();
        add_knot(json, knot);
        json["closures"] = times;
        json["share"] = static_cast<double>(times) / static_cast<double>(closures);
    }
    return list;
}

Json json_of(const survey::Result& result, const survey::PairTally& pair) {
    Json numbers = Json::array();
    for (const auto& [number, closures] : pair.numbers)
        numbers.push_back({{"number", number}, {"closures", closures}});
    return {{"chains", {result.components[pair.one].name, result.components[pair.other].name}},
            {"linking", numbers}};
}

Json json_of(const std::optional<survey::ComponentTally::Smallest>& smallest,
             const survey::ComponentTally& component) {
    if (!smallest) return nullptr;
    const auto& [closure, loop] = *smallest;
    Json beads = Json::array();
    for (std::size_t i = 0; i < loop.beads.size(); ++i)
        beads.push_back({{"label", label_of(loop, i, component)},
                         {"appended", i >= loop.own},
                         {"x", loop.beads[i].x},
                         {"y", loop.beads[i].y},
                         {"z", loop.beads[i].z}});
    return {{"beads", loop.beads.size()}, {"closure", closure}, {"left", beads}};
}

Json json_of(const std::vector<polymer::OddBond>& bonds, const survey::ComponentTally& tally) {
    Json list = Json::array();
    for (const polymer::OddBond& bond : bonds)
        list.push_back({{"first", tally.residues[bond.bead].text()},
                        {"second", tally.residues[bond.bead + 1].text()},
                        {"length", bond.length},
                        {"missing", bond.missing}});
    return list;
}

Json json_of(const survey::ComponentTally& tally, std::size_t closures) {
    return {{"chain", tally.name},
            {"beads", tally.beads},
            {"notes", tally.notes},
            {"gaps", json_of(tally.bonds.gaps, tally)},
            {"short_bonds", json_of(tally.bonds.close, tally)},
            {"knots", json_of(tally.knots, closures)},
            {"down_to_three", tally.fully_reduced},
            {"left", json_of(tally.left)},
            {"fewest_left", json_of(tally.smallest, tally)}};
}

class JsonReport final : public Report {
  public:
    JsonReport(std::ostream& out, const survey::Plan& plan)
        : results_(out, {{"program", "loopwise survey"},
                         {"version", LOOPWISE_VERSION},
                         {"method", plan.method->name},
                         {"closures", plan.closures},
                         {"scale", plan.method->takes_scale() ? Json(plan.scale) : Json(nullptr)},
                         {"seed", plan.method->random ? Json(plan.seed) : Json(nullptr)}}),
          together_(plan.together) {}

    void add(const survey::Result& result) override {
        Json entry = {{"file", result.file},
                      {"model", result.model.empty() ? Json(nullptr) : Json(result.model)},
                      {"notes", result.notes},
                      {"method", result.plan.method->name},
                      {"closures", result.plan.closures},
                      {"failed", result.failed}};
        if (together_) {
            entry["links"] = json_of(result.whole.knots, result.counted());
            for (const survey::PairTally& pair : result.pairs)
                entry["pairs"].push_back(json_of(result, pair));
            entry["down_to_three"] = result.whole.fully_reduced;
            entry["left"] = json_of(result.whole.left);
        }
        for (const survey::ComponentTally& tally : result.components)
            entry["chains"].push_back(json_of(tally, result.counted()));
        results_.add(entry);
    }

    void finish() override { results_.finish(); }

  private:
    JsonResults results_;
    bool together_;
};

} // namespace

std::unique_ptr<Report> make_json_report(std::ostream& out, const survey::Plan& plan) {
    return std::make_unique<JsonReport>(out, plan);
}

} // namespace loopwise::app
