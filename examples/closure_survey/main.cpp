// Surveys chains of C-alpha atoms: closes each in many ways, reduces every loop and counts what is left.
#include "diagram.hpp"
#include "picture.hpp"
#include "report.hpp"

#include <CLI/CLI.hpp>

#include <chrono>
#include <cmath>
#include <fstream>
#include <iostream>
#include <thread>

namespace {

constexpr int exit_failure = 1; // a file, a chain or an output failed, the rest is done
constexpr int exit_usage = 2;

constexpr double default_point_scale = 10.0;
constexpr double default_arc_scale = 2.0;
constexpr double largest_scale = 1e6;
constexpr std::size_t default_count = 400;
constexpr std::size_t largest_count = 100'000'000;
constexpr unsigned most_threads = 1024;

const std::map<std::string, Method> methods = {{"directions", Method::directions},
                                               {"point", Method::point},
                                               {"direction", Method::direction},
                                               {"two-points", Method::two_points},
                                               {"outside", Method::outside}};

constexpr const char* footer = R"(Methods:
  directions  both ends moved out along each of 400 directions, one closure for each (default)
  direction   the same along a random direction (default with --structure)
  point       through one far point in a random direction
  two-points  by a far arc between two random directions
  outside     by a far arc from the last atom's direction to the first's: one closure
The random ones are repeated --count times. --scale is where the far atoms are: times the chain's
radius, or the structure's diameter; --seed repeats a run whose seed was reported.

Examples:
  closure_survey chain.txt                           400 closures of one chain
  closure_survey --svg chain.svg chain.txt           and a picture of the typical one
  closure_survey --chain B entry.cif.gz              chain B of an mmCIF file
  closure_survey --structure --seed 7 complex.pdb    all chains of a file as one structure
  closure_survey --method point --count 1000 --csv *.txt > survey.csv

Exit status: 0 all done; 1 a file or a chain could not be surveyed or an output not be written (one
line each on stderr; all others are done); 2 wrong command line.)";

struct Arguments {
    std::vector<std::string> files;
    std::string method, chain, svg;
    std::optional<std::size_t> count;
    std::optional<double> scale;
    std::optional<unsigned> seed;
    std::optional<int> first, last, view;
    unsigned threads = std::max(1U, std::thread::hardware_concurrency());
    bool structure = false, json = false, csv = false;
};

void declare(CLI::App& app, Arguments& into) {
    app.set_version_flag("--version", "closure_survey " CLOSURE_SURVEY_VERSION);
    app.add_option("FILE", into.files, readable_formats())->required()->option_text("...");
    app.add_option("--method", into.method, "How to close, see below")
        ->check(CLI::IsMember(&methods))
        ->option_text("METHOD");
    app.add_option("--count", into.count, "Closures of a random method (default 400)")
        ->check(CLI::Range(std::size_t{1}, largest_count))
        ->option_text("N");
    app.add_option("--scale", into.scale, "How far out (default 10 for point, 2 for arcs)")->option_text("X");
    app.add_option("--seed", into.seed, "Seed of a random method (default: from the clock, reported)")
        ->option_text("N");
    app.add_option("--chain", into.chain, "Only the chain of this name")->option_text("NAME");
    app.add_option("--first", into.first, "Cut every chain: first residue")->option_text("ID");
    app.add_option("--last", into.last, "Cut every chain: last residue")->option_text("ID");
    app.add_flag("--structure", into.structure, "Close and reduce all chains of a file together");
    app.add_option("--threads", into.threads, "Threads (default: all); the output is the same for any number")
        ->check(CLI::Range(1U, most_threads))
        ->option_text("N");
    auto* json = app.add_flag("--json", into.json, "Report as JSON");
    app.add_flag("--csv", into.csv, "Report as CSV, one row for each chain")->excludes(json);
    auto* svg = app.add_option("--svg", into.svg, "Draw the first chain or structure to this file")
                    ->option_text("FILE");
    app.add_option("--view", into.view, "Look along this direction (default: a clear one)")
        ->check(CLI::Range(0, views - 1))
        ->option_text("0..59")
        ->needs(svg);
    app.footer(footer);
}

unsigned seed_from_clock() {
    const auto ticks = std::chrono::system_clock::now().time_since_epoch().count();
    constexpr long long easy_to_type = 1'000'000'007;
    return static_cast<unsigned>(ticks % easy_to_type);
}

[[noreturn]] void refuse(const std::string& reason) { throw CLI::ValidationError(reason, exit_usage); }

Plan plan_of(const Arguments& given) {
    Plan plan;
    plan.together = given.structure;
    plan.threads = given.threads;
    if (!given.method.empty())
        plan.method = methods.at(given.method);
    else if (given.structure)
        plan.method = Method::direction;

    const std::string name = name_of(plan.method);
    if (given.structure && plan.method == Method::directions)
        refuse("--method directions closes single chains: use direction with --structure");
    if (given.count && !is_random(plan.method)) refuse("--count: method " + name + " is not random");
    if (given.seed && !is_random(plan.method)) refuse("--seed: method " + name + " is not random");
    if (given.scale && !takes_scale(plan.method)) refuse("--scale: method " + name + " takes none");

    plan.scale = given.scale.value_or(plan.method == Method::point ? default_point_scale : default_arc_scale);
    if (!(plan.scale > 1.0 && plan.scale <= largest_scale)) refuse("--scale must be above 1, up to 1000000");
    if (plan.method == Method::outside) plan.closures = 1;
    if (is_random(plan.method)) {
        plan.closures = given.count.value_or(default_count);
        plan.seed = given.seed ? *given.seed : seed_from_clock();
    }
    return plan;
}

/// A buffer that takes everything and keeps nothing. Several threads may write to it at once, as
/// ChainReduce() does with its debug line: it has no state.
class Nowhere final : public std::streambuf {
  protected:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

/// Silences std::cout while it lives and hands out the buffer it had.
class SilentCout {
  public:
    SilentCout() : screen_(std::cout.rdbuf(&nowhere_)) {}
    ~SilentCout() { std::cout.rdbuf(screen_); }
    SilentCout(const SilentCout&) = delete;
    SilentCout& operator=(const SilentCout&) = delete;
    std::streambuf* screen() const { return screen_; }

  private:
    Nowhere nowhere_;
    std::streambuf* screen_;
};

/// One run over all files. What fails is told on stderr and does not stop the rest.
class Run {
  public:
    Run(const Arguments& given, const Plan& plan, std::ostream& out)
        : given_(given), plan_(plan), report_(make_report(format(), out, plan)),
          progress_(given.files.size()) {}

    bool all_files() {
        for (const std::string& file : given_.files) {
            ++file_number_;
            attempt(file, [&] { one_file(file); });
        }
        progress_.clear();
        report_->finish();
        return good_;
    }

  private:
    Format format() const { return given_.json ? Format::json : given_.csv ? Format::csv : Format::text; }

    template <typename Action> void attempt(const std::string& what, const Action& action) {
        try {
            action();
        } catch (const std::exception& failure) {
            good_ = false;
            progress_.clear();
            // Some parsers start with the name of the file or use several lines.
            std::string reason = failure.what();
            std::replace(reason.begin(), reason.end(), '\n', ' ');
            std::cerr << "closure_survey: " << (reason.starts_with(what) ? "" : what + ": ") << reason
                      << '\n';
        }
    }

    void one_file(const std::string& file) {
        std::vector<NamedChain> chains = read_chains(file);
        if (!given_.chain.empty()) {
            std::erase_if(chains, [&](const NamedChain& named) { return named.name != given_.chain; });
            if (chains.empty()) throw std::runtime_error("has no chain " + given_.chain);
        }
        std::vector<Molecule> molecules;
        if (given_.structure)
            molecules.push_back({file, std::move(chains)});
        else
            for (NamedChain& named : chains) molecules.push_back({file, {std::move(named)}});
        for (Molecule& molecule : molecules) one_molecule(molecule);
    }

    void one_molecule(Molecule& molecule) {
        const std::string& name = molecule.chains.front().name;
        const std::string label = molecule.file + (given_.structure || name.empty() ? "" : ": chain " + name);
        attempt(label, [&] {
            for (NamedChain& named : molecule.chains) cut_as_asked(named.chain);
            progress_.begin(label, file_number_, plan_.closures);
            const Result result = survey(molecule, plan_, progress_);
            progress_.clear();
            report_->add(result);
            if (result.counted() == 0) throw std::runtime_error("every closure failed");
            if (!given_.svg.empty() && !std::exchange(drawn_, true)) draw(result);
        });
    }

    void cut_as_asked(Chain& chain) const {
        if (!given_.first && !given_.last) return;
        cut(chain, given_.first.value_or(chain.front().id), given_.last.value_or(chain.back().id));
    }

    void draw(const Result& result) {
        attempt(given_.svg, [&] {
            std::ofstream file(given_.svg, std::ios::binary);
            file << picture(result, plan_, given_.view);
            file.close();
            if (!file) throw std::runtime_error("cannot be written");
        });
    }

    const Arguments& given_;
    const Plan& plan_;
    std::unique_ptr<Report> report_;
    Progress progress_;
    std::size_t file_number_ = 0;
    bool drawn_ = false;
    bool good_ = true;
};

int run(const Arguments& given) {
    const Plan plan = plan_of(given);
    const SilentCout silent;
    std::ostream out(silent.screen());
    bool good = Run(given, plan, out).all_files();
    if (!out.flush()) {
        std::cerr << "closure_survey: standard output: cannot be written\n";
        good = false;
    }
    return good ? 0 : exit_failure;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Closes chains of C-alpha atoms in many ways, reduces every loop and counts what is left.",
                 "closure_survey");
    Arguments given;
    declare(app, given);
    try {
        app.parse(argc, argv);
        return run(given);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error);
        std::cerr << "closure_survey: " << error.what() << " (see --help)\n";
        return exit_usage;
    } catch (const std::exception& failure) {
        std::cerr << "closure_survey: " << failure.what() << '\n';
        return exit_failure;
    }
}
