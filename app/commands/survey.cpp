// `loopwise survey`: closes each chain in many ways, reduces every loop and counts what is left.
#include "app/commands/command.hpp"
#include "app/commands/files.hpp"
#include "app/commands/methods.hpp"
#include "app/commands/selecting.hpp"
#include "app/progress.hpp"
#include "app/report/each.hpp"
#include "app/report/report.hpp"
#include "draw/drawing.hpp"
#include "draw/page/page.hpp"
#include "draw/picture.hpp"
#include "read/bytes.hpp"
#include "read/read.hpp"
#include "write/whole_file.hpp"

#include <chrono>
#include <iostream>
#include <thread>

namespace loopwise::app {
namespace {

constexpr unsigned most_threads = 1024;

constexpr const char* footer =
    R"(

A random method is repeated --count times. --scale says how far out the closure goes: in radii of the chain,
or in diameters of the structure. --seed repeats a run whose seed was reported. A chain that stores its first
bead again at its end is a ring and is reduced as it is; --closed takes every chain for a ring.

Examples:
  loopwise survey chain.txt                           400 closures of one chain
  loopwise survey --svg chain.svg chain.txt           and a picture of the typical one
  loopwise survey --chain A,B entry.cif.gz            two chains of an mmCIF file
  loopwise survey --atom "C4'" rna.pdb                a nucleic acid
  loopwise survey --structure --seed 7 complex.pdb    all chains of a file as one structure
  loopwise survey --csv *.txt > survey.csv            a table of many chains)";

struct Arguments : MethodOptions {
    std::vector<std::string> files;
    std::string svg, html, each;
    Selecting selecting;
    std::optional<std::size_t> count;
    std::optional<int> view;
    unsigned threads = std::max(1U, std::thread::hardware_concurrency());
    bool structure = false, closed = false, no_knots = false, json = false, csv = false;
};

void declare(CLI::App& app, Arguments& into) {
    app.add_option("FILE", into.files, read::readable_formats())->required()->option_text("...");
    declare_method(app, into, "from the clock, reported");
    const survey::Method random = survey::Method::standard(true);
    app.add_option("--count", into.count,
                   "Closures of a random method (default " + std::to_string(random->default_closures) + ")")
        ->check(CLI::Range(std::size_t{1}, random->most_closures))
        ->option_text("N");
    declare_selecting(app, into.selecting);
    app.add_flag("--closed", into.closed, "Every chain is a ring: reduce it as it is");
    app.add_flag("--structure", into.structure, "Close and reduce all chains of a file together");
    app.add_option("--threads", into.threads, "Threads (default: all); the output is the same for any number")
        ->check(CLI::Range(1U, most_threads))
        ->option_text("N");
    auto* json = app.add_flag("--json", into.json, "Report as JSON");
    app.add_flag("--csv", into.csv, "Report as CSV, one row for each chain")->excludes(json);
    auto* svg = app.add_option("--svg", into.svg, "Draw the first chain or structure to this file")
                    ->option_text("FILE");
    app.add_option("--html", into.html,
                   "Write a page with the first chain in three dimensions, for a browser")
        ->option_text("FILE");
    app.add_option("--view", into.view, "Look along this direction (default: a clear one)")
        ->check(CLI::Range(0, draw::views - 1))
        ->option_text("0..59")
        ->needs(svg);
    app.add_option("--each", into.each, "Write a row of CSV for every closure to this file")
        ->option_text("FILE");
    app.add_flag("--no-knots", into.no_knots, "Only count the beads left; do not name the knots");
    app.footer(methods_help(true) + footer);
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
    if (given.structure && method->most_components == 0)
        refuse_usage("--method " + name + " closes single chains: use " +
                     survey::Method::standard(true)->name + " with --structure");
    if (given.structure && !given.html.empty()) refuse_usage("--html shows single chains, not a structure");
    if (given.count && !method->random) refuse_usage("--count: method " + name + " is not random");
    survey::Plan plan = plan_of(given, method);
    plan.together = given.structure;
    plan.threads = given.threads;
    plan.name_knots = !given.no_knots;
    if (given.count) plan.closures = *given.count;
    if (method->random && !given.seed) plan.seed = seed_from_clock();
    return plan;
}

/// One run over all files. What fails is told on stderr and does not stop the rest.
class Run {
  public:
    Run(const Arguments& given, const read::Selection& selection, const survey::Plan& plan, std::ostream& out)
        : given_(given), selection_(selection), plan_(plan), report_(make_report(format(), out, plan)),
          progress_(given.files.size()) {
        if (given.each.empty()) return;
        each_file_.open(given.each, std::ios::binary);
        if (!each_file_) throw std::runtime_error(given.each + ": cannot be written");
        each_.emplace(each_file_, progress_);
    }

    int all_files() {
        for (const std::string& file : given_.files) {
            ++file_number_;
            errors_.attempt(file, [&] { one_file(file); });
        }
        progress_.clear();
        report_->finish();
        if (each_) errors_.attempt(given_.each, [&] { close(each_file_); });
        return errors_.exit_status();
    }

  private:
    Format format() const { return given_.json ? Format::json : given_.csv ? Format::csv : Format::text; }

    static void close(std::ofstream& file) {
        file.close();
        if (!file) throw std::runtime_error("cannot be written");
    }

    void one_file(const std::string& file) {
        progress_.begin("reading " + file, file_number_);
        for (polymer::Molecule& whole : read::read_molecules(file, selection_)) {
            if (given_.structure) {
                one_molecule(whole);
                continue;
            }
            for (polymer::NamedChain& named : whole.chains) {
                polymer::Molecule single{file, {}, whole.model, whole.notes};
                single.chains.push_back(std::move(named));
                one_molecule(single);
            }
        }
    }

    void one_molecule(polymer::Molecule& molecule) {
        const std::string label =
            given_.structure ? label_of(molecule) : label_of(molecule, molecule.chains.front());
        errors_.attempt(label, [&] {
            for (polymer::NamedChain& named : molecule.chains)
                read::cut(named, given_.selecting.first, given_.selecting.last);
            const survey::Plan plan = survey::plan_for(molecule, plan_);
            progress_.begin(label, file_number_, plan.closures);
            if (each_) each_->begin(molecule);
            const survey::Result result =
                survey::survey(molecule, plan, each_ ? static_cast<survey::Watcher&>(*each_) : progress_);
            progress_.clear();
            report_->add(result);
            if (result.counted() == 0) throw std::runtime_error("every closure failed");
            if (!std::exchange(drawn_, true)) draw(result);
        });
    }

    void draw(const survey::Result& result) {
        const auto write = [&](const std::string& path, const auto& text) {
            if (path.empty()) return;
            errors_.attempt(path, [&] {
                progress_.begin("drawing " + path, file_number_);
                const std::string drawn = text();
                progress_.clear();
                write::write_whole(path, drawn);
            });
        };
        write(given_.svg, [&] { return draw::picture(result, given_.view); });
        write(given_.html, [&] { return draw::survey_page(result); });
    }

    const Arguments& given_;
    const read::Selection& selection_;
    const survey::Plan& plan_;
    std::unique_ptr<Report> report_;
    Progress progress_;
    ErrorReporter errors_{progress_};
    std::ofstream each_file_;
    std::optional<EachClosure> each_;
    std::size_t file_number_ = 0;
    bool drawn_ = false;
};

int run(const Arguments& given) {
    const read::Selection selection = selection_of(given.selecting);
    refuse_second_input(given.files);
    const survey::Plan plan = plan_of(given);
    write::refuse_harmful_outputs(given.files,
                                  {{given.svg, ".svg"}, {given.html, ".html"}, {given.each, ".csv"}});
    return Run(given, selection, plan, std::cout).all_files();
}

} // namespace

Action declare_survey(CLI::App& command) {
    const auto given = std::make_shared<Arguments>();
    declare(command, *given);
    return [given] { return run(*given); };
}

} // namespace loopwise::app
