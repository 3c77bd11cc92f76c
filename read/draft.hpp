// A chain that is put together piece by piece.
#pragma once

#include "read/residues.hpp"

namespace loopwise::read {

bool all_hetero(const std::vector<Residue>& residues);

/// A chain while its pieces come, by the rules of chains_of().
class Draft {
  public:
    Draft(std::string name, const Selection& selection) : name_(std::move(name)), selection_(selection) {}

    const std::string& name() const { return name_; }
    bool empty() const { return residues_.empty(); }

    /// The first piece. Of residues that are not known to be a polymer some are skipped.
    void begin(std::vector<Residue> residues, bool is_polymer);

    /// Takes the residues of a further piece that are bonded to each other, and returns them if they do not
    /// continue this chain but are one of their own. place_loose() decides about the rest.
    std::vector<Residue> add(std::vector<Residue> residues, bool is_polymer);

    /// Residues that are bonded to none of their piece belong where their numbers say: HETATM if they are bonded
    /// there, others if they lie in a gap.
    void place_loose();

    /// The chain, which is the first, second, ... of its name.
    polymer::NamedChain chain(std::size_t part) &&;

  private:
    using Place = std::vector<Residue>::const_iterator;

    std::vector<Residue> without_loose(std::vector<Residue> residues);
    bool is_continued_by(const std::vector<Residue>& residues) const;
    bool belongs_before(Place next, const Residue& residue) const;
    bool may_reach(const Residue& a, const Residue& b) const;

    std::string name_;
    const Selection& selection_;
    std::vector<Residue> residues_, loose_;
    std::vector<std::string> ends_; ///< residues after which another piece goes on
    std::vector<std::string> far_;  ///< those of which the next is farther away than residues between can reach
    std::vector<std::string> notes_;
    bool has_bonds_ = false;
};

} // namespace loopwise::read
