// Atoms as structure files list them.
#pragma once

#include "polymer/molecule.hpp"
#include "read/box.hpp"
#include "read/selection.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loopwise::read {

struct FileAtom {
    enum class Polymer { unknown, yes, no };

    std::string model, chain;
    std::string part;    ///< tells molecules with one chain name apart
    std::string segment; ///< of PDB; pieces of one chain have one segment
    std::string residue_name;
    polymer::ResidueId residue;
    std::string position;       ///< in the sequence, by mmCIF; tells residues with one number apart
    std::string name, location; ///< atom_name(); the alternate location, if any
    double occupancy = 1.0;
    PointR3 place{};
    bool hetero = false;
    Polymer polymer = Polymer::unknown; ///< whether the file says that the atom belongs to a polymer

    /// The residue in a message: "ALA 52A".
    std::string title() const { return residue_name + " " + residue.text(); }
};

/// What the reader of a format makes of a file.
struct FileAtoms {
    std::vector<FileAtom> atoms;    ///< only those that is_of_use()
    std::vector<std::string> notes; ///< about the file
    std::optional<Box> box;         ///< of a crystal or a simulation
};

/// Whether the atom stands for a residue or shows which residues are bonded. Other atoms are not kept.
bool is_of_use(std::string_view atom, const Selection& selection);

/// Whether an atom CA is calcium and not a C-alpha atom: by its element, or by its residue if that is not given.
/// Some programs align all names to the left, so columns do not tell.
bool is_calcium(std::string_view atom, std::string_view element, std::string_view residue_name);

/// The name as it is written today; old files have C4* for C4'.
std::string atom_name(std::string_view name);

} // namespace loopwise::read
