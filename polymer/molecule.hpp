// Chains whose beads are residues, and the molecules that they make.
#pragma once

#include "libloopwise.h"
#include "polymer/residue_id.hpp"

#include <string>
#include <vector>

namespace loopwise::polymer {

/// What the beads of a chain stand for.
enum class BeadKind { any, amino_acids, nucleotides };

struct NamedChain {
    std::string name; ///< as in the file; empty for chain text
    Chain beads;
    std::vector<ResidueId> residues; ///< one for each bead
    BeadKind kind = BeadKind::any;
    std::vector<std::string> notes{}; ///< what the reader decided, for people to check
    std::string shared_name{};        ///< of a chain such as A.2: its name in the file, which another chain has, too
};

/// The chains of one model of a file.
struct Molecule {
    std::string file;
    std::vector<NamedChain> chains;
    std::string model{};              ///< empty if the file has only one
    std::vector<std::string> notes{}; ///< about all of the file
};

/// Whether the chain is stored as a ring: its last bead repeats the first at the same place.
bool is_ring(const NamedChain& chain);

/// Removes the repeated bead of a ring.
void drop_repeated_end(NamedChain& ring);

/// Sets the identifier of every bead to the number of its residue. If a residue has no number, the
/// identifiers are 1, 2, 3, ... and the result is false.
bool number_by_residues(NamedChain& chain);

/// Sets the identifiers to 0, 1, 2, ... Beads that survive a closure and a reduction then tell where they
/// were.
void number_by_position(Chain& chain);

/// Residues whose numbers are the identifiers of the beads.
std::vector<ResidueId> residues_of(const Chain& beads);

} // namespace loopwise::polymer
