// The library called from C++ on the same input as from Python: what comes out, and how long it takes.
#include "libloopwise.h"

#include "knots/knot.hpp"
#include "src/closure/closures.hpp"
#include "src/model/cut.hpp"
#include "src/projection/projection.hpp"
#include "src/reduce/reduction.hpp"
#include "survey/closure_rng.hpp"
#include "survey/survey.hpp"

#include <chrono>
#include <fstream>

using namespace loopwise::model;
using namespace loopwise::closure;
using namespace loopwise::reduce;
using namespace loopwise::knots;
using namespace loopwise::survey;
using namespace loopwise::projection;
using namespace loopwise::polymer;

namespace {

class Output {
  public:
    explicit Output(const char* path) : file_(path, std::ios::binary) {}
    template <class Number> void add(Number number) { file_.write(reinterpret_cast<char*>(&number), sizeof number); }
    void add(const PointR3& p) { add(p.x), add(p.y), add(p.z); }
    void add(const std::string& text) { file_ << text; }
    void add(const Chain& chain) {
        for (const ChainAtom& a : chain) add(PointR3{a.x, a.y, a.z}), add(a.id);
    }
    void add(const Structure& structure) {
        for (const Chain& chain : structure) add(chain);
    }

  private:
    std::ofstream file_;
};

Chain chain_of(const double* xyz, std::size_t beads) {
    Chain chain;
    for (std::size_t i = 0; i < beads; ++i, xyz += 3)
        chain.push_back({xyz[0], xyz[1], xyz[2], static_cast<std::int32_t>(i + 1)});
    return chain;
}

template <class What, class Close> void close(const What& open, const Close& how, Output& out) {
    What closed = open;
    how(closed);
    out.add(closed);
    reduce(closed, true);
    out.add(closed);
}

void predicates(const Chain& chain, Output& out) {
    for (std::size_t i = 0; i + 5 <= chain.size(); ++i) {
        PointR3 p[5];
        for (std::size_t k = 0; k < 5; ++k) p[k] = {chain[i + k].x, chain[i + k].y, chain[i + k].z};
        out.add(intersection(p, p + 3)), out.add(Dist(p[0], p[1])), out.add(CompareEq(p[0].x, p[1].x));
        out.add(CompareGt(p[0].x, p[1].x)), out.add(CompareGeq(p[0].x, p[1].x));
        out.add(TwoSegmentsCrossedSimple(p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y, p[3].x, p[3].y));
        out.add(on_segment(p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y));
        out.add(det_segments(p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y));
        out.add(ScalarProduct(&p[0].x, &p[1].x)), out.add(Determinant(&p[0].x, &p[1].x, &p[2].x));
        out.add(ProjectPointF(p[0], p[1])), out.add(GivePointsOnTheCircle(p[0], p[1], p[2], 9, 1));
    }
}

template <class Work> double seconds(int times, const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < times; ++i) work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

Plan plan_of(std::size_t closures, unsigned threads) {
    Plan plan;
    plan.closures = closures;
    plan.threads = threads;
    return plan;
}

Molecule molecule_of(const Chain& chain) { return {"", {{"", chain, residues_of(chain)}}}; }

} // namespace

/// The results of every operation, one after another, as bytes in a file.
extern "C" void every_result(const double* xyz, std::size_t beads, const char* path) {
    Output out(path);
    const Chain chain = chain_of(xyz, beads);
    Structure structure = {chain_of(xyz, beads / 2), chain_of(xyz + beads / 2 * 3, beads - beads / 2)};
    out.add(CentreOfChain(chain)), out.add(RadiusOfChain(chain)), out.add(DiameterOfChain(chain));
    out.add(DiameterOfStructure(structure)), out.add(maxIdComps(structure)), out.add(IsEmptyStructure(structure));
    predicates(chain, out);
    for (int row = 0; row < 60; ++row)
        for (const Edge& edge : project(chain, row, row % 2 == 0)) out.add(edge.start), out.add(edge.end);
    out.add(CheckDistancesBetweenAtoms(chain));
    Chain some = chain;
    cut(some, 20, 5), out.add(some);
    for (const bool closed : {false, true}) {
        some = chain, reduce(some, closed), out.add(some);
        Structure all = structure;
        reduce(all, closed), out.add(all);
    }
    some = chain, some.push_back(chain.front()), reduce(some, false), out.add(some);
    for (std::uint64_t seed = 0; seed < 5; ++seed) {
        const ClosureRng draw(seed, 3);
        close(
            chain, [&](Chain& c) { close_in_direction(c, static_cast<int>(seed)); }, out);
        close(
            chain, [&](Chain& c) { close_in_random_direction(c, draw); }, out);
        close(
            chain, [&](Chain& c) { close_through_point(c, 10, draw); }, out);
        close(
            chain, [&](Chain& c) { close_by_arc(c, 2, draw); }, out);
        close(
            chain, [&](Chain& c) { close_outside(c, 2); }, out);
        close(
            structure, [&](Structure& s) { close_in_random_directions(s, draw); }, out);
        close(
            structure, [&](Structure& s) { close_through_points(s, 10, draw); }, out);
        close(
            structure, [&](Structure& s) { close_by_arcs(s, 2, draw); }, out);
        close(
            structure, [&](Structure& s) { close_outside(s, 2); }, out);
    }
    out.add(text(knot_of(chain).type));
    Watcher watcher;
    const Result result = survey(molecule_of(chain), plan_of(40, 1), watcher);
    for (const KnotCount& count : result.components.front().knots) out.add(text(count.knot)), out.add(count.closures);
    for (const auto& [left, closures] : result.whole.left) out.add(left), out.add(closures);
}

extern "C" double seconds_of_reductions(const double* xyz, std::size_t beads, int times) {
    const Chain chain = chain_of(xyz, beads);
    return seconds(times, [&] {
        Chain copy = chain;
        reduce(copy, true);
    });
}

extern "C" double seconds_of_surveys(const double* xyz, std::size_t beads, unsigned threads, int times) {
    const Molecule molecule = molecule_of(chain_of(xyz, beads));
    Watcher watcher;
    return seconds(times, [&] { survey(molecule, plan_of(400, threads), watcher); });
}
