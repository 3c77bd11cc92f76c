"""Chains from and to files and text."""

from __future__ import annotations

import os
from typing import Any, Union

from . import _core
from .chain import Chain, ChainLike, as_chain

Path = Union[str, "os.PathLike[str]"]
_formats = "plain", "pdb"


def _chains(found: list[tuple[Any, Any, list[str], str, list[str]]]) -> list[Chain]:
    chains = []
    for xyz, ids, labels, name, notes in found:
        chains.append(Chain(xyz, ids, labels=labels, name=name))
        chains[-1].notes = tuple(notes)
    return chains


def read_all(path: Path, *, model: str | None = None, atom: str = "CA") -> list[Chain]:
    """All chains of a file, each with its name and one bead for each residue.

    The kinds of files are told by :func:`readable_formats`. ``model`` is one of the file's, by default the
    first, or "all"; ``atom`` stands for a residue. What the reader had to decide, as about alternate places
    of an atom, is in the chains' ``notes``. Raises OSError (with the file's name) when the file cannot be
    read, and ValueError with the reason when it does not hold what it should.

    >>> [chain.name for chain in read_all("examples/data/trefoil.txt")]
    ['']
    """
    with open(path, "rb"):  # raises what Python raises
        pass
    try:
        return _chains(_core.read(os.fsencode(path), model or "", atom))
    except ValueError as refusal:
        raise ValueError(f"{os.fsdecode(path)}: {refusal}") from None


def read(path: Path, chain: str | None = None, *, model: str | None = None, atom: str = "CA") -> Chain:
    """The chain of a file, or of several the one of this name.

    Raises what :func:`read_all` raises, and ValueError when there are several chains and none is named, or
    none of this name.

    >>> read("examples/data/trefoil.txt")
    Chain of 120 beads, 1 to 120
    """
    return _only(read_all(path, model=model, atom=atom), chain, os.fsdecode(path))


def _only(chains: list[Chain], name: str | None, source: str) -> Chain:
    found = chains if name is None else [c for c in chains if c.name == name]
    if len(found) == 1:
        return found[0]
    names = ", ".join(c.name for c in chains)
    if name is not None:
        raise ValueError(f"{source}: {len(found)} chains are named {name!r}; there are {names}")
    raise ValueError(f"{source}: has {len(chains)} chains, {names}: name one")


def readable_formats() -> str:
    """The kinds of files that :func:`read` takes, in words."""
    return _core.readable_formats()


def from_text(text: str, chain: str | None = None) -> Chain:
    """The chain of a text, which may be whatever a file may hold: identifier, x, y and z of one bead in a
    line, or x, y and z, or PDB or mmCIF. Raises ValueError as :func:`read` does, with the number of a line
    that is no bead.

    >>> from_text("7 0 0 0\\n8 3.8 0 0").ids
    array([7, 8], dtype=int32)
    """
    return _only(_chains(_core.parse(text)), chain, "the text")


def to_text(chain: ChainLike, format: str = "plain", *, closed: bool = False) -> str:
    """The text of a chain: "plain", a line of identifier, x, y and z for each bead, or "pdb".

    Plain coordinates read back to the last bit. PDB has them to a thousandth, the labels as residue numbers
    with insertion letters, the chain's name ("A" for none), and a CONECT record for every bond, with
    ``closed`` also from the last bead to the first. Raises ValueError for an unknown format, for what does
    not fit the columns of PDB, and for coordinates that are not finite.

    >>> to_text([[0, 0, 0], [3.8, 0, 0]])
    '1 0 0 0\\n2 3.8 0 0\\n'
    """
    if format not in _formats:
        raise ValueError(f"format must be 'plain' or 'pdb', not {format!r}")
    return _core.plain_text(as_chain(chain)) if format == "plain" else _core.pdb_text(as_chain(chain), closed)


def write(chain: ChainLike, path: Path, format: str = "plain", *, closed: bool = False) -> None:
    """Writes :func:`to_text` to a file, replacing what it held. Raises OSError with the file's name.

    >>> write([[0, 0, 0], [3.8, 0, 0]], "build/chain.txt")
    """
    text = to_text(chain, format, closed=closed)
    with open(path, "w", encoding="utf-8", newline="") as file:
        file.write(text)
