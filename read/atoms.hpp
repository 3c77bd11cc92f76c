// From the atoms that structure files list to chains with one bead for each residue.
#pragma once

#include "polymer/molecule.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace loopwise::read {

/// What of a file is asked for.
struct Selection {
    std::vector<std::string> chains; ///< none: all
    std::string model;               ///< none: the first; or one of the file's, or every_model
    std::string atom = "CA";         ///< the atom that stands for a residue
};

inline constexpr const char* every_model = "all";

/// An atom as a file lists it.
struct FileAtom {
    enum class Polymer { unknown, yes, no };

    std::string model, chain;
    std::string part; ///< what tells molecules of one chain name apart
    std::string residue_name;
    polymer::ResidueId residue;
    std::string name, location;
    double occupancy = 1.0;
    PointR3 place{};
    bool hetero = false;
    Polymer polymer = Polymer::unknown; ///< whether the file says that it belongs to one
};

/// What the reader of a format makes of a file.
struct FileAtoms {
    std::vector<FileAtom> atoms;    ///< only those that is_of_use()
    std::vector<std::string> notes; ///< about the file
};

/// Whether the atom stands for a residue or shows which residues are bonded.
bool is_of_use(std::string_view atom_name, const Selection& selection);

/// The same name as people write it and as old files do: C4* for C4'.
std::string atom_name(std::string_view name);

/// One molecule for each model asked for, with the chains asked for. Of alternate locations that with the
/// highest occupancy is taken, the first of equals. What the file calls no polymer is left out. Where a file
/// says nothing, residues that are bonded make a polymer: a single one at the end of a chain that no TER ends
/// is left out, and noted. Throws std::runtime_error with the reason when there is no such model or chain.
std::vector<polymer::Molecule> molecules_of(const FileAtoms& file, const Selection& selection);

} // namespace loopwise::read
