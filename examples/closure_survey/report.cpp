#include "report.hpp"

#include <algorithm>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>

namespace {

using Json = nlohmann::ordered_json;
using Counts = std::map<std::size_t, std::size_t>;

constexpr const char* unbroken = "OK";
constexpr std::size_t longest_bar = 40;

std::string scale_text(double scale) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << scale;
    return text.str();
}

/// The identifiers of a core, with a star on those of the atoms that close the chain.
std::string ids_of(const Loop& loop) {
    std::string ids;
    for (std::size_t i = 0; i < loop.atoms.size(); ++i) {
        if (i > 0) ids += ' ';
        ids += std::to_string(loop.atoms[i].id);
        if (i >= loop.own()) ids += '*';
    }
    return ids;
}

std::string percent(std::size_t part, std::size_t whole) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(1)
         << (whole == 0 ? 0.0 : 100.0 * static_cast<double>(part) / static_cast<double>(whole)) << " %";
    return text.str();
}

/// Chain text has no names.
std::string name_in_text(const Tally& tally) { return tally.name.empty() ? "without name" : tally.name; }

class TextReport final : public Report {
  public:
    TextReport(std::ostream& out, const Plan& plan) : out_(out), plan_(plan) {
        out_ << plan.closures << (plan.closures == 1 ? " closure" : " closures") << " of each "
             << (plan.together ? "structure" : "chain") << ", method " << name_of(plan.method);
        if (takes_scale(plan.method)) out_ << ", scale " << scale_text(plan.scale);
        if (is_random(plan.method)) out_ << ", seed " << plan.seed;
        out_ << '\n';
    }

    void add(const Result& result) override {
        out_ << '\n' << result.file;
        if (plan_.together)
            out_ << ": structure of " << result.components.size()
                 << (result.components.size() == 1 ? " chain\n" : " chains\n");
        for (const ComponentTally& tally : result.components) introduce(tally);
        if (result.failed > 0)
            out_ << "  failed to close: " << result.failed << " of " << plan_.closures << '\n';
        if (result.counted() > 0 && plan_.together) {
            out_ << "  all chains together\n";
            show(result.whole, result.counted());
        }
        if (result.counted() > 0)
            for (const ComponentTally& tally : result.components) show_component(tally, result.counted());
        out_.flush();
    }

  private:
    void introduce(const ComponentTally& tally) {
        if (plan_.together) out_ << ' ';
        if (plan_.together || !tally.name.empty()) out_ << " chain " << name_in_text(tally);
        out_ << ": " << tally.beads << (tally.beads == 1 ? " bead, " : " beads, ")
             << (tally.breaks == unbroken ? "no break" : tally.breaks.substr(tally.breaks.find(' ') + 1))
             << '\n';
    }

    void show_component(const ComponentTally& tally, std::size_t closures) {
        if (plan_.together) out_ << "  chain " << name_in_text(tally) << '\n';
        show(tally, closures);
        if (tally.smallest)
            out_ << "  smallest core above three: " << tally.smallest->loop.atoms.size() << " beads, closure "
                 << tally.smallest->closure << ": " << ids_of(tally.smallest->loop) << '\n';
    }

    void show(const Tally& tally, std::size_t closures) {
        out_ << "  down to three beads: " << tally.bare << " of " << closures << " closures ("
             << percent(tally.bare, closures) << ")\n  beads left   closures\n";
        for (const auto& [left, times] : tally.left) {
            const std::size_t bar = std::max<std::size_t>(1, longest_bar * times / closures);
            out_ << std::setw(12) << left << std::setw(11) << times << "  " << std::string(bar, '#') << '\n';
        }
    }

    std::ostream& out_;
    const Plan& plan_;
};

Json json_of(const Counts& left) {
    Json pairs = Json::array();
    for (const auto& [beads, closures] : left) pairs.push_back({{"beads", beads}, {"closures", closures}});
    return pairs;
}

Json json_of(const std::optional<ComponentTally::Core>& core) {
    if (!core) return nullptr;
    Json atoms = Json::array();
    for (std::size_t i = 0; i < core->loop.atoms.size(); ++i)
        atoms.push_back({{"id", core->loop.atoms[i].id}, {"appended", i >= core->loop.own()}});
    return {{"beads", core->loop.atoms.size()}, {"closure", core->closure}, {"atoms", atoms}};
}

Json json_of(const ComponentTally& tally) {
    return {{"chain", tally.name},
            {"beads", tally.beads},
            {"breaks", tally.breaks == unbroken ? Json(nullptr) : Json(tally.breaks)},
            {"down_to_three", tally.bare},
            {"left", json_of(tally.left)},
            {"smallest_core", json_of(tally.smallest)}};
}

class JsonReport final : public Report {
  public:
    JsonReport(std::ostream& out, const Plan& plan) : out_(out), together_(plan.together) {
        Json head = {{"program", "closure_survey"},
                     {"version", CLOSURE_SURVEY_VERSION},
                     {"method", name_of(plan.method)},
                     {"closures", plan.closures},
                     {"scale", takes_scale(plan.method) ? Json(plan.scale) : Json(nullptr)},
                     {"seed", is_random(plan.method) ? Json(plan.seed) : Json(nullptr)}};
        std::string text = head.dump();
        text.pop_back();
        out_ << text << ",\"results\":[";
    }

    void add(const Result& result) override {
        Json entry = {{"file", result.file}, {"failed", result.failed}};
        if (together_) {
            entry["down_to_three"] = result.whole.bare;
            entry["left"] = json_of(result.whole.left);
        }
        for (const ComponentTally& tally : result.components) entry["chains"].push_back(json_of(tally));
        // A file name may be no UTF-8, which would make the dump throw.
        out_ << (first_ ? "\n" : ",\n") << entry.dump(-1, ' ', false, Json::error_handler_t::replace);
        out_.flush();
        first_ = false;
    }

    void finish() override { out_ << "\n]}\n"; }

  private:
    std::ostream& out_;
    bool together_;
    bool first_ = true;
};

std::string quoted(const std::string& field) {
    if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
    std::string text = "\"";
    for (const char c : field) text += c == '"' ? "\"\"" : std::string(1, c);
    return text + '"';
}

class CsvReport final : public Report {
  public:
    CsvReport(std::ostream& out, const Plan& plan) : out_(out), plan_(plan) {
        out_ << "file,part,chain,beads,breaks,method,scale,seed,closures,failed,down_to_three,left,"
                "smallest_core,core_closure,core_ids\n";
    }

    void add(const Result& result) override {
        if (plan_.together) {
            start(result, "structure", result.whole, "");
            out_ << ",,,\n";
        }
        for (const ComponentTally& tally : result.components) {
            start(result, plan_.together ? "component" : "chain", tally, tally.breaks);
            if (tally.smallest)
                out_ << ',' << tally.smallest->loop.atoms.size() << ',' << tally.smallest->closure << ','
                     << ids_of(tally.smallest->loop) << '\n';
            else
                out_ << ",,,\n";
        }
        out_.flush();
    }

  private:
    void start(const Result& result, const char* part, const Tally& tally, const std::string& breaks) {
        out_ << quoted(result.file) << ',' << part << ',' << quoted(tally.name) << ',' << tally.beads << ','
             << quoted(breaks) << ',' << name_of(plan_.method) << ',';
        if (takes_scale(plan_.method)) out_ << scale_text(plan_.scale);
        out_ << ',';
        if (is_random(plan_.method)) out_ << plan_.seed;
        out_ << ',' << plan_.closures << ',' << result.failed << ',' << tally.bare << ',';
        const char* separator = "";
        for (const auto& [beads, closures] : tally.left) {
            out_ << separator << beads << ':' << closures;
            separator = " ";
        }
    }

    std::ostream& out_;
    const Plan& plan_;
};

} // namespace

std::unique_ptr<Report> make_report(Format format, std::ostream& out, const Plan& plan) {
    out.imbue(std::locale::classic());
    switch (format) {
    case Format::json:
        return std::make_unique<JsonReport>(out, plan);
    case Format::csv:
        return std::make_unique<CsvReport>(out, plan);
    case Format::text:
        break;
    }
    return std::make_unique<TextReport>(out, plan);
}
