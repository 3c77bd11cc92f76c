// `loopwise fingerprint`: the knot of every subchain of a chain, cores and slipknots.
#include "app/commands/command.hpp"
#include "app/commands/files.hpp"
#include "app/commands/selecting.hpp"
#include "app/progress.hpp"
#include "app/report/fingerprint_report.hpp"
#include "draw/matrix_picture.hpp"
#include "draw/page/page.hpp"
#include "draw/viewers.hpp"
#include "write/outputs.hpp"

#include <atomic>
#include <cmath>
#include <fstream>
#include <iostream>
#include <thread>

namespace loopwise::app {
namespace {

constexpr std::size_t largest_step = 1'000'000;
constexpr unsigned most_threads = 1024;
constexpr double half = 0.5;
constexpr std::size_t most_shown = 2000; ///< subchains of which a page holds a closure

constexpr const char* footer =
    R"(Each subchain is closed: both ends are moved out along directions of a table. Each loop is reduced and
its knot named. The core of a knot is the shortest subchain that is this knot in at least half of its closures.
A slipknot is a knotted subchain inside a longer subchain that is unknotted or a different knot.

By default a grid of subchains is closed, and refined along the borders between knots, cores first, until a
limit of work is reached that the chain's length sets. The report says to within how many residues the
borders are known then. Files are written for the first chain, each whole or not at all.

Examples:
  loopwise fingerprint chain.txt
  loopwise fingerprint --svg matrix.svg --matrix matrix.csv --chain A entry.cif.gz
  loopwise fingerprint --full --json *.pdb > knots.json
  loopwise fingerprint --pymol knot.pml entry.pdb && pymol entry.pdb knot.pml)";

struct Arguments {
    std::vector<std::string> files;
    Selecting selecting;
    std::string matrix, svg, html, pymol, chimerax;
    fingerprint::FingerprintPlan plan;
    double least_share = half;
    bool full = false, json = false, csv = false;
};

void declare(CLI::App& app, Arguments& into) {
    fingerprint::FingerprintPlan& plan = into.plan;
    plan.threads = std::max(1U, std::thread::hardware_concurrency());
    app.add_option("FILE", into.files, read::readable_formats())->required()->option_text("...");
    auto* step = app.add_option("--step", plan.policy.step,
                                "Residues between two lines of the grid; follow every border to the residue\n"
                                "(default: length / 40, coarser if the work limit requires it)")
                     ->check(CLI::Range(std::size_t{1}, largest_step))
                     ->option_text("N");
    app.add_flag("--full", into.full, "Close every subchain")->excludes(step);
    app.add_option("--closures", plan.closures, "Closures of each subchain, spread evenly (default 100)")
        ->check(CLI::Range(std::size_t{1}, fingerprint::farthest_point_order().size()))
        ->option_text("1..400");
    app.add_option("--min-share", into.least_share, "Report knots that reach this share (default 0.5)")
        ->check(CLI::Range(0.0, 1.0))
        ->option_text("X");
    declare_selecting(app, into.selecting);
    app.add_option("--threads", plan.threads, "Threads (default: all); the output is the same for any number")
        ->check(CLI::Range(1U, most_threads))
        ->option_text("N");
    auto* json = app.add_flag("--json", into.json, "Report as JSON");
    app.add_flag("--csv", into.csv, "Report as CSV, one row for each knot")->excludes(json);
    app.add_option("--matrix", into.matrix, "Write the subchains that were closed to this CSV file")
        ->option_text("FILE");
    app.add_option("--svg", into.svg, "Draw all subchains to this SVG file")->option_text("FILE");
    app.add_option("--html", into.html, "Write a page with the chain in three dimensions, for a browser")
        ->option_text("FILE");
    app.add_option("--pymol", into.pymol, "Write a PyMOL script that colours cores")->option_text("FILE");
    app.add_option("--chimerax", into.chimerax, "Write a ChimeraX script that colours cores")
        ->option_text("FILE");
    app.footer(footer);
}

/// Shows the work and ends it when the user asks for that.
class Watch final : public fingerprint::FingerprintWatcher {
  public:
    Watch(Progress& progress, const fingerprint::FingerprintPlan& plan, const std::string& label,
          std::size_t file_number)
        : progress_(progress), plan_(plan), label_(label), file_number_(file_number) {}
    void subchain_closed(std::size_t done, std::size_t, double part) override {
        progress_.show_part(done, part);
    }
    void closure_begins() override { stop_if_interrupted(); }
    void every_subchain_begins(double work) override {
        const double seconds =
            work * static_cast<double>(plan_.closures) * fingerprint::seconds_per_work / plan_.threads;
        if (seconds < long_work) return;
        progress_.clear();
        std::cerr << "loopwise: note: " << label_ << ": closing every subchain takes some "
                  << std::llround(std::max(1.0, seconds / seconds_per_hour))
                  << " h; it is far less without --full\n";
        progress_.begin(label_, file_number_);
    }

  private:
    static constexpr double long_work = 1800, seconds_per_hour = 3600;
    Progress& progress_;
    const fingerprint::FingerprintPlan& plan_;
    const std::string& label_;
    std::size_t file_number_;
};

class Run {
  public:
    explicit Run(const Arguments& given)
        : given_(given), plan_(given.plan), progress_(given.files.size(), "subchains"),
          report_(make_fingerprint_report(given.json  ? Format::json
                                          : given.csv ? Format::csv
                                                      : Format::text,
                                          std::cout, plan_, given.least_share)) {
        plan_.most_memory = available_memory();
        if (given.full) plan_.policy.step = 1;
    }

    int all_files() {
        ErrorReporter errors(progress_);
        bool interrupted = false;
        try {
            for (const std::string& file : given_.files) {
                ++file_number_;
                errors.attempt(file, [&] { one_file(file, errors); });
            }
        } catch (const Interrupted&) {
            interrupted = true;
        }
        progress_.clear();
        report_->finish();
        const int status = errors.exit_status();
        return interrupted ? exit_interrupted : status;
    }

  private:
    void one_file(const std::string& file, ErrorReporter& errors) {
        progress_.begin("reading " + file, file_number_);
        for (polymer::Molecule& molecule : read::read_molecules(file, selection_of(given_.selecting))) {
            tell_notes_in_chains(molecule);
            for (polymer::NamedChain& chain : molecule.chains) {
                const std::string label = label_of(molecule, chain);
                errors.attempt(label, [&] { one_chain(molecule, label, chain, errors); });
            }
        }
    }

    void one_chain(const polymer::Molecule& molecule, const std::string& label, polymer::NamedChain& chain,
                   ErrorReporter& errors) {
        read::cut(chain, given_.selecting.first, given_.selecting.last);
        if (polymer::is_ring(chain))
            throw std::runtime_error("is a ring; only open chains have a fingerprint");
        progress_.begin(label, file_number_);
        Watch watch(progress_, plan_, label, file_number_);
        fingerprint::ChainFingerprint fingerprint =
            fingerprint::fingerprint_of(molecule.file, chain, plan_, watch);
        fingerprint.model = molecule.model;
        progress_.clear();
        report_->add(fingerprint);
        if (!std::exchange(drawn_, true)) write_files(fingerprint, chain.beads, watch, errors);
    }

    void write_files(const fingerprint::ChainFingerprint& of, const Chain& beads, Watch& watch,
                     ErrorReporter& errors) {
        const std::vector<fingerprint::KnotPlace> places = places_shown(of, given_.least_share);
        const auto write = [&](const std::string& path, const auto& text) {
            if (!path.empty()) errors.attempt(path, [&] { write::write_whole(path, text()); });
        };
        write(given_.matrix, [&] { return matrix_csv(of); });
        write(given_.svg, [&] { return draw::matrix_svg(draw::picture_of(of, places)); });
        write(given_.html, [&] { return page(of, places, beads, watch); });
        write(given_.pymol, [&] { return draw::pymol_script(of, places); });
        write(given_.chimerax, [&] { return draw::chimerax_script(of, places); });
    }

    std::string page(const fingerprint::ChainFingerprint& of,
                     const std::vector<fingerprint::KnotPlace>& places, const Chain& beads, Watch& watch) {
        progress_.begin("closures for " + given_.html, file_number_);
        const std::vector<fingerprint::TypicalClosure> closures = fingerprint::typical_closures(
            beads, of, fingerprint::shown_subchains(of, places, most_shown), plan_.threads, watch);
        progress_.clear();
        return draw::fingerprint_page(of, places, beads, closures);
    }

    const Arguments& given_;
    fingerprint::FingerprintPlan plan_;
    Progress progress_;
    std::unique_ptr<FingerprintReport> report_;
    std::size_t file_number_ = 0;
    bool drawn_ = false;
};

} // namespace

Action declare_fingerprint(CLI::App& command) {
    const auto given = std::make_shared<Arguments>();
    declare(command, *given);
    return [given] {
        if (!std::isfinite(given->least_share)) refuse_usage("--min-share: a number from 0 to 1");
        refuse_second_input(given->files);
        write::refuse_harmful_outputs(given->files, {{given->matrix, ".csv"},
                                                     {given->svg, ".svg"},
                                                     {given->html, ".html"},
                                                     {given->pymol, ".pml"},
                                                     {given->chimerax, ".cxc"}});
        note_interruptions();
        return Run(*given).all_files();
    };
}

} // namespace loopwise::app
