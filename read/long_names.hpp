// Names of residues that take four columns of a PDB file.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

namespace loopwise::read {

/// Column 21 is blank, or the first of two letters of a chain, or the fourth of a residue. It is that of a residue
/// if residues before or after it have it blank, or have another letter there, and the same column 22, and their
/// numbers go on without a TER.
class LongNames {
  public:
    explicit LongNames(std::string_view text);

    /// Whether the residue on that line has such a name.
    bool contains(std::size_t line) const;

  private:
    std::vector<std::pair<std::size_t, std::size_t>> lines_; ///< from and to, in order
};

} // namespace loopwise::read
