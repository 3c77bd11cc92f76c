#include "read/foreign.hpp"

#include "read/fields.hpp"
#include "read/refusal.hpp"

#include <algorithm>
#include <array>
#include <cctype>

namespace loopwise::read {
namespace {

constexpr const char* as_pdb = "; convert it to PDB or mmCIF";
constexpr const char* as_entry = "; get the entry as mmCIF or PDB";
constexpr const char* unpack = "; unpack it first, with ";

/// Bytes by which a format is known.
struct Mark {
    std::size_t at;
    std::string_view bytes;
    const char *name, *advice, *program;
};

using namespace std::string_view_literals;
constexpr std::array marks = {
    Mark{0, "BZh"sv, "bzip2 data", unpack, "bunzip2"},
    Mark{0,
         "\xfd"
         "7zXZ"sv,
         "xz data", unpack, "unxz"},
    Mark{0, "PK\x03\x04"sv, "a zip archive", unpack, "unzip"},
    Mark{0, "\x28\xb5\x2f\xfd"sv, "zstd data", unpack, "unzstd"},
    Mark{0, "\x04\x22\x4d\x18"sv, "lz4 data", unpack, "unlz4"},
    Mark{0, "7z\xbc\xaf"sv, "a 7z archive", unpack, "7z x"},
    Mark{0, "\x1f\x9d"sv, "compress data", unpack, "uncompress"},
    Mark{0, "\x1f\x8b"sv, "gzip data in gzip data", unpack, "gunzip"},
    Mark{257, "ustar"sv, "a tar archive", unpack, "tar -x"},
    Mark{4, "CORD"sv, "a DCD trajectory", as_pdb, ""},
    Mark{0, "\0\0\x07\xcb"sv, "an XTC trajectory", as_pdb, ""},
    Mark{0, "\0\0\x07\xc9"sv, "a TRR trajectory", as_pdb, ""},
    Mark{0, "CDF\x01"sv, "a NetCDF trajectory", as_pdb, ""},
    Mark{0, "CDF\x02"sv, "a NetCDF trajectory", as_pdb, ""},
    Mark{0, "\x89HDF"sv, "HDF5", as_pdb, ""},
    Mark{0, "<?xml"sv, "XML", as_entry, ""},
    Mark{0, "<!DOCTYPE"sv, "a web page", "; the download may have failed", ""},
    Mark{0, "<html"sv, "a web page", "; the download may have failed", ""},
    Mark{0, "@<TRIPOS>"sv, "MOL2", as_pdb, ""},
    Mark{0, "ITEM: TIMESTEP"sv, "a LAMMPS dump", "; write the beads of one frame as lines of id x y z", ""},
};

bool contains(std::string_view text, std::string_view word) { return text.find(word) != std::string_view::npos; }

bool is_whole(std::string_view field) {
    return !field.empty() && field.find_first_not_of("0123456789") == std::string_view::npos;
}

/// A title, a count, and rows of fixed columns: number and name of the residue, name and number of the atom, x y z.
bool is_gro(std::string_view text) {
    next_line(text);
    if (!is_whole(trimmed(next_line(text)))) return false;
    const std::string_view row = next_line(text);
    constexpr std::size_t residue = 5, atom = 10, x = 20, end = 44;
    return row.size() >= end && is_whole(trimmed(row.substr(0, residue))) &&
           std::isalpha(static_cast<unsigned char>(row[residue])) != 0 && !trimmed(row.substr(atom, 5)).empty() &&
           to_number(trimmed(row.substr(x, 8))) && to_number(trimmed(row.substr(x + 8, 8))) &&
           to_number(trimmed(row.substr(x + 16, 8)));
}

/// Any title, and then the number of atoms among other numbers.
bool is_lammps_data(std::string_view text) {
    constexpr std::string_view atoms = "atoms";
    constexpr int lines = 12;
    const bool has_atoms = contains(text, "\nAtoms");
    for (int i = 0; i < lines && has_atoms; ++i) {
        const std::string_view line = trimmed(next_line(text));
        if (line.ends_with(atoms) && is_whole(trimmed(line.substr(0, line.size() - atoms.size())))) return true;
    }
    return false;
}

[[noreturn]] void refuse_format(const char* name, const std::string& advice) {
    refuse("is " + std::string(name) + ", which is not read" + advice);
}

} // namespace

void refuse_foreign(std::string_view content, const std::string& extension) {
    for (const Mark& mark : marks)
        if (content.size() > mark.at && content.substr(mark.at).starts_with(mark.bytes))
            refuse_format(mark.name, std::string(mark.advice) + mark.program);
    constexpr std::size_t head = 65536;
    const bool is_packed_map = !content.empty() && (static_cast<unsigned char>(content.front()) & 0x80U) != 0;
    if (is_packed_map && contains(content.substr(0, head), "mmtf")) refuse_format("MMTF", as_entry);
    if (is_packed_map && contains(content.substr(0, head), "dataBlocks")) refuse_format("BinaryCIF", as_entry);
    if (extension == ".mmtf") refuse_format("MMTF", as_entry);
    if (extension == ".bcif") refuse_format("BinaryCIF", as_entry);
    if (extension == ".gro" || is_gro(content))
        refuse_format("GRO", std::string(as_pdb) + ", as with gmx editconf -f FILE -o FILE.pdb");
    if (is_lammps_data(content)) refuse_format("LAMMPS data", "; write the beads as lines of id x y z");
}

} // namespace loopwise::read
