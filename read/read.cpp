#include "read/read.hpp"

#include "read/bytes.hpp"
#include "read/foreign.hpp"
#include "read/mmcif.hpp"
#include "read/molecules.hpp"
#include "read/pdb.hpp"
#include "read/refusal.hpp"
#include "read/text.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <cmath>

namespace loopwise::read {
namespace {

enum class Format { text, pdb, mmcif };

/// By the content. A name that says otherwise is refused.
Format format_of(const std::string& path, std::string_view text) {
    const std::string extension = words::extension_of(words::without_gz(path));
    if (looks_like_mmcif(text)) return Format::mmcif;
    refuse_foreign(text, extension);
    if (extension == ".cif" || extension == ".mmcif")
        refuse("is named " + extension + ", but does not begin with data_; if it is PDB or chain text, name it so");
    if (looks_like_pdb(text)) return Format::pdb;
    if (extension == ".pdb" || extension == ".ent")
        refuse("is named " + extension + ", but has no ATOM or HETATM records; if it is chain text, name it .txt");
    return Format::text;
}

void refuse_impossible(const polymer::NamedChain& chain) {
    // In a smaller chain products of coordinates underflow, and all segments seem to touch.
    constexpr double least_size = 1e-9;
    double least = INFINITY, largest = -INFINITY;
    for (std::size_t i = 0; i < chain.beads.size(); ++i) {
        const ChainAtom &bead = chain.beads[i], &next = chain.beads[std::min(i + 1, chain.beads.size() - 1)];
        for (const double value : {bead.x, bead.y, bead.z}) {
            if (!(std::abs(value) <= largest_coordinate))
                refuse("bead " + chain.residues[i].text() + ": coordinate beyond 1e9");
            least = std::min(least, value);
            largest = std::max(largest, value);
        }
        if (i + 1 < chain.beads.size() && bead.x == next.x && bead.y == next.y && bead.z == next.z)
            refuse((chain.name.empty() ? "" : "chain " + chain.name + ": ") + "neighbouring beads " +
                   chain.residues[i].text() + " and " + chain.residues[i + 1].text() + " are at the same place");
    }
    if (chain.beads.size() > 1 && largest - least < least_size) refuse("all coordinates are within 1e-9 of each other");
}

std::vector<polymer::Molecule> from_text(std::string_view text, const Selection& selection) {
    if (!selection.model.empty() && selection.model != "1" && selection.model != every_model)
        refuse("no model " + selection.model + "; chain text has only one");
    polymer::Molecule molecule = read_chain_text(text);
    if (!selection.chains.empty() && molecule.chains.size() == 1)
        refuse("chain text has no chain names; leave --chain out");
    select_chains(molecule.chains, selection);
    return {std::move(molecule)};
}

} // namespace

std::vector<polymer::Molecule> molecules_in(const std::string& path, std::string bytes, const Selection& selection) {
    constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";
    if (bytes.starts_with(byte_order_mark)) bytes.erase(0, byte_order_mark.size());
    const bool has_returns = bytes.find('\r') != std::string::npos;
    const std::string text = has_returns ? with_line_feeds(std::move(bytes)) : std::move(bytes);
    std::vector<polymer::Molecule> molecules;
    switch (format_of(path, text)) {
    case Format::text: molecules = from_text(text, selection); break;
    case Format::pdb: molecules = molecules_of(read_pdb(text, selection), selection); break;
    case Format::mmcif: molecules = molecules_of(read_mmcif(text, selection), selection); break;
    }
    for (polymer::Molecule& molecule : molecules) {
        molecule.file = path;
        for (polymer::NamedChain& chain : molecule.chains) {
            refuse_impossible(chain);
            polymer::number_by_residues(chain);
        }
    }
    return molecules;
}

std::vector<polymer::Molecule> read_molecules(const std::string& path, const Selection& selection) {
    return molecules_in(path, read_bytes(path), selection);
}

const char* readable_formats() {
    return "PDB, mmCIF or chain text (x y z, id x y z, XYZ), also gzipped; - for the standard input";
}

} // namespace loopwise::read
