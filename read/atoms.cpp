#include "read/atoms.hpp"

#include "read/bonded.hpp"

#include <algorithm>

namespace loopwise::read {

bool is_of_use(std::string_view atom, const Selection& selection) {
    return atom == atom_name(selection.atom) || shows_bonds(atom);
}

bool is_calcium(std::string_view atom, std::string_view element, std::string_view residue_name) {
    return atom == "CA" && (element.empty() ? residue_name == "CA" : element != "C" && element != "c");
}

std::string atom_name(std::string_view name) {
    std::string plain(name);
    std::replace(plain.begin(), plain.end(), '*', '\'');
    return plain;
}

} // namespace loopwise::read
