// Chains from and to text, their check, their cut and their picture.
#include "draw/picture.hpp"
#include "polymer/bonds.hpp"
#include "python/arguments.hpp"
#include "python/arrays.hpp"
#include "python/lock.hpp"
#include "python/module.hpp"
#include "read/read.hpp"
#include "src/model/cut.hpp"
#include "write/chain_text.hpp"

#include <algorithm>

namespace loopwise::python {
namespace {

py::list list_of(const std::vector<polymer::Molecule>& molecules) {
    py::list result;
    for (const polymer::Molecule& molecule : molecules)
        for (const polymer::NamedChain& named : molecule.chains) {
            const py::tuple arrays = arrays_of(named.beads);
            std::vector<std::string> notes = molecule.notes;
            notes.insert(notes.end(), named.notes.begin(), named.notes.end());
            result.append(py::make_tuple(arrays[0], arrays[1], polymer::texts_of(named.residues), named.name, notes));
        }
    return result;
}

/// What cannot be read is refused with the reason.
template <class Read> py::list chains_of(const Read& read) {
    std::vector<polymer::Molecule> molecules;
    try {
        const Unlocked others;
        molecules = read();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& refusal) {
        throw py::value_error(refusal.what());
    }
    return list_of(molecules);
}

read::Selection selection_of(const std::string& model, const std::string& atom) {
    read::Selection selection;
    selection.model = model;
    selection.atom = atom;
    return selection;
}

py::list read(const py::bytes& path, const std::string& model, const std::string& atom) {
    return chains_of([name = std::string(path), selection = selection_of(model, atom)] {
        return read::read_molecules(name, selection);
    });
}

py::list parse(const std::string& text) {
    return chains_of([&text] { return read::molecules_in("", text, read::Selection{}); });
}

/// The position of the first bead inside, and how many they are.
std::pair<std::size_t, std::size_t> cut(const Doubles& xyz, const Ids& ids, const py::object& first_id,
                                        const py::object& last_id) {
    const int first = whole<int>("first", first_id), last = whole<int>("last", last_id);
    const Chain chain = chain_of(xyz, ids, Finite::any);
    Chain part = chain;
    if (!model::cut(part, first, last))
        throw py::value_error("there is no subchain " + std::to_string(first) + " to " + std::to_string(last) +
                              " in a chain from " + std::to_string(chain.front().id) + " to " +
                              std::to_string(chain.back().id));
    const auto is_inside = [low = std::min(first, last), high = std::max(first, last)](const ChainAtom& atom) {
        return low <= atom.id && atom.id <= high;
    };
    const auto start = std::find_if(chain.begin(), chain.end(), is_inside) - chain.begin();
    return {static_cast<std::size_t>(start), part.size()};
}

py::tuple check(const Doubles& xyz, const Ids& ids) {
    const Chain chain = chain_of(xyz, ids);
    const std::size_t bonds = chain.empty() ? 0 : chain.size() - 1;
    py::array_t<double> distances(static_cast<py::ssize_t>(bonds));
    std::vector<std::size_t> odd;
    double* to = distances.mutable_data();
    for (std::size_t i = 0; i < bonds; ++i, ++to) {
        const ChainAtom &a = chain[i], &b = chain[i + 1];
        *to = Dist({a.x, a.y, a.z}, {b.x, b.y, b.z});
        if (*to < polymer::shortest_trace_bond || *to > polymer::longest_trace_bond) odd.push_back(i);
    }
    return py::make_tuple(distances, odd, CheckDistancesBetweenAtoms(chain));
}

std::string pdb_text(const py::object& chain, bool closed) {
    try {
        return write::pdb_text(named_chain_of(chain), closed);
    } catch (const std::runtime_error& refusal) {
        throw py::value_error(refusal.what());
    }
}

std::string picture(const py::object& chain) {
    const polymer::NamedChain named = named_chain_of(chain);
    if (named.beads.size() < 2)
        throw py::value_error("a chain of " + std::to_string(named.beads.size()) + " beads cannot be drawn");
    const Unlocked others;
    return draw::picture(named);
}

} // namespace

void bind_chain(py::module_& module) {
    module.def("read", read);
    module.def("parse", parse);
    module.def("plain_text", [](const py::object& chain) { return write::plain_text(named_chain_of(chain).beads); });
    module.def("pdb_text", pdb_text);
    module.def("cut", cut);
    module.def("check", check);
    module.def("picture", picture);
    module.def("readable_formats", read::readable_formats);
}

} // namespace loopwise::python
