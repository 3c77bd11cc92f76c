// `loopwise fingerprint`: the knot of every subchain of a chain, cores and slipknots.
#include "app/commands/command.hpp"
#include "app/commands/run.hpp"
#include "app/report/fingerprint_entry.hpp"
#include "draw/matrix_picture.hpp"
#include "draw/page/page.hpp"
#include "draw/viewers.hpp"
#include "write/whole_file.hpp"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>
#include <limits>
#include <unistd.h>
#include <utility>

namespace loopwise::app {
namespace {

constexpr std::size_t largest_step = 1'000'000;
constexpr double half = 0.5;
constexpr std::size_t most_shown = 2000; ///< subchains of which a page holds a closure

constexpr const char* footer =
    R"(Each subchain is closed: both ends are moved out along directions of a table. Each loop is reduced and
its knot named. The core of a knot is the shortest subchain that is this knot in at least half of its closures,
or in the share that --core-share says.
A slipknot is a knotted subchain inside a longer subchain that is unknotted or lacks the knot; a factor is a
part of the chain's own knot.

By default every subchain is closed if a limit of work allows it, which the chain's length sets. It does for
most proteins. Otherwise a grid of subchains is closed, and refined along the borders between knots, cores
first, until the limit is reached. The report says to within how many residues the borders are known then.
Files are written for the first chain, each whole or not at all.

Examples:
  loopwise fingerprint chain.txt
  loopwise fingerprint --svg matrix.svg --matrix matrix.csv --chain A entry.cif.gz
  loopwise fingerprint --full --json *.pdb > knots.json
  loopwise fingerprint --pymol knot.pml entry.pdb && pymol entry.pdb knot.pml)";

struct Arguments : Inputs {
    std::string matrix, svg, html, pymol, chimerax;
    fingerprint::FingerprintPlan plan;
    double least_share = half;
    bool full = false;
};

void declare(CommandLine& line, Arguments& into) {
    fingerprint::FingerprintPlan& plan = into.plan;
    line.number<std::size_t>({"--step", "N",
                              "Residues between two lines of the grid; follow every border to the residue\n"
                              "(default: 1 if the work limit allows it, else length / 40 or coarser)"},
                             {1, largest_step}, plan.policy.step);
    line.flag("--full", into.full, "Close every subchain in all directions");
    line.exclusive({"--full", "--step"});
    line.number<std::size_t>({"--closures", "1..400", "Closures of each subchain, spread evenly (default 100)"},
                             {1, fingerprint::farthest_point_order().size()}, plan.closures);
    line.number<double>({"--min-share", "X", "Report knots that reach this share (default 0.5)"}, {0.0, 1.0},
                        into.least_share);
    line.number<double>({"--core-share", "X", "Least share of a knot in its core (default 0.5)"}, {0.0, 1.0},
                        plan.core_share);
    declare_inputs(line, into);
    declare_threads(line, plan.threads);
    line.text({"--matrix", "FILE", "Write the subchains that were closed to this CSV file"}, into.matrix);
    line.text({"--svg", "FILE", "Draw all subchains to this SVG file"}, into.svg);
    line.text({"--html", "FILE", "Write a page with the chain in three dimensions, for a browser"}, into.html);
    line.text({"--pymol", "FILE", "Write a PyMOL script that colours cores"}, into.pymol);
    line.text({"--chimerax", "FILE", "Write a ChimeraX script that colours cores"}, into.chimerax);
    line.footer(footer);
}

/// Physical memory in bytes that other programs do not need.
std::size_t available_memory() {
    // Only this file counts what the kernel can free at once.
    std::ifstream file("/proc/meminfo");
    constexpr std::size_t kilobyte = 1024;
    std::string field, rest;
    while (file >> field)
        if (std::size_t amount = 0; field == "MemAvailable:" && file >> amount)
            return amount * kilobyte;
        else
            std::getline(file, rest);
    const long pages = sysconf(_SC_PHYS_PAGES), size = sysconf(_SC_PAGESIZE);
    if (pages <= 0 || size <= 0) return std::numeric_limits<std::size_t>::max();
    return static_cast<std::size_t>(pages) * static_cast<std::size_t>(size);
}

/// Shows the work and ends it when the user asks for that.
class Watch final : public fingerprint::FingerprintWatcher {
  public:
    Watch(Run& run, const fingerprint::FingerprintPlan& plan, const std::string& label)
        : run_(run), plan_(plan), label_(label) {}
    void subchain_closed(std::size_t done, std::size_t, double part) override { run_.progress().show_part(done, part); }
    void closure_begins() override { stop_if_interrupted(); }
    void every_subchain_begins(double work) override {
        const double seconds =
            work * static_cast<double>(plan_.closures) * fingerprint::seconds_per_work / plan_.threads;
        if (seconds < long_work) return;
        run_.progress().clear();
        std::cerr << "loopwise: note: " << label_ << ": closing every subchain takes some "
                  << std::llround(std::max(1.0, seconds / seconds_per_hour)) << " h; it is far less without --full\n";
        run_.begin(label_);
    }

  private:
    static constexpr double long_work = 1800, seconds_per_hour = 3600;
    Run& run_;
    const fingerprint::FingerprintPlan& plan_;
    const std::string& label_;
};

class FingerprintRun {
  public:
    explicit FingerprintRun(const Arguments& given)
        : given_(given), plan_(given.plan), run_(given, fingerprint_head(plan_, given.least_share), "subchains") {
        plan_.most_memory = available_memory();
        if (given.full) plan_.policy.step = 1;
    }

    int all_files() {
        return run_.each_chain([&](const polymer::Molecule& molecule, const polymer::NamedChain& chain) {
            if (polymer::is_ring(chain)) throw std::runtime_error("is a ring; only open chains have a fingerprint");
            const std::string label = label_of(molecule, chain);
            run_.begin(label);
            Watch watch(run_, plan_, label);
            fingerprint::ChainFingerprint of = fingerprint::fingerprint_of(molecule.file, chain, plan_, watch);
            of.model = molecule.model;
            const std::vector<fingerprint::KnotPlace> places = places_shown(of, given_.least_share);
            run_.add(FingerprintEntry(of, places, given_.least_share));
            if (!std::exchange(drawn_, true)) write_files(of, places, chain.beads, watch);
        });
    }

  private:
    void write_files(const fingerprint::ChainFingerprint& of, const std::vector<fingerprint::KnotPlace>& places,
                     const Chain& beads, Watch& watch) {
        run_.write(given_.matrix, [&] { return matrix_csv(of); });
        run_.write(given_.svg, [&] { return draw::matrix_svg(draw::picture_of(of, places)); });
        run_.write(given_.html, [&] { return page(of, places, beads, watch); });
        run_.write(given_.pymol, [&] { return draw::pymol_script(of, places); });
        run_.write(given_.chimerax, [&] { return draw::chimerax_script(of, places); });
    }

    std::string page(const fingerprint::ChainFingerprint& of, const std::vector<fingerprint::KnotPlace>& places,
                     const Chain& beads, Watch& watch) {
        run_.begin("closures for " + given_.html);
        return draw::fingerprint_page(
            of, places, beads,
            fingerprint::typical_closures(beads, of, fingerprint::shown_subchains(of, places, most_shown),
                                          plan_.threads, watch));
    }

    const Arguments& given_;
    fingerprint::FingerprintPlan plan_;
    Run run_;
    bool drawn_ = false;
};

} // namespace

Action declare_fingerprint(CommandLine& line) {
    const auto given = std::make_shared<Arguments>();
    declare(line, *given);
    return [given] {
        write::refuse_harmful_outputs(given->files, {{given->matrix, ".csv"},
                                                     {given->svg, ".svg"},
                                                     {given->html, ".html"},
                                                     {given->pymol, ".pml"},
                                                     {given->chimerax, ".cxc"}});
        return FingerprintRun(*given).all_files();
    };
}

} // namespace loopwise::app
