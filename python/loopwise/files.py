"""Chains from and to files and text."""

from __future__ import annotations

import os
from typing import Union

from . import _core
from .chain import Chain, ChainLike, arrays_of

Path = Union[str, "os.PathLike[str]"]
_formats = {"plain": True, "pdb": False}


def read_all(path: Path) -> list[Chain]:
    """All chains of a file, each with its name and one bead for each residue.

    The kinds of files are told by :func:`readable_formats`. Raises OSError (with the file's name) when the file cannot
    be read, and ValueError with the reason when it does not hold what it should.

    >>> [chain.name for chain in read_all("examples/data/trefoil.txt")]
    ['']
    """
    with open(path, "rb"):  # raises what Python raises
        pass
    return [
        Chain(xyz, ids, labels=labels, name=name)
        for xyz, ids, labels, name in _core.read(os.fsencode(path), os.fsdecode(path))
    ]


def read(path: Path, chain: str | None = None) -> Chain:
    """The chain of a file, or of several the one of this name.

    Raises what :func:`read_all` raises, and ValueError when there are several chains and none is named, or none of
    this name.

    >>> read("examples/data/trefoil.txt")
    Chain of 120 beads, 1 to 120
    """
    chains = read_all(path)
    found = chains if chain is None else [c for c in chains if c.name == chain]
    if len(found) == 1:
        return found[0]
    names = ", ".join(c.name for c in chains)
    if chain is not None:
        raise ValueError(f"{os.fsdecode(path)}: {len(found)} chains are named {chain!r}; there are {names}")
    raise ValueError(f"{os.fsdecode(path)}: has {len(chains)} chains, {names}: name one")


def readable_formats() -> str:
    """The kinds of files that :func:`read` takes, in words."""
    return _core.readable_formats()


def from_text(text: str) -> Chain:
    """The chain of a text of one bead in a line: identifier, x, y, z.

    Blank lines and what follows the fourth number are passed over. Raises ValueError with the number of a line that
    is no bead, and for two neighbours at one place.

    >>> from_text("7 0 0 0\\n8 3.8 0 0").ids
    array([7, 8], dtype=int32)
    """
    xyz, ids = _core.parse(text)
    return Chain(xyz, ids)


def to_text(chain: ChainLike, format: str = "plain") -> str:
    """The text of a chain: "plain", as :func:`from_text` takes it, or "pdb" ATOM records.

    Coordinates have six significant digits, those of PDB are cut to seven characters: a chain that comes back may
    differ by that much. Raises ValueError for an unknown format.

    >>> to_text([[0, 0, 0], [3.8, 0, 0]])
    '1 0 0 0\\n2 3.8 0 0\\n'
    """
    if format not in _formats:
        raise ValueError(f"format must be 'plain' or 'pdb', not {format!r}")
    return _core.text(*arrays_of(chain), _formats[format])


def write(chain: ChainLike, path: Path, format: str = "plain") -> None:
    """Writes :func:`to_text` to a file, replacing what it held. Raises OSError with the file's name.

    >>> write([[0, 0, 0], [3.8, 0, 0]], "build/chain.txt")
    """
    text = to_text(chain, format)
    with open(path, "w", encoding="ascii", newline="") as file:
        file.write(text)
