#include "read/atoms.hpp"

#include "read/bonded.hpp"

#include <algorithm>

namespace loopwise::read {

bool is_of_use(std::string_view atom, const Selection& selection) {
    return atom == atom_name(selection.atom) || shows_bonds(atom);
}

std::string atom_name(std::string_view name) {
    std::string plain(name);
    std::replace(plain.begin(), plain.end(), '*', '\'');
    return plain;
}

} // namespace loopwise::read
