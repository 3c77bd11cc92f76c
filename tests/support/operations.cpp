#include "support/operations.hpp"

#include "support/chains.hpp"

#include <bit>
#include <cstdlib>

namespace operations {

void Digest::add_bytes(const void* bytes, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i)
        hash_ = (hash_ ^ static_cast<const unsigned char*>(bytes)[i]) * 1099511628211U;
}
void Digest::add(int number) { add_bytes(&number, sizeof number); }
void Digest::add(double number) {
    const auto bits = number == number ? std::bit_cast<std::uint64_t>(number) : 0x7ff8'0000'0000'0000U;
    add_bytes(&bits, sizeof bits);
}
void Digest::add(PointR3 point) { add(point.x), add(point.y), add(point.z); }
void Digest::add(const std::string& text) { add_bytes(text.data(), text.size()); }
void Digest::add(const Chain& chain) {
    for (const ChainAtom& a : chain) add(PointR3{a.x, a.y, a.z}), add(a.id);
}
void Digest::add(const Structure& structure) {
    for (const Chain& chain : structure) add(chain), add(static_cast<int>(chain.size()));
}

namespace {

PointR3 point(const Chain& chain, std::size_t i) {
    const ChainAtom& a = chain[i % chain.size()];
    return {a.x, a.y, a.z};
}

void measure(Values& v, Digest& d) {
    d.add(CentreOfChain(v.chain)), d.add(RadiusOfChain(v.chain)), d.add(DiameterOfChain(v.chain));
    d.add(DiameterOfStructure(v.structure)), d.add(maxIdChain(v.chain)), d.add(maxIdComps(v.structure));
    d.add(IsEmptyStructure(v.structure));
}

void decide(Values& v, Digest& d) {
    for (std::size_t i = 0; i < v.chain.size(); ++i) {
        PointR3 p[5];
        for (std::size_t k = 0; k < 5; ++k) p[k] = point(v.chain, i * (k + 1));
        d.add(intersection(p, p + 3)), d.add(Dist(p[0], p[1])), d.add(CompareGt(p[0].x, p[1].x));
        d.add(CompareEq(p[0].x, p[1].x)), d.add(CompareGeq(p[0].x, p[1].x));
        d.add(TwoSegmentsCrossedSimple(p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y, p[3].x, p[3].y));
        d.add(on_segment(p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y));
        d.add(det_segments(p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y));
        d.add(ScalarProduct(&p[0].x, &p[1].x)), d.add(Determinant(&p[0].x, &p[1].x, &p[2].x));
        d.add(ProjectPointF(p[0], p[1]));
    }
}

void project(Values& v, Digest& d) {
    for (int row = 0; row < 60; ++row)
        for (const Edge& edge : ProjectChain(v.chain, row, true)) d.add(edge.start), d.add(edge.end);
}

void read_file(Values& v, Digest& d) {
    bool error = false;
    d.add(ChainRead(v.file.data(), error)), d.add(error);
}

void read_text(Values& v, Digest& d) {
    bool error = false;
    d.add(ChainRead_fromString(v.text, error)), d.add(error);
}

/// In planes that hold an axis, too, where rounding carries sines past 1.
void arcs(Values& v, Digest& d) {
    for (std::size_t i = 0; i < v.chain.size(); ++i) {
        PointR3 a = point(v.chain, i), b = point(v.chain, i + 1);
        if (i % 2 == 0) a.x = b.x = 0;
        if (i % 3 == 0) b = {a.y * 0.1, -a.x * 0.1, 0};
        if (i % 10 == 5) a.z = b.z = 0;
        d.add(GivePointsOnTheCircle(a, b, {0, 0, 0}, 9, 1));
    }
}

/// One function with what follows its first argument.
template <auto function, auto Values::*part, auto... rest> void call(Values& v, Digest& d) {
    d.add(function(v.*part, rest...));
}
constexpr auto chain = &Values::chain;
constexpr auto structure = &Values::structure;

constexpr Operation every[] = {
    {"measures", false, measure},
    {"predicates", false, decide},
    {"ProjectChain", false, project},
    {"ChainWrite", false, [](Values& v, Digest&) { ChainWrite(v.file.data(), v.chain, true); }},
    {"ChainRead", false, read_file},
    {"ChainRead_fromString", false, read_text},
    {"CheckDistances", false, call<CheckDistancesBetweenAtoms, chain>},
    {"plain text", false, call<ChainWrite_toString, chain, true>},
    {"PDB text", false, call<ChainWrite_toString, chain, false>},
    {"arc", false, arcs},
    {"CutChain", false, call<CutChain, chain, 3, 12>},
    {"ChainReduce", false, call<ChainReduce, chain, false>},
    {"ChainReduce, closed", false, call<ChainReduce, chain, true>},
    {"ChainsReduce", false, call<ChainsReduce, structure, true>},
    {"1direction_NoRandom", false, call<CloseChain_1direction_NoRandom, chain, 7>},
    {"CloseChain_OUT", false, call<CloseChain_OUT, chain, 2>},
    {"CloseChains_OUT", false, call<CloseChains_OUT, structure, 2>},
    {"CloseChain_1point", true, call<CloseChain_1point, chain, 2>},
    {"CloseChains_1point", true, call<CloseChains_1point, structure, 2>},
    {"CloseChain_1direction", true, call<CloseChain_1direction, chain>},
    {"CloseChains_1direction", true, call<CloseChains_1direction, structure>},
    {"CloseChain_2points", true, call<CloseChain_2points, chain, 2>},
    {"CloseChains_2points", true, call<CloseChains_2points, structure, 2>},
};

} // namespace

std::span<const Operation> all() { return every; }

std::uint64_t digest(const Operation& operation, Values values) {
    Digest results;
    operation.run(values, results);
    if (operation.draws) results.add(std::rand());
    results.add(values.chain), results.add(values.structure);
    return results.value();
}

Values make_values(std::uint64_t seed, const std::string& file) {
    chains::Random random(seed);
    Values values{chains::make(chains::Kind::tangle, 40, random), {}, "", file};
    for (int i = 0; i < 3; ++i) values.structure.push_back(chains::make(chains::Kind::tangle, 20, random));
    // Numbers that only streams read and write, one too long for any buffer of theirs, and a long line.
    values.text = "1 +4 0x1p3 1e999\n2 4.12345678901234567890123456789012345678901234567890 .5 7\n3 1 2 3 " +
                  std::string(600, 'x') + '\n' + ChainWrite_toString(values.chain, true);
    return values;
}

} // namespace operations
