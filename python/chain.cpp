// Chains from and to text, their check and their cut.
#include "polymer/bonds.hpp"
#include "python/arrays.hpp"
#include "python/module.hpp"
#include "read/read.hpp"
#include "src/model/cut.hpp"

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
            result.append(
                py::make_tuple(arrays[0], arrays[1], polymer::texts_of(named.residues), named.name, notes));
        }
    return result;
}

/// What cannot be read is refused with the reason.
template <class Read> py::list chains_of(const Read& read) {
    std::vector<polymer::Molecule> molecules;
    try {
        const py::gil_scoped_release others;
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

py::object cut_positions(const Doubles& xyz, const Ids& ids, int first, int last) {
    Chain chain = chain_of(xyz, ids, Finite::any);
    const Chain whole = chain;
    if (!model::cut(chain, first, last)) return py::none();
    const auto inside = [from = std::min(first, last), to = std::max(first, last)](const ChainAtom& atom) {
        return from <= atom.id && atom.id <= to;
    };
    const auto start = std::find_if(whole.begin(), whole.end(), inside) - whole.begin();
    return py::make_tuple(whole.empty() ? 0 : start, chain.size());
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

} // namespace

void bind_chain(py::module_& module) {
    module.def("read", read);
    module.def("parse", parse);
    module.def("text", [](const Doubles& xyz, const Ids& ids, bool plain) {
        return ChainWrite_toString(chain_of(xyz, ids, Finite::any), plain);
    });
    module.def("cut", cut_positions);
    module.def("check", check);
    module.def("readable_formats", read::readable_formats);
}

} // namespace loopwise::python
