#include "support/properties.hpp"

#include "src/reduce/reduction.hpp"
#include "support/capture.hpp"
#include "support/eliminated.hpp"
#include "support/files.hpp"
#include "support/literal.hpp"

#include <algorithm>
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
PointR3 at(const ChainAtom& atom) { return {atom.x, atom.y, atom.z}; }

} // namespace

void reduces(const Chain& input, bool closed) {
    Chain ours = input, theirs = input;
    const Capture printed;
    HOLDS(ChainReduce(ours, closed) == literal::reduce(theirs, closed));
    HOLDS(chains::same_bits(ours, theirs));
    HOLDS(printed.cout.str() == "JESTEM w loopwise!, ChainReduce - czy to jeszcze w ogole jest wywolywane, a "
                                "nie zawsze ChainsReduce?, EPS=1e-05\n");
    if (literal::repeats_end(input)) return; // which the engine by itself does not know
    for (const loopwise::model::InstructionSet set : loopwise::model::available_instruction_sets()) {
        for (std::size_t slots = 8; slots == 8 || slots / 8 < input.size(); slots *= 8)
            HOLDS(chains::same_bits(eliminated(input, closed, set, slots), theirs));
        HOLDS(chains::same_bits(eliminated_with_index(input, closed, set), theirs));
    }
}

void reduces(const Structure& input, bool closed) {
    Structure ours = input, theirs = input;
    const Capture printed;
    HOLDS(ChainsReduce(ours, closed) == literal::reduce(theirs, closed));
    HOLDS(same(ours, theirs) && printed.silent());
    Structure indexed = input;
    loopwise::reduce::reduce(indexed, closed, 0);
    HOLDS(same(indexed, theirs));
}

void measures(const Structure& input) {
    Structure structure = input;
    int largest = -1;
    for (Chain& chain : structure) {
        int largest_of_chain = -1;
        for (const ChainAtom& atom : chain) largest_of_chain = std::max(largest_of_chain, atom.id);
        largest = std::max(largest, largest_of_chain);
        HOLDS(maxIdChain(chain) == largest_of_chain);
        HOLDS(DiameterOfChain(chain) == literal::diameter({chain}));
    }
    HOLDS(DiameterOfStructure(structure) == literal::diameter(structure));
    HOLDS(maxIdComps(structure) == largest);
}

void closes(const Structure& input, double scale) {
    constexpr auto in_directions = [](Structure& s, double) { return CloseChains_1direction(s); };
    for (int (*const close)(Structure&, double) :
         {+in_directions, CloseChains_1point, CloseChains_2points, CloseChains_OUT}) {
        Structure ours = input;
        const Capture printed;
        const int result = close(ours, scale);
        HOLDS(result == 0 || (result == -1 && !IsEmptyStructure(ours)));
        HOLDS(printed.clog.str().empty() != IsEmptyStructure(ours));
        for (std::size_t i = 0; i < input.size(); ++i)
            HOLDS(chains::starts_with(ours[i], input[i]) && ours[i].size() <= input[i].size() + 19);
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
    for (const bool plain : {true, false})
        HOLDS(ChainWrite_toString(input, plain) == literal::write(input, plain));
}

void hold(chains::Random numbers) {
    const bool closed = numbers.below(2) == 0;
    const double scale = numbers.below(4) == 0 ? numbers.between(-1e9, 1e9) : 3;
    const Structure input = chains::make_structure(numbers);
    reduces(input, closed);
    measures(input);
    closes(input, scale);
    for (const Chain& chain : input) {
        reduces(chain, closed);
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

void hold(const std::string& text) {
    reads(text);
    bool error = false;
    const Silence quiet;
    const Chain chain = ChainRead_fromString(text, error);
    writes(chain);
    reads(ChainWrite_toString(chain, true));
}

} // namespace properties
