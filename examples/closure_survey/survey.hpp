// Closing a molecule in many ways, reducing every loop and counting what is left.
#ifndef CLOSURE_SURVEY_SURVEY_HPP
#define CLOSURE_SURVEY_SURVEY_HPP

#include "input.hpp"
#include "progress.hpp"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

enum class Method { directions, point, direction, two_points, outside };

const char* name_of(Method method);
bool is_random(Method method);
bool takes_scale(Method method);

/// The rows of the library's table of directions: as many closures has Method::directions.
inline constexpr std::size_t table_rows = 400;

/// The beads that the reduction leaves of a loop when nothing holds it.
inline constexpr std::size_t bare_loop = 3;

struct Plan {
    Method method = Method::directions;
    std::size_t closures = table_rows;
    double scale = 0.0;
    unsigned seed = 0;
    unsigned threads = 1;
    bool together = false; ///< all chains of a file are components of one structure
};

/// What is surveyed at once: one chain, or all components of a structure.
struct Molecule {
    std::string file;
    std::vector<NamedChain> chains;
};

/// A closed chain, reduced or not: the chain's own atoms come first, then those that close it.
struct Loop {
    Chain atoms;
    std::vector<std::size_t> places; ///< of the own atoms: their positions in the whole chain

    std::size_t own() const { return places.size(); }
};

/// What one closure came to.
struct Specimen {
    std::size_t closure = 0;
    std::vector<Loop> closed;
    std::vector<Loop> reduced;
};

/// The closures of a chain, or of a whole structure, counted by what was left.
struct Tally {
    std::string name;
    std::size_t beads = 0;
    std::map<std::size_t, std::size_t> left; ///< beads left -> closures
    std::size_t bare = 0;                    ///< closures of which no component kept more than three beads
};

struct ComponentTally : Tally {
    std::string breaks; ///< CheckDistancesBetweenAtoms()
    struct Core {
        std::size_t closure = 0;
        Loop loop;
    };
    std::optional<Core> smallest; ///< of the loops that kept more than three beads
};

struct Result {
    std::string file;
    Tally whole;
    std::vector<ComponentTally> components;
    std::size_t failed = 0;
    std::optional<Specimen> first_bare;
    std::optional<Specimen> smallest_core; ///< fewest beads among the closures that are not bare

    std::size_t counted() const;
    /// The closure to show: where most closures come down to three beads, the first that does,
    /// otherwise the one with the smallest core. Null when every closure failed.
    const Specimen* typical() const;
};

/// The same result for any number of threads, and whatever was surveyed before.
/// Everything that the library prints must be thrown away meanwhile: ChainReduce() prints.
Result survey(const Molecule& molecule, const Plan& plan, Progress& progress);

#endif
