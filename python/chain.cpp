// Chains from and to text, their check and their cut.
#include "arrays.hpp"
#include "input/input.hpp"
#include "model/cut.hpp"
#include "module.hpp"
#include "textio/reader.hpp"

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace loopwise {
namespace {

constexpr double shortest_bond = 3.4, longest_bond = 4.2; // as CheckDistancesBetweenAtoms()

py::list read(const py::bytes& path, const py::str& shown) {
    std::vector<NamedChain> chains;
    try {
        const std::string name = path;
        const py::gil_scoped_release others;
        chains = read_chains(name);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& refusal) {
        // Some parsers start with the name of the file or use several lines.
        std::string reason = refusal.what();
        std::replace(reason.begin(), reason.end(), '\n', ' ');
        const std::string name = shown;
        throw py::value_error(reason.starts_with(name) ? reason : name + ": " + reason);
    }
    py::list result;
    for (const NamedChain& named : chains) {
        const py::tuple arrays = arrays_of(named.beads);
        result.append(py::make_tuple(arrays[0], arrays[1], named.labels, named.name));
    }
    return result;
}

/// The reader of the library makes something of every line; here a line is an atom, or blank, or refused.
py::tuple parse(const std::string& text) {
    std::istringstream lines(text);
    lines.imbue(std::locale::classic());
    std::string atoms, line;
    for (int number = 1; std::getline(lines, line); ++number) {
        if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
        std::istringstream fields(line);
        ChainAtom atom{};
        if (!(fields >> atom.id >> atom.x >> atom.y >> atom.z))
            throw py::value_error("line " + std::to_string(number) + " is not an atom: id x y z");
        atoms += line + '\n';
    }
    const Reading reading = read_text(atoms);
    if (reading.repeated)
        throw py::value_error("two neighbouring atoms are at the same place, the second with the identifier " +
                              std::to_string(*reading.repeated));
    return arrays_of(reading.chain);
}

py::object cut_positions(const Doubles& xyz, const Ids& ids, int first, int last) {
    Chain chain = chain_of(xyz, ids, Finite::any);
    const Chain whole = chain;
    if (!cut(chain, first, last)) return py::none();
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
        if (*to < shortest_bond || *to > longest_bond) odd.push_back(i);
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
    module.def("readable_formats", readable_formats);
}

} // namespace loopwise
