#include "read/draft.hpp"

#include "read/bonded.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <iterator>
#include <set>

namespace loopwise::read {
namespace {

polymer::BeadKind kind_of(const Selection& selection) {
    if (selection.is_of_amino_acids()) return polymer::BeadKind::amino_acids;
    const std::string name = atom_name(selection.atom);
    return name == "P" || name.ends_with('\'') ? polymer::BeadKind::nucleotides : polymer::BeadKind::any;
}

void note_skipped(const std::vector<std::string>& residues, const char* why, std::vector<std::string>& notes) {
    if (!residues.empty()) notes.push_back(words::listed(residues) + " skipped: " + why);
}

/// Skips residues that are bonded to no other, by the rule of chains_of().
std::vector<Residue> polymer_of(std::vector<Residue> residues, const Selection& selection,
                                std::vector<std::string>& notes) {
    if (residues.empty()) return residues;
    const std::vector<std::size_t> runs = bonded_runs(residues, selection);
    if (!any_bonded(runs)) return all_hetero(residues) ? std::vector<Residue>{} : residues;
    std::size_t last = runs.size();
    while (runs[last - 1] == 1) --last;
    std::vector<Residue> kept;
    std::vector<std::string> skipped;
    auto from = residues.begin();
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const auto to = from + static_cast<std::ptrdiff_t>(runs[i]);
        if (runs[i] == 1 && (from->bead->hetero || i >= last))
            skipped.push_back(from->bead->title());
        else
            kept.insert(kept.end(), from, to);
        from = to;
    }
    note_skipped(skipped, "not bonded to the chain", notes);
    return kept;
}

/// Ligands rarely have both atoms of a bond of the backbone, residues have them unless only beads are given.
bool may_be_of_polymer(const Residue& residue) {
    const auto has = [&](std::string_view name) {
        return std::any_of(residue.atoms.begin(), residue.atoms.end(),
                           [&](const FileAtom* atom) { return atom->name == name; });
    };
    return has("C") == has("N") && has("O3'") == has("P");
}

} // namespace

bool all_hetero(const std::vector<Residue>& residues) {
    return std::all_of(residues.begin(), residues.end(), [](const Residue& residue) { return residue.bead->hetero; });
}

void Draft::begin(std::vector<Residue> residues, bool is_polymer) {
    residues_ = is_polymer ? std::move(residues) : polymer_of(std::move(residues), selection_, notes_);
    has_bonds_ = any_bonded(bonded_runs(residues_, selection_));
}

std::vector<Residue> Draft::add(std::vector<Residue> residues, bool is_polymer) {
    std::vector<Residue> bonded = is_polymer ? std::move(residues) : without_loose(std::move(residues));
    if (bonded.empty() || !is_continued_by(bonded)) return bonded;
    ends_.push_back(residues_.back().id().text());
    if (!may_reach(residues_.back(), bonded.front())) far_.push_back(ends_.back());
    residues_.insert(residues_.end(), std::make_move_iterator(bonded.begin()), std::make_move_iterator(bonded.end()));
    return {};
}

void Draft::place_loose() {
    const auto precedes = [](const Residue& a, const Residue& b) { return a.id() < b.id(); };
    const bool sorted = std::is_sorted(residues_.begin(), residues_.end(), precedes);
    if (!ends_.empty())
        notes_.push_back("one chain in pieces, as the residue numbers go on after " + words::listed(ends_));
    if (!far_.empty())
        notes_.push_back("too far for the numbers left out after " + words::listed(far_) +
                         "; if other chains begin there, give them other names");
    std::vector<std::string> hetero, others;
    for (Residue& residue : loose_) {
        const auto next = std::upper_bound(residues_.begin(), residues_.end(), residue, precedes);
        if (sorted && belongs_before(next, residue))
            residues_.insert(next, std::move(residue));
        else if (!residue.bead->hetero)
            others.push_back(residue.bead->title());
        else if (may_be_of_polymer(residue))
            hetero.push_back(residue.bead->title());
    }
    note_skipped(others, "after the end of the chain", notes_);
    note_skipped(hetero, "no part of the chain by number and bond", notes_);
}

polymer::NamedChain Draft::chain(std::size_t part) && {
    polymer::NamedChain chain{name_, {}, {}, kind_of(selection_), std::move(notes_)};
    if (part > 1) {
        chain.shared_name = name_;
        chain.name.append(".").append(std::to_string(part));
        chain.notes.insert(chain.notes.begin(),
                           (name_.empty() ? "second chain without a name" : "second chain named " + name_) +
                               ": read as " + chain.name);
    }
    std::set<polymer::ResidueId> known;
    std::string repeated;
    for (const Residue& residue : residues_) {
        const PointR3& place = residue.bead->place;
        chain.beads.push_back({place.x, place.y, place.z, 0});
        chain.residues.push_back(residue.id());
        if (!known.insert(residue.id()).second && repeated.empty()) repeated = residue.id().text();
    }
    if (!repeated.empty() && !(polymer::is_ring(chain) && known.size() + 1 == chain.residues.size()))
        chain.notes.push_back("residue numbers repeat, first " + repeated);
    return chain;
}

std::vector<Residue> Draft::without_loose(std::vector<Residue> residues) {
    const std::vector<std::size_t> runs = bonded_runs(residues, selection_);
    has_bonds_ = has_bonds_ || any_bonded(runs);
    if (!has_bonds_ && !all_hetero(residues)) return residues; // a coarse trace
    std::vector<Residue> bonded, singles;
    auto from = residues.begin();
    for (const std::size_t length : runs) {
        const auto to = from + static_cast<std::ptrdiff_t>(length);
        const bool all_het = std::all_of(from, to, [](const Residue& residue) { return residue.bead->hetero; });
        if (all_het || length == 1) {
            std::vector<Residue>& into = all_het ? loose_ : singles;
            into.insert(into.end(), from, to);
        } else {
            // Single residues before others are within the chain.
            bonded.insert(bonded.end(), singles.begin(), singles.end());
            singles.clear();
            bonded.insert(bonded.end(), from, to);
        }
        from = to;
    }
    loose_.insert(loose_.end(), singles.begin(), singles.end());
    return bonded;
}

/// Numbers of chains without a name may go through all molecules of a file: then a gap must leave out enough.
bool Draft::is_continued_by(const std::vector<Residue>& residues) const {
    const Residue &last = residues_.back(), &next = residues.front();
    if (!(last.id() < next.id()) || last.bead->segment != next.bead->segment) return false;
    return !name_.empty() || are_bonded(last, next, selection_) ||
           (may_reach(last, next) && *next.id().number() - 1 > *last.id().number());
}

bool Draft::belongs_before(Place next, const Residue& residue) const {
    const Residue* const after = next == residues_.end() ? nullptr : &*next;
    const Residue* const before = next == residues_.begin() ? nullptr : &*(next - 1);
    if (before && before->id() == residue.id()) return false;
    if (!before || !after) {
        const Residue *const first = before ? before : &residue, *const second = before ? &residue : after;
        return residue.bead->hetero && second->id().number() == first->id().number().value_or(0) + 1 &&
               are_bonded(*first, *second, selection_);
    }
    const bool leaves_room =
        before->id().number() < residue.id().number() && residue.id().number() < after->id().number();
    if (!leaves_room && are_bonded(*before, *after, selection_)) return false;
    if (are_bonded(*before, residue, selection_) || are_bonded(residue, *after, selection_)) return true;
    return !residue.bead->hetero && may_reach(*before, residue) && may_reach(residue, *after);
}

/// Whether the residues between two can span their distance.
bool Draft::may_reach(const Residue& a, const Residue& b) const {
    if (!a.id().number() || !b.id().number()) return false;
    const double steps = static_cast<double>(*b.id().number()) - *a.id().number();
    return Dist(a.bead->place, b.bead->place) <= longest_step(selection_) * std::max(steps, 1.0);
}

} // namespace loopwise::read
