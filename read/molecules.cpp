#include "read/molecules.hpp"

#include "read/chains.hpp"
#include "read/refusal.hpp"
#include "words/text.hpp"

#include <algorithm>

namespace loopwise::read {
namespace {

bool holds(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::vector<std::string> models_of(const FileAtoms& file) {
    std::vector<std::string> models;
    for (const FileAtom& atom : file.atoms)
        if (models.empty() || (models.back() != atom.model && !holds(models, atom.model))) models.push_back(atom.model);
    return models;
}

std::vector<std::string> models_asked_for(const std::vector<std::string>& models, const Selection& selection) {
    if (models.empty()) return {""};
    if (selection.model.empty()) return {models.front()};
    if (selection.model == every_model) return models;
    if (!holds(models, selection.model))
        refuse("no model " + selection.model + "; choose from " + words::listed(models));
    return {selection.model};
}

polymer::Molecule molecule_of(const FileAtoms& file, const std::string& model, const Selection& selection) {
    Atoms atoms;
    for (const FileAtom& atom : file.atoms)
        if (atom.model == model) atoms.push_back(&atom);
    polymer::Molecule molecule;
    molecule.notes = file.notes;
    molecule.chains = chains_of(atoms, selection, molecule.notes);
    if (molecule.chains.empty())
        refuse("no chain has " + selection.atom + " atoms; " +
               (selection.is_of_amino_acids() ? "for nucleic acids use --atom P or --atom \"C4'\""
                                              : "choose another --atom"));
    for (polymer::NamedChain& chain : molecule.chains)
        if (file.box && is_wrapped(chain, *file.box))
            chain.notes.push_back("every gap is about as long as the box of the file: the chain seems to be wrapped by "
                                  "periodic boundaries; make its molecule whole first");
    select_chains(molecule.chains, selection);
    return molecule;
}

} // namespace

void select_chains(std::vector<polymer::NamedChain>& chains, const Selection& selection) {
    if (selection.chains.empty()) return;
    std::vector<std::string> names;
    for (const polymer::NamedChain& chain : chains) names.push_back(chain.name);
    for (const std::string& name : selection.chains)
        if (!holds(names, name)) refuse("no chain " + words::quoted(name) + "; choose from " + words::listed(names));
    for (polymer::NamedChain& chain : chains)
        for (const polymer::NamedChain& other : chains)
            if (holds(selection.chains, chain.name) && other.shared_name == chain.name &&
                !holds(selection.chains, other.name))
                chain.notes.push_back("chain " + other.name + " is left out; the file names it " + chain.name +
                                      ", too");
    std::erase_if(chains, [&](const polymer::NamedChain& chain) { return !holds(selection.chains, chain.name); });
}

std::vector<polymer::Molecule> molecules_of(const FileAtoms& file, const Selection& selection) {
    const std::vector<std::string> models = models_of(file);
    std::vector<polymer::Molecule> molecules;
    for (const std::string& model : models_asked_for(models, selection)) {
        molecules.push_back(molecule_of(file, model, selection));
        if (models.size() < 2) continue;
        molecules.back().model = model;
        if (selection.model.empty())
            molecules.back().notes.push_back("only model " + model + " of " + std::to_string(models.size()) +
                                             " is read; choose another, or all, with --model");
    }
    return molecules;
}

} // namespace loopwise::read
