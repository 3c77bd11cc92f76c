// The columns of atoms in PDB files.
#pragma once

#include <string>
#include <string_view>

namespace loopwise::read::pdb {

inline constexpr std::size_t end_of_coordinates = 54;

/// Columns `first` to `last`, counted from 1; fewer if the line is shorter.
std::string_view columns(std::string_view line, std::size_t first, std::size_t last);

/// The same without blanks around.
std::string field(std::string_view line, std::size_t first, std::size_t last);

/// Whether the line is an ATOM or HETATM record, or looks as if it should be one.
bool is_atom(std::string_view line);

/// The same of a line that is long enough; shorter ones are found in texts, too.
bool is_whole_atom(std::string_view line);

/// The line from where its columns count. Some programs move all columns after the serial number, or all of the
/// line, to the right. That is certain if every fixed column agrees then, and only then. Otherwise it is the line.
std::string_view atom_columns(std::string_view line);

} // namespace loopwise::read::pdb
