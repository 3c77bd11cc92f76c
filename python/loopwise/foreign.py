"""Chains of other libraries by what they offer, without importing any."""

from __future__ import annotations

from typing import Any


def is_chain(given: Any) -> bool:
    """Whether it looks like a gemmi.Chain, an MDAnalysis AtomGroup or a Biopython chain."""
    return _is_atom_group(given) or _is_gemmi_chain(given) or _is_biopython_chain(given)


def arrays_of(given: Any) -> tuple[Any, Any, list[str] | None, str]:
    """Coordinates, identifiers, labels and name."""
    if _is_atom_group(given):
        return _arrays_of_atom_group(given)
    beads = list(_gemmi_beads(given) if _is_gemmi_chain(given) else _biopython_beads(given))
    if not beads:
        raise ValueError(f"chain {_name_of(given)} has no C-alpha atom")
    places, ids, labels = zip(*beads)
    return list(places), list(ids), list(labels), _name_of(given)


def _is_atom_group(given: Any) -> bool:
    return hasattr(given, "positions") and hasattr(given, "resids") and hasattr(given, "n_residues")


def _is_gemmi_chain(given: Any) -> bool:
    return hasattr(given, "first_conformer") and hasattr(given, "name")


def _is_biopython_chain(given: Any) -> bool:
    has_residues = hasattr(given, "get_residues") and hasattr(given, "child_list")
    return has_residues and getattr(given, "level", "") == "C"


def _name_of(given: Any) -> str:
    return str(given.name if _is_gemmi_chain(given) else given.id)


def _arrays_of_atom_group(group: Any) -> tuple[Any, Any, list[str] | None, str]:
    if len(group) != group.n_residues:
        raise ValueError(
            f"the atom group has {len(group)} atoms of {group.n_residues} residues: select one of each, "
            "as by select_atoms('protein and name CA')"
        )
    return group.positions, group.resids, None, ""


def _gemmi_beads(chain: Any) -> Any:
    for residue in chain.first_conformer():
        if residue.entity_type.name not in ("Polymer", "Unknown"):
            continue
        for atom in residue:
            if atom.name == "CA" and atom.element.name == "C":
                yield atom.pos.tolist(), residue.seqid.num, str(residue.seqid)
                break


def _biopython_beads(chain: Any) -> Any:
    for residue in chain.get_residues():
        kind, number, letter = residue.id
        if kind != "W" and "CA" in residue and residue["CA"].element == "C":
            yield residue["CA"].coord.tolist(), number, f"{number}{letter}".strip()
