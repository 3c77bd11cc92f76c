"""Names of closed polygons."""

from __future__ import annotations

import html
from typing import Any

from . import _core
from ._core import KnotType
from .chain import structure_of
from .results import extends

__all__ = ["Knot", "KnotType", "knot", "linking_numbers"]


@extends(_core.Knot)
class Knot(_core.Knot):
    def __repr__(self) -> str:
        proof = "proven" if self.proven else "not proven"
        return f"<Knot {self.text} ({self.crossings} crossings left, {proof})>"

    def to_dict(self) -> dict[str, Any]:
        """Plain values, as for JSON."""
        keys = "status", "text", "names", "proven", "why_not_proven", "crossings", "jones", "alexander"
        return {key: getattr(self, key) for key in keys} | self.invariants

    def _repr_html_(self) -> str:
        invariants = [f"{name} {value}" for name, value in self.invariant_texts.items()]
        return f"<b>{html.escape(self.text)}</b>" + "".join(f", {html.escape(text)}" for text in invariants)


def knot(polygon: Any) -> Knot:
    """Names the knot of a closed polygon, a segment joining its last bead to its first; a copy of the first
    bead at the end is left out. Several polygons in a list or tuple are named as a link, such as "2^2_1" or
    "6^3_2". An open chain has to be closed first, see :func:`close` and :func:`survey`.

    Fewer than three beads, two beads at one place and polygons that meet themselves get the status "bad
    polygon". Raises ValueError for coordinates that are not finite. Ctrl-C is obeyed at once; the work then
    goes on in the background until it is done.

    >>> import loopwise as lw
    >>> found = lw.knot(lw.close(lw.sample("figure_eight"), direction=0))
    >>> found
    <Knot 4_1 (4 crossings left, proven)>
    >>> found.type == lw.knot(lw.close(lw.sample("figure_eight"), direction=1)).type
    True
    """
    return _core.knot(structure_of(polygon))


def linking_numbers(polygons: Any) -> dict[tuple[int, int], int]:
    """The linking number of each two of several closed polygons, by their positions in the list: how often
    they wind around each other. It is 0 for some linked pairs, which :func:`knot` tells. Empty for a single
    polygon.

    Raises ValueError when polygons meet, have fewer than three beads or coordinates that are not finite.

    >>> square = [[0, 0, 0], [4, 0, 0], [4, 4, 0.5], [0, 4, 0]]
    >>> through = [[2, 2, -3], [2, 2, 3], [9, 9, 1]]
    >>> linking_numbers([square, through])
    {(0, 1): 1}
    """
    return _core.linking_numbers(structure_of(polygons))
