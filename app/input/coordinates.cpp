#include "input/coordinates.hpp"

#include <gemmi/gz.hpp>
#include <gemmi/mmread.hpp>

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>

namespace loopwise {
namespace {

[[noreturn]] void refuse(const std::string& reason) { throw std::runtime_error(reason); }

bool may_be_protein(const gemmi::Residue& residue) {
    return residue.entity_type == gemmi::EntityType::Polymer ||
           residue.entity_type == gemmi::EntityType::Unknown;
}

/// The first alternate location of the C-alpha atom; calcium has the same name, but another element.
std::optional<ChainAtom> c_alpha(const gemmi::Residue& residue) {
    const auto found = std::find_if(residue.atoms.begin(), residue.atoms.end(), [](const gemmi::Atom& a) {
        return a.name == "CA" && a.element == gemmi::El::C;
    });
    if (found == residue.atoms.end() || !residue.seqid.num) return std::nullopt;
    const gemmi::Position& p = found->pos;
    if (!std::isfinite(p.x + p.y + p.z)) refuse("residue " + residue.seqid.str() + " has no coordinates");
    return ChainAtom{p.x, p.y, p.z, *residue.seqid.num};
}

Chain c_alphas(const gemmi::Chain& from) {
    Chain chain;
    for (const gemmi::Residue& residue : from.first_conformer()) {
        if (!may_be_protein(residue)) continue;
        if (const auto atom = c_alpha(residue)) chain.push_back(*atom);
    }
    return chain;
}

gemmi::Structure read_mmcif(const std::string& path) {
    const gemmi::cif::Document document = gemmi::cif::read(gemmi::MaybeGzipped(path));
    if (document.blocks.empty()) refuse("holds no data block");
    return gemmi::make_structure(document);
}

} // namespace

std::vector<NamedChain> read_coordinates(const std::string& path, bool pdb) {
    gemmi::Structure structure = pdb ? gemmi::read_pdb(gemmi::MaybeGzipped(path)) : read_mmcif(path);
    structure.merge_chain_parts();
    std::vector<NamedChain> chains;
    if (structure.models.empty()) refuse("holds no model");
    for (const gemmi::Chain& chain : structure.models.front().chains) {
        Chain atoms = c_alphas(chain);
        if (atoms.empty()) continue;
        std::vector<std::string> labels = labels_of(atoms);
        chains.push_back({chain.name, std::move(atoms), std::move(labels)});
    }
    if (chains.empty()) refuse("holds no C-alpha atom");
    return chains;
}

} // namespace loopwise
