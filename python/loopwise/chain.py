"""Chains, and what is taken for one."""

from __future__ import annotations

from typing import Any, Iterator, Sequence, Union, overload

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import _core, foreign

Coordinates = NDArray[np.float64]
Identifiers = NDArray[np.int32]
Positions = NDArray[np.int64]
ChainLike = Union["Chain", ArrayLike, Any]
"""A Chain, (n, 3) numbers, or a chain object of gemmi, MDAnalysis or Biopython."""


def as_coordinates(given: Any) -> Coordinates:
    """(n, 3) numbers as doubles: the given array itself if it holds doubles, whatever its strides."""
    if isinstance(given, np.ma.MaskedArray) and np.any(given.mask):
        raise ValueError("coordinates must not be masked")
    xyz = np.asarray(given)
    if xyz.ndim != 2 or xyz.shape[1] != 3:
        raise ValueError(f"coordinates must have the shape (n, 3), not {xyz.shape}")
    if xyz.dtype == np.float64:
        return xyz
    if xyz.dtype.kind not in "iufO":
        raise ValueError(f"coordinates must be real numbers, not {xyz.dtype}")
    try:
        return xyz.astype(np.float64)
    except (TypeError, ValueError, OverflowError) as reason:
        raise ValueError(f"coordinates must be real numbers: {reason}") from None


def as_identifiers(given: Any, beads: int) -> Identifiers:
    """One 32-bit whole number for each bead."""
    ids = np.asarray(given)
    if ids.shape != (beads,):
        raise ValueError(f"there must be an identifier for each of {beads} beads, not the shape {ids.shape}")
    if ids.dtype == np.int32:
        return ids
    if ids.size == 0:
        return np.empty(0, np.int32)
    if ids.dtype.kind not in "iu":
        raise ValueError(f"identifiers must be whole numbers, not {ids.dtype}")
    low, high = int(ids.min()), int(ids.max())
    if low < -(2**31) or high >= 2**31:
        raise ValueError(f"identifiers must fit 32 bits, not {low if low < -(2**31) else high}")
    return ids.astype(np.int32)


def _read_only(array: Any) -> Any:
    view = array.view()
    view.flags.writeable = False
    return view


_most_shown_beads = 3000
"""Of longer chains notebooks show no picture unasked: it takes long, and nobody can follow it."""


class Chain:
    """The beads of one chain in order along the backbone.

    ``xyz`` are (n, 3) numbers of any type, order and strides. Doubles are kept as they are: the chain looks
    at the given array, read-only, and sees later changes to it. Anything else is converted once. ``ids`` are
    n whole numbers of 32 bits, such as residue numbers, by default 1 to n; ``labels`` are what people call
    the beads, by default their identifiers. Coordinates may be NaN or infinite; operations to which that
    makes no sense refuse them.

    Raises ValueError for other shapes and types.

    >>> chain = Chain([[0, 0, 0], [3.8, 0, 0], [3.8, 3.8, 0]], ids=[10, 11, 12])
    >>> chain
    Chain of 3 beads, 10 to 12
    >>> chain[1:].xyz
    array([[3.8, 0. , 0. ],
           [3.8, 3.8, 0. ]])
    """

    __slots__ = ("_xyz", "_ids", "_labels", "name", "notes")
    name: str
    notes: tuple[str, ...]
    """What the reader of its file had to decide, in words."""

    def __init__(
        self, xyz: ChainLike, ids: ArrayLike | None = None, *, labels: Sequence[str] | None = None,
        name: str = "",
    ):
        if isinstance(xyz, Chain) or foreign.is_chain(xyz):
            given = as_chain(xyz)
            xyz, ids = given._xyz, given._ids if ids is None else ids
            labels, name = given._labels if labels is None else labels, name or given.name
        self._xyz: Coordinates = _read_only(as_coordinates(xyz))
        beads = len(self._xyz)
        self._ids: Identifiers | None = None if ids is None else _read_only(as_identifiers(ids, beads))
        self._labels: tuple[str, ...] | None = None if labels is None else tuple(map(str, labels))
        self.name = name
        self.notes = ()
        if self._labels is not None and len(self._labels) != beads:
            raise ValueError(f"there must be a label for each of {beads} beads, not {len(self._labels)}")

    @property
    def xyz(self) -> Coordinates:
        """The coordinates, (n, 3) doubles, read-only."""
        return self._xyz

    @property
    def ids(self) -> Identifiers:
        """The identifiers, n whole numbers, read-only."""
        if self._ids is None:
            self._ids = _read_only(np.arange(1, len(self._xyz) + 1, dtype=np.int32))
        return self._ids

    @property
    def labels(self) -> tuple[str, ...]:
        """What the beads are called: residue numbers with insertion letters, or the identifiers."""
        return tuple(map(str, self.ids.tolist())) if self._labels is None else self._labels

    def _label(self, position: int) -> str:
        return str(self.ids[position]) if self._labels is None else self._labels[position]

    def __len__(self) -> int:
        return len(self._xyz)

    def __iter__(self) -> Iterator[Coordinates]:
        return iter(self._xyz)

    @overload
    def __getitem__(self, which: slice | Sequence[int] | NDArray[Any]) -> Chain: ...
    @overload
    def __getitem__(self, which: int) -> Coordinates: ...
    def __getitem__(self, which: Any) -> Chain | Coordinates:
        """A chain of the beads at these positions (a slice, positions or booleans), or one bead's
        coordinates."""
        if isinstance(which, (int, np.integer)):
            bead: Coordinates = self._xyz[which]
            return bead
        labels = None if self._labels is None else np.array(self._labels, dtype=object)[which].tolist()
        return Chain(self._xyz[which], self.ids[which], labels=labels, name=self.name)

    def __array__(self, dtype: Any = None) -> Coordinates:
        return self._xyz if dtype is None else self._xyz.astype(dtype)

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Chain):
            return NotImplemented
        return np.array_equal(self.xyz, other.xyz) and np.array_equal(self.ids, other.ids)

    __hash__ = None  # type: ignore[assignment]

    def __repr__(self) -> str:
        name = f" {self.name}" if self.name else ""
        ends = f", {self._label(0)} to {self._label(-1)}" if len(self) else ""
        return f"Chain{name} of {len(self)} bead{'' if len(self) == 1 else 's'}{ends}"

    def to_svg(self) -> str:
        """The text of an SVG picture: the beads' trace, coloured from the first to the last, along the
        direction with the fewest crossings of the 60 of :func:`project` (of 4 of them beyond 3,000 beads). A
        chain that ends where it begins is drawn as a ring.

        Raises ValueError for coordinates that are not finite and fewer than two beads.

        >>> import loopwise as lw
        >>> "an open chain" in lw.sample("trefoil").to_svg()
        True
        """
        return _core.picture(self)

    def _repr_svg_(self) -> str | None:
        shown = 2 <= len(self) <= _most_shown_beads and np.isfinite(self._xyz).all()
        return self.to_svg() if shown else None

    def __reduce__(self) -> Any:
        return _unpickled, (np.array(self._xyz), self._ids, self._labels, self.name)


def _unpickled(xyz: Coordinates, ids: Identifiers | None, labels: Sequence[str] | None, name: str) -> Chain:
    return Chain(xyz, ids, labels=labels, name=name)


def as_chain(given: ChainLike) -> Chain:
    """The chain itself, or one of what is taken for a chain."""
    if isinstance(given, Chain):
        return given
    if foreign.is_chain(given):
        xyz, ids, labels, name = foreign.arrays_of(given)
        return Chain(xyz, ids, labels=labels, name=name)
    return Chain(given)


def arrays_of(given: ChainLike) -> tuple[Coordinates, Identifiers | None]:
    """Coordinates and identifiers, if there are any, for the compiled module."""
    if type(given) is np.ndarray:
        return as_coordinates(given), None
    chain = as_chain(given)
    return chain._xyz, chain._ids


def is_structure(given: Any) -> bool:
    """Whether it is a list or tuple of chains, not of points."""
    if not isinstance(given, (list, tuple)) or not given:
        return False
    first = given[0]
    if isinstance(first, Chain) or foreign.is_chain(first):
        return True
    try:
        return np.ndim(first) == 2
    except ValueError:
        return False


def structure_of(given: Any) -> list[tuple[Coordinates, Identifiers | None]]:
    """arrays_of() every component; a single chain is the one component."""
    return [arrays_of(chain) for chain in given] if is_structure(given) else [arrays_of(given)]
