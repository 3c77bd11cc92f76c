// `loopwise survey`: closes each chain in many ways, reduces every loop and counts what is left.
#include "app/commands/command.hpp"
#include "app/commands/methods.hpp"
#include "app/commands/run.hpp"
#include "app/report/each.hpp"
#include "app/report/survey_entry.hpp"
#include "draw/drawing.hpp"
#include "draw/page/page.hpp"
#include "draw/picture.hpp"
#include "write/whole_file.hpp"

#include <algorithm>
#include <chrono>
#include <utility>

namespace loopwise::app {
namespace {

constexpr double most_noise = 1e6;
constexpr std::size_t most_repeats = 1'000'000;

constexpr const char* footer =
    R"(

A random method is repeated --count times. --scale says how far out the closure goes: in radii of the chain,
or in diameters of the structure. --seed repeats a run whose seed was reported. A chain that stores its first
bead again at its end is a ring and is reduced as it is; --closed takes every chain for a ring.
--noise repeats the survey with moved beads, whose errors follow from --seed (default 0).

Examples:
  loopwise survey chain.txt                           400 closures of one chain
  loopwise survey --svg chain.svg chain.txt           and a picture of the typical one
  loopwise survey --chain A,B entry.cif.gz            two chains of an mmCIF file
  loopwise survey --atom "C4'" rna.pdb                a nucleic acid
  loopwise survey --structure --seed 7 complex.pdb    all chains of a file as one structure
  loopwise survey --csv *.txt > survey.csv            a table of many chains)";

struct Arguments : Inputs, MethodOptions {
    std::string svg, html, each;
    std::optional<std::size_t> count;
    std::optional<int> view;
    survey::NoisePlan noise;
    unsigned threads = 0;
    bool structure = false, closed = false, no_knots = false;
};

void declare(CommandLine& line, Arguments& into) {
    declare_method(line, into, "from the clock, reported");
    const survey::Method random = survey::Method::standard(true);
    line.number<std::size_t>(
        {"--count", "N", "Closures of a random method (default " + std::to_string(random->default_closures) + ")"},
        {1, random->most_closures}, into.count);
    declare_inputs(line, into);
    line.flag("--closed", into.closed, "Every chain is a ring: reduce it as it is");
    line.flag("--structure", into.structure, "Close and reduce all chains of a file together");
    declare_threads(line, into.threads);
    line.number<double>({"--noise", "X", "Repeat with beads moved by a Gaussian of this size; give the share's range"},
                        {0.0, most_noise}, into.noise.size);
    line.number<std::size_t>({"--repeats", "N", "How often, with --noise (default 20)"}, {1, most_repeats},
                             into.noise.repeats);
    line.needs("--repeats", "--noise");
    line.text({"--svg", "FILE", "Draw the first chain or structure to this file"}, into.svg);
    line.text({"--html", "FILE", "Write a page with the first chain in three dimensions, for a browser"}, into.html);
    line.number<int>({"--view", "0..59", "Look along this direction (default: a clear one)"}, {0, draw::views - 1},
                     into.view);
    line.needs("--view", "--svg");
    line.text({"--each", "FILE", "Write a row of CSV for every closure to this file"}, into.each);
    line.flag("--no-knots", into.no_knots, "Only count the beads left; do not name the knots");
    line.footer(methods_help(true) + footer);
}

std::uint64_t seed_from_clock() {
    const auto ticks = std::chrono::system_clock::now().time_since_epoch().count();
    constexpr long long easy_to_type = 1'000'000'007;
    return static_cast<std::uint64_t>(ticks % easy_to_type);
}

survey::Plan plan_of(const Arguments& given) {
    if (given.closed && !given.method.empty()) refuse_usage("--method: --closed closes nothing");
    const survey::Method method = given.closed ? survey::Method::ring() : method_of(given, given.structure);
    const std::string name = method->name;
    if (given.noise.size > 0 && given.structure) refuse_usage("--noise: of single chains only, not of a structure");
    if (given.noise.size > 0 && given.no_knots) refuse_usage("--noise: needs names of knots");
    if (given.structure && method->most_components == 0)
        refuse_usage("--method " + name + " closes single chains: use " + survey::Method::standard(true)->name +
                     " with --structure");
    if (given.structure && !given.html.empty()) refuse_usage("--html shows single chains, not a structure");
    if (given.count && !method->random)
        refuse_usage("--count: method " + name + " is not random and has a fixed number of closures");
    MethodOptions options = given;
    if (given.noise.size > 0 && !method->random) options.seed.reset(); // it is that of the noise
    survey::Plan plan = plan_of(options, method);
    plan.together = given.structure;
    plan.threads = given.threads;
    plan.name_knots = !given.no_knots;
    if (given.count) plan.closures = *given.count;
    if (method->random && !given.seed) plan.seed = seed_from_clock();
    return plan;
}

/// Shows the work and ends it when the user asks for that.
class Watch final : public survey::Watcher {
  public:
    explicit Watch(Progress& progress) : progress_(progress) {}
    void closure_at(std::size_t closure, double part) override {
        stop_if_interrupted();
        progress_.closure_at(closure, part);
    }
    void path_begins() override { stop_if_interrupted(); }

  private:
    Progress& progress_;
};

class SurveyRun {
  public:
    explicit SurveyRun(const Arguments& given)
        : given_(given), plan_(plan_of(given)), run_(given, survey_head(plan_)), watch_(run_.progress()) {
        if (given.each.empty()) return;
        try {
            each_file_.emplace(given.each);
        } catch (const std::runtime_error& refusal) {
            throw std::runtime_error(given.each + ": " + refusal.what());
        }
        each_.emplace(each_file_->stream(), watch_);
    }

    int all_files() {
        const int status = run_.each_molecule([&](polymer::Molecule& molecule) {
            if (given_.structure) return one_molecule(molecule, label_of(molecule));
            for (polymer::NamedChain& chain : molecule.chains) {
                polymer::Molecule single{molecule.file, {std::move(chain)}, molecule.model, molecule.notes};
                one_molecule(single, label_of(single, single.chains.front()));
            }
        });
        if (!each_ || status == exit_interrupted) return status;
        run_.attempt(given_.each, [&] { each_file_->commit(); });
        return std::max(status, run_.exit_status());
    }

  private:
    survey::NoisePlan noise_plan() const {
        survey::NoisePlan plan = given_.noise;
        plan.seed = given_.seed.value_or(0);
        return plan;
    }

    void one_molecule(polymer::Molecule& molecule, const std::string& label) {
        run_.attempt(label, [&] {
            for (polymer::NamedChain& chain : molecule.chains) given_.cut(chain);
            const survey::Plan plan = survey::plan_for(molecule, plan_);
            run_.begin(label, plan.closures);
            if (each_) each_->begin(molecule);
            const survey::Result result =
                survey::survey(molecule, plan, each_ ? static_cast<survey::Watcher&>(*each_) : watch_);
            std::optional<survey::Noise> noise;
            if (given_.noise.size > 0 && result.counted() > 0)
                noise = survey::noise_of(molecule.chains.front(), result, noise_plan(), watch_);
            run_.add(SurveyEntry(result, std::move(noise)));
            if (result.counted() == 0) throw std::runtime_error("every closure failed");
            if (std::exchange(drawn_, true)) return;
            run_.write(given_.svg, [&] { return draw::picture(result, given_.view); });
            run_.write(given_.html, [&] { return draw::survey_page(result); });
        });
    }

    const Arguments& given_;
    const survey::Plan plan_;
    Run run_;
    Watch watch_;
    std::optional<write::WholeFile> each_file_;
    std::optional<EachClosure> each_;
    bool drawn_ = false;
};

} // namespace

Action declare_survey(CommandLine& line) {
    const auto given = std::make_shared<Arguments>();
    declare(line, *given);
    return [given] {
        plan_of(*given);
        write::refuse_harmful_outputs(given->files,
                                      {{given->svg, ".svg"}, {given->html, ".html"}, {given->each, ".csv"}});
        return SurveyRun(*given).all_files();
    };
}

} // namespace loopwise::app
