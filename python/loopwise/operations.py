"""What the library does with chains, one function for each operation."""

from __future__ import annotations

import dataclasses
from typing import Any, overload

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import _core
from .chain import Chain, ChainLike, Coordinates, Positions, arrays_of, as_chain, is_structure, structure_of

def _appended(old: Chain, xyz: Any, ids: Any) -> Chain:
    more = len(xyz) - len(old)
    labels = None if old._labels is None else [*old._labels, *(f"+{i}" for i in range(1, more + 1))]
    return Chain(xyz, ids, labels=labels, name=old.name)


@overload
def close(  # type: ignore[misc]  # a list of chains is an array of numbers, too
    chain: list[Chain] | tuple[Chain, ...], method: str | None = ..., *, seed: int = ..., closure: int = ...,
    scale: float | None = ...,
) -> list[Chain]: ...
@overload
def close(
    chain: ChainLike, method: str | None = ..., *, direction: int | None = ..., seed: int = ...,
    closure: int = ..., scale: float | None = ...,
) -> Chain: ...
def close(
    chain: Any, method: str | None = None, *, direction: int | None = None, seed: int = 0, closure: int = 0,
    scale: float | None = None,
) -> Any:
    """Closes a chain around its outside: a new chain of the same beads and some more at its end. Its last
    bead is then joined to its first. A list or tuple of chains is closed together, and a list comes back.

    ``method`` is one of those below; by default "directions" of a single chain, "direction" of several.

    METHODS

    ``scale`` is the distance of the point or the arc from the centre, in radii of the chain, above 1 and up
    to 10^6. ``direction`` (0 to 399) names the direction, for a single chain and the first three methods.
    Random directions are drawn with ``seed``; closure k of a survey with the same seed is that of
    ``closure=k``. For several chains the radius is the diameter of all.

    Raises ValueError for other methods and numbers, coordinates that are not finite, chains without beads,
    more chains than the method has directions for, and where an arc finds no way around.

    >>> import loopwise as lw
    >>> len(lw.close(lw.sample("trefoil"), direction=7))
    62
    >>> [len(c) for c in lw.close([lw.sample("trefoil"), lw.sample("unknot")], "point", seed=3)]
    [61, 61]
    """
    if is_structure(chain):
        if direction is not None:
            raise ValueError("several chains are closed in directions of their own: give a seed")
        old = [as_chain(c) for c in chain]
        new = _core.close_together([(c._xyz, c.ids) for c in old], method, scale, seed, closure)
        return [_appended(c, *arrays) for c, arrays in zip(old, new)]
    one = as_chain(chain)
    return _appended(one, *_core.close(one._xyz, one.ids, method, direction, scale, seed, closure))


def _methods_text() -> str:
    lines = []
    for method in _core.methods:
        scale = f"; ``scale`` is {method.default_scale:g} by default" if method.default_scale else ""
        lines += [f'    - "{method.name}": {method.help}{scale}'] * method.closes
    return "\n".join(lines)


close.__doc__ = str(close.__doc__).replace("    METHODS", _methods_text())


@overload
def reduce(  # type: ignore[misc]  # likewise
    chain: list[Chain] | tuple[Chain, ...], closed: bool = ...
) -> list[Positions]: ...
@overload
def reduce(chain: ChainLike, closed: bool = ...) -> Positions: ...
def reduce(chain: Any, closed: bool = True) -> Any:
    """Removes every bead that the entanglement of a chain does not need, by triangle elimination (Koniaris
    and Muthukumar 1991, Taylor 2000). Returns the positions that stay, in order, so that ``chain[kept]``,
    ``xyz[kept]`` and the caller's own records follow. A list or tuple of chains is reduced together, each an
    obstacle to the others, and a list of positions comes back.

    With ``closed`` the last bead is joined to the first; the two ends of an open chain always stay. A chain
    that stores its first bead at its end again (the same identifier, less than 1e-5 apart) is a loop whatever
    ``closed`` says; the position that is first then stands at the end of the result again. Among several
    chains, as soon as one is stored so, only those are loops.

    Raises ValueError for coordinates that are not finite. Ctrl-C is obeyed, even though the work then goes on
    unseen until it is done.

    >>> import loopwise as lw
    >>> loop = lw.close(lw.sample("trefoil"), direction=7)
    >>> kept = lw.reduce(loop)
    >>> lw.knot(loop.xyz[kept]).name
    '-3_1'
    """
    if type(chain) is not np.ndarray and is_structure(chain):
        return _core.reduce_together([arrays_of(c) for c in chain], closed)
    xyz, ids = arrays_of(chain)
    return _core.reduce(xyz, ids, closed)


@dataclasses.dataclass(frozen=True)
class Check:
    """What :func:`check` found. It is true when all neighbours are as far apart as they should be."""

    distances: NDArray[np.float64]
    """Between each bead and the next, n - 1 of them."""
    pairs: Positions
    """(m, 2) positions of neighbours that are less than 3.4 or more than 4.2 apart."""
    text: str
    """"OK", or the closest pair if too close and the farthest if too far, by their identifiers."""

    @property
    def ok(self) -> bool:
        """Whether there are no such pairs."""
        return len(self.pairs) == 0

    def __bool__(self) -> bool:
        return self.ok

    def __repr__(self) -> str:
        missed = f"{len(self.pairs)} of {len(self.distances)} distances from 3.4 to 4.2 missed"
        return f"Check({self.text!r}, {missed})"

    def to_dict(self) -> dict[str, Any]:
        """Plain values, as for JSON."""
        return {"text": self.text, "distances": self.distances.tolist(), "pairs": self.pairs.tolist()}


def check(chain: ChainLike) -> Check:
    """Checks whether neighbours along the chain are 3.4 to 4.2 apart, as C-alpha atoms of a protein are.

    Raises ValueError for coordinates that are not finite.

    >>> found = check([[0, 0, 0], [3.8, 0, 0], [9.0, 0, 0]])
    >>> found.ok, found.pairs.tolist(), found.text
    (False, [[1, 2]], 'HEAD: broken protein between 2-3(5.2)')
    """
    xyz, ids = arrays_of(chain)
    distances, first, text = _core.check(xyz, ids)
    pairs = np.array(first, dtype=np.int64)
    return Check(distances, np.stack([pairs, pairs + 1], axis=1), text)


def cut(chain: ChainLike, first: int, last: int) -> Chain:
    """The subchain between two identifiers, both included, given in either order.

    Beads are taken off both ends until both end beads have identifiers inside the range. Raises ValueError
    when a bound is outside the identifiers of the two ends, or no bead is inside.

    >>> cut(Chain([[0, 0, 0], [3.8, 0, 0], [3.8, 3.8, 0]], ids=[10, 11, 12]), 11, 12)
    Chain of 2 beads, 11 to 12
    """
    whole = as_chain(chain)
    start, beads = _core.cut(whole._xyz, whole.ids, first, last)
    return whole[start : start + beads]


def centre(chain: ChainLike) -> Coordinates:
    """The mean of the coordinates, three numbers; zeros for a chain without beads.

    >>> centre([[0, 0, 0], [2, 4, 6]])
    array([1., 2., 3.])
    """
    return _core.centre(arrays_of(chain)[0])


def radius(chain: ChainLike) -> float:
    """The largest distance of a bead from :func:`centre`; 0 for a chain without beads.

    >>> radius([[0, 0, 0], [2, 0, 0]])
    1.0
    """
    return _core.radius(arrays_of(chain)[0])


def diameter(chain: Any) -> float:
    """The largest distance of two beads, of one chain or of any in a list or tuple of chains; 0 below two
    beads.

    >>> diameter([[0, 0, 0], [3, 4, 0], [1, 0, 0]])
    5.0
    """
    if is_structure(chain):
        return _core.diameter_together(structure_of(chain))
    return _core.diameter(arrays_of(chain)[0])


def project(chain: ChainLike, direction: int = 0, closed: bool = False) -> NDArray[np.float64]:
    """The segments of a chain seen along one of 60 directions: (m, 2, 3), start and end of each, with x and y
    in the picture and z the depth. With ``closed``, a segment from the last bead to the first comes at the
    end. Raises ValueError for another direction.

    >>> import loopwise as lw
    >>> project(lw.sample("trefoil"), 7, closed=True).shape
    (60, 2, 3)
    """
    return _core.project(*arrays_of(chain), direction, closed)


def project_point(point: ArrayLike, direction: ArrayLike) -> Coordinates:
    """A point in the right-handed frame whose third axis is the direction, of which only the whole parts
    count.

    >>> project_point([1, 2, 3], [0, 1, 0])
    array([-1.,  3.,  2.])
    """
    return _core.project_point(_points(point), _points(direction))


_contacts = ("none", "through", "touch")


def intersection(triangle: ArrayLike, segment: ArrayLike) -> str:
    """How a segment (2, 3) meets a triangle (3, 3): "none", "through" its inside (or the two are degenerate,
    as in one coordinate plane), or "touch" within 1e-5 at an edge, a corner or an end of the segment.

    >>> intersection([[0, 0, 0], [4, 0, 1], [0, 4, 1]], [[1, 1, -3], [1, 1, 5]])
    'through'
    """
    return _contacts[_core.intersection(_points(triangle), _points(segment))]


def segments_cross(a: ArrayLike, b: ArrayLike, c: ArrayLike, d: ArrayLike) -> bool:
    """Whether the planar segments ab and cd cross or touch; points are (x, y), a third coordinate is left
    out.

    >>> segments_cross([0, 0], [2, 2], [0, 2], [2, 0])
    True
    """
    return _core.segments_cross(*_planar(a), *_planar(b), *_planar(c), *_planar(d))


def on_segment(a: ArrayLike, b: ArrayLike, point: ArrayLike) -> bool:
    """Whether a planar point lies in the bounding box of the segment ab.

    >>> on_segment([0, 0], [2, 2], [1, 2])
    True
    """
    return _core.on_segment(*_planar(a), *_planar(b), *_planar(point))


def orientation(a: ArrayLike, b: ArrayLike, c: ArrayLike) -> float:
    """Twice the signed area of a planar triangle, positive counter-clockwise.

    >>> orientation([0, 0], [1, 0], [0, 1])
    1.0
    """
    return _core.orientation(*_planar(a), *_planar(b), *_planar(c))


def scalar_product(a: ArrayLike, b: ArrayLike) -> float:
    """a[0]*b[0] + a[1]*b[1] + a[2]*b[2], in this order.

    >>> scalar_product([1, 2, 3], [4, 5, 6])
    32.0
    """
    return _core.scalar_product(_points(a), _points(b))


def determinant(matrix: ArrayLike) -> float:
    """The determinant of a (3, 3) matrix by the rule of Sarrus.

    >>> determinant([[2, 0, 0], [0, 3, 0], [0, 0, 4]])
    24.0
    """
    return _core.determinant(_points(matrix))


def distance(a: ArrayLike, b: ArrayLike) -> float:
    """The distance of two points.

    >>> distance([0, 0, 0], [1, 2, 2])
    3.0
    """
    return _core.distance(_points(a), _points(b))


def arc(start: ArrayLike, end: ArrayLike, centre: ArrayLike, radius: float, last_id: int = 0) -> Chain:
    """Beads along the shorter arc around a centre from the direction of one point to that of another, one
    every 10 degrees, numbered from the identifier after ``last_id``; none where centre and points span no
    plane.

    >>> len(arc([1, 0, 0], [0, 1, 0], [0, 0, 0], 10))
    10
    """
    return Chain(*_core.arc(_points(start), _points(end), _points(centre), radius, last_id))


def max_id(chain: Any) -> int:
    """The largest identifier of a chain or of several, at least -1.

    >>> max_id([[0, 0, 0], [1, 1, 1]])
    2
    """
    return _core.max_id(structure_of(chain))


def is_empty(chains: Any) -> bool:
    """Whether there is no chain, or one without beads: what cannot be closed.

    >>> is_empty([])
    True
    """
    return _core.is_empty([] if isinstance(chains, (list, tuple)) and not chains else structure_of(chains))


def compare_eq(a: float, b: float) -> bool:
    """Whether two numbers are less than 1e-5 apart.

    >>> compare_eq(1.0, 1.000001)
    True
    """
    return _core.compare_eq(a, b)


def compare_gt(a: float, b: float) -> bool:
    """Whether a is at least b + 1e-5.

    >>> compare_gt(1.0, 1.0)
    False
    """
    return _core.compare_gt(a, b)


def compare_geq(a: float, b: float) -> bool:
    """Whether a is greater than b - 1e-5.

    >>> compare_geq(1.0, 1.0)
    True
    """
    return _core.compare_geq(a, b)


def _points(given: ArrayLike) -> Coordinates:
    points = np.asarray(given)
    if points.dtype.kind not in "iuf":
        raise ValueError(f"points must be real numbers, not {points.dtype}")
    return points.astype(np.float64, copy=False)


def _planar(given: ArrayLike) -> tuple[float, float]:
    point = _points(given)
    if point.shape not in ((2,), (3,)):
        raise ValueError(f"a planar point must have the shape (2,), not {point.shape}")
    if not np.isfinite(point).all():
        raise ValueError(f"coordinates must be finite, not {tuple(point.tolist())}")
    return float(point[0]), float(point[1])
