#include "support/properties.hpp"

#include "closure/point_tables.hpp"
#include "support/capture.hpp"
#include "support/eliminated.hpp"
#include "support/files.hpp"
#include "support/literal.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

#define HOLDS(property)                                                                                      \
    if (!(property)) throw std::runtime_error("not so: " #property "\nfor " + described(input))

namespace properties {
namespace {

std::string described(const std::string& text) { return text; }
std::string described(const Chain& chain) { return chains::text(chain); }
std::string described(const Structure& structure) {
    std::string all;
    for (const Chain& chain : structure) all += "{" + described(chain) + "}, ";
    return all;
}

bool same(const Structure& a, const Structure& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), chains::same_bits);
}
bool same(PointR3 p, PointR3 q) { return chains::same_bits({{p.x, p.y, p.z, 0}}, {{q.x, q.y, q.z, 0}}); }

PointR3 at(const ChainAtom& atom) { return {atom.x, atom.y, atom.z}; }

struct Pair {
    literal::Closure how;
    int (*chain)(Chain&, double);
    int (*structure)(Structure&, double);
};
constexpr Pair closures[] = {
    {literal::Closure::one_point, CloseChain_1point, CloseChains_1point},
    {literal::Closure::direction, [](Chain& c, double) { return CloseChain_1direction(c); },
     [](Structure& s, double) { return CloseChains_1direction(s); }},
    {literal::Closure::two_points, CloseChain_2points, CloseChains_2points},
    {literal::Closure::outside, CloseChain_OUT, CloseChains_OUT},
};

} // namespace

void reduces(const Chain& input, bool closed) {
    Chain ours = input, theirs = input;
    const Capture printed;
    HOLDS(ChainReduce(ours, closed) == literal::reduce(theirs, closed));
    HOLDS(chains::same_bits(ours, theirs));
    HOLDS(printed.cout.str() == "JESTEM w loopwise!, ChainReduce - czy to jeszcze w ogole jest wywolywane, a "
                                "nie zawsze ChainsReduce?, EPS=1e-05\n");
    if (literal::repeats_end(input)) return; // which the engine by itself does not know
    for (const loopwise::InstructionSet& set : loopwise::instruction_sets())
        for (std::size_t slots = 64; slots == 64 || slots / 8 < input.size(); slots *= 8)
            HOLDS(chains::same_bits(eliminated(input, closed, set, slots), theirs));
}

void reduces(const Structure& input, bool closed) {
    Structure ours = input, theirs = input;
    const Capture printed;
    HOLDS(ChainsReduce(ours, closed) == literal::reduce(theirs, closed));
    HOLDS(same(ours, theirs) && printed.silent());
}

void measures(const Structure& input) {
    Structure structure = input;
    int largest = -1;
    for (Chain& chain : structure) {
        int largest_of_chain = -1;
        for (const ChainAtom& atom : chain) largest_of_chain = std::max(largest_of_chain, atom.id);
        largest = std::max(largest, largest_of_chain);
        HOLDS(maxIdChain(chain) == largest_of_chain);
        HOLDS(same(CentreOfChain(chain), literal::centre(chain)));
        HOLDS(RadiusOfChain(chain) == literal::radius(chain));
        HOLDS(DiameterOfChain(chain) == literal::diameter({chain}));
    }
    HOLDS(DiameterOfStructure(structure) == literal::diameter(structure));
    HOLDS(maxIdComps(structure) == largest);
}

void closes(const Structure& input, double scale, unsigned seed) {
    for (const Pair& closure : closures)
        for (std::size_t i = 0; i <= std::min<std::size_t>(input.size(), 1); ++i) {
            const bool alone = i == 1;
            Structure ours = alone ? Structure{input[0]} : input, theirs = ours;
            const std::string warning =
                IsEmptyStructure(ours) ? "[WARNING] You are trying to CLOSE an EMPTY chain.\n" : "";
            const Capture printed;
            std::srand(seed);
            const int result = alone ? closure.chain(ours[0], scale) : closure.structure(ours, scale);
            const int next = std::rand();
            std::srand(seed);
            HOLDS(result == literal::close(theirs, closure.how, alone, scale));
            HOLDS(next == std::rand());
            HOLDS(same(ours, theirs));
            HOLDS(printed.clog.str() == warning && (printed.cout.str() + printed.cerr.str()).empty());
            if (!alone || closure.how != literal::Closure::direction) continue;
            std::srand(seed);
            Chain chosen = input[0];
            HOLDS(CloseChain_1direction_NoRandom(chosen, std::rand() % loopwise::uniform_rows) == 0);
            HOLDS(chains::same_bits(chosen, ours[0]));
        }
}

void projects(const Chain& input, int direction, bool closed) {
    const std::vector<Edge> edges = ProjectChain(input, direction, closed);
    const std::size_t n = input.size();
    HOLDS(edges.size() == (n < 2 ? 0 : n - !closed));
    const PointR3 seen_from = loopwise::fuleren[static_cast<std::size_t>(std::abs(direction % 60))];
    for (std::size_t i = 0; i < edges.size(); ++i) {
        HOLDS(same(edges[i].start, ProjectPointF(at(input[i]), seen_from)));
        HOLDS(same(edges[i].end, ProjectPointF(at(input[(i + 1) % n]), seen_from)));
        HOLDS(edges[i].annotations.empty() && edges[i].tag == 0);
    }
}

void reads(const std::string& input) {
    std::string without_empty_lines;
    for (const char c : input)
        if (c != '\n' || (!without_empty_lines.empty() && without_empty_lines.back() != '\n'))
            without_empty_lines += c;
    MemoryFile file(input);
    const Capture printed;
    bool error = true, repeats = false, repeats_in_file = false;
    HOLDS(chains::same_bits(ChainRead(file.name(), error),
                            literal::read(without_empty_lines, repeats_in_file)));
    HOLDS(!error);
    HOLDS(chains::same_bits(ChainRead_fromString(input, error), literal::read(input, repeats)));
    HOLDS(error == repeats);
    const std::string lines = printed.cout.str();
    HOLDS(std::count(lines.begin(), lines.end(), '\n') == repeats + repeats_in_file);
}

void writes(const Chain& input) {
    for (const bool plain : {true, false}) {
        const std::string expected = literal::write(input, plain);
        MemoryFile file("what was there before");
        HOLDS(ChainWrite_toString(input, plain) == expected);
        ChainWrite(file.name(), input, plain);
        HOLDS(file.content() == expected);
    }
}

void hold(chains::Random numbers) {
    const bool closed = numbers.below(2) == 0;
    const int direction = static_cast<int>(numbers.bits() >> 33) - (1 << 30);
    const double scale = numbers.below(4) == 0 ? numbers.between(-1e9, 1e9) : 3;
    const auto seed = static_cast<unsigned>(numbers.below(256));
    const Structure input = chains::make_structure(numbers);
    reduces(input, closed);
    measures(input);
    closes(input, scale, seed);
    for (const Chain& chain : input) {
        reduces(chain, closed);
        projects(chain, direction, closed);
        writes(chain);
        for (std::size_t i = 4; i < chain.size(); ++i) {
            PointR3 p[5];
            for (std::size_t k = 0; k < 5; ++k) p[k] = at(chain[i - k]);
            if (numbers.below(4) == 0) { // an end of the segment within some tolerances of the triangle
                const double u = numbers.between(-0.2, 1.2), v = numbers.between(-0.2, 1.2 - u),
                             e = numbers.between(-3, 3) * EPS;
                p[3] = {p[0].x + u * (p[1].x - p[0].x) + v * (p[2].x - p[0].x) + e,
                        p[0].y + u * (p[1].y - p[0].y) + v * (p[2].y - p[0].y) + e,
                        p[0].z + u * (p[1].z - p[0].z) + v * (p[2].z - p[0].z) + e};
            }
            HOLDS(intersection(p, p + 3) == literal::intersection(p, p + 3));
        }
    }
}

} // namespace properties
