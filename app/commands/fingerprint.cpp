// `loopwise fingerprint`: the knot of every subchain of a chain, its core and its slipknots.
#include "app/commands/command.hpp"
#include "app/commands/run.hpp"
#include "app/report/fingerprint_entry.hpp"
#include "draw/matrix.hpp"
#include "draw/page/page.hpp"
#include "draw/viewers.hpp"
#include "write/whole_file.hpp"

#include <atomic>
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

constexpr const char* footer =
    R"(For each stretch of a chain its ends are moved out along directions of a table, each loop is reduced and
its knot named. The core of a knot is the shortest stretch of which at least half the closures give it;
a slipknot is knotted although the chain, or clearly a longer stretch around it, is not, or otherwise.

Without --full a grid of stretches is closed, and refined where neighbours differ: to the residue, cores
first, as far as an amount of work goes that is fixed by the chain's length. The report says where it ended.
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
};

void declare(CommandLine& line, Arguments& into) {
    fingerprint::FingerprintPlan& plan = into.plan;
    line.number<std::size_t>({"--step", "N",
                              "Residues between two lines of the grid; follow every border to the residue\n"
                              "(default: length / 40, coarser if the work limit requires it)"},
                             {1, largest_step}, plan.step);
    line.flag("--full", plan.full, "Close every subchain");
    line.exclusive({"--full", "--step"});
    line.number<std::size_t>(
        {"--closures", "1..400", "Closures of each subchain, spread evenly (default 100)"},
        {1, fingerprint::farthest_point_order().size()}, plan.closures);
    line.number<double>({"--min-share", "X", "Report knots that reach this share (default 0.5)"}, {0.0, 1.0},
                        into.least_share);
    declare_inputs(line, into);
    declare_threads(line, plan.threads);
    line.text({"--matrix", "FILE", "Write the subchains that were closed to this CSV file"}, into.matrix);
    line.text({"--svg", "FILE", "Draw all subchains to this SVG file"}, into.svg);
    line.text({"--html", "FILE", "Write a page with the chain in three dimensions, for a browser"},
              into.html);
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
    void subchain_done(std::size_t done, std::size_t) override { done_ = done; }
    void part_done(double part) override { run_.progress().show_part(done_, part); }
    void closure_begins() override { stop_if_interrupted(); }
    void all_begin(double work) override {
        const double seconds =
            work * static_cast<double>(plan_.closures) * fingerprint::seconds_per_work / plan_.threads;
        if (seconds < long_work) return;
        run_.progress().clear();
        std::cerr << "loopwise: note: " << label_ << ": closing every subchain takes some "
                  << std::llround(std::max(1.0, seconds / seconds_per_hour))
                  << " h; it is far less without --full\n";
        run_.begin(label_);
    }

  private:
    static constexpr double long_work = 1800, seconds_per_hour = 3600;
    Run& run_;
    const fingerprint::FingerprintPlan& plan_;
    const std::string& label_;
    std::atomic<std::size_t> done_ = 0;
};

class FingerprintRun {
  public:
    explicit FingerprintRun(const Arguments& given)
        : given_(given), plan_(given.plan),
          run_(given, fingerprint_head(plan_.closures, given.least_share), "subchains") {
        plan_.most_memory = available_memory();
        plan_.bounded = plan_.step == 0 && !plan_.full;
    }

    int all_files() {
        return run_.each_chain([&](const polymer::Molecule& molecule, const polymer::NamedChain& chain) {
            if (polymer::is_ring(chain))
                throw std::runtime_error("is a ring; only open chains have a fingerprint");
            const std::string label = label_of(molecule, chain);
            run_.begin(label);
            Watch watch(run_, plan_, label);
            fingerprint::ChainFingerprint of =
                fingerprint::fingerprint_of(molecule.file, chain, plan_, watch);
            of.model = molecule.model;
            const std::vector<fingerprint::KnotPlace> places = places_shown(of, given_.least_share);
            run_.add(FingerprintEntry(of, places, given_.least_share));
            if (!std::exchange(drawn_, true)) write_files(of, places, chain.beads);
        });
    }

  private:
    void write_files(const fingerprint::ChainFingerprint& of,
                     const std::vector<fingerprint::KnotPlace>& places, const Chain& beads) {
        run_.write(given_.matrix, [&] { return matrix_csv(of); });
        run_.write(given_.svg, [&] { return draw::matrix_picture(of, places); });
        run_.write(given_.html, [&] { return draw::fingerprint_page(of, places, beads); });
        run_.write(given_.pymol, [&] { return draw::pymol_script(of, places); });
        run_.write(given_.chimerax, [&] { return draw::chimerax_script(of, places); });
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
