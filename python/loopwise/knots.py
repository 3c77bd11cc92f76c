"""Names of closed polygons."""

from __future__ import annotations

import dataclasses
import html
from typing import Any

from . import _core
from ._core import KnotType
from .chain import structure_of

__all__ = ["Knot", "KnotType", "knot", "linking_numbers"]


def polynomial(terms: dict[float, int]) -> str:
    """As "t^-1 - 1 + t", lowest exponent first."""
    text = ""
    for exponent, coefficient in sorted(terms.items()):
        power = "" if exponent == 0 else "t" if exponent == 1 else f"t^{exponent:g}"
        size = abs(coefficient)
        sign = ("-" if coefficient < 0 else "") if not text else (" - " if coefficient < 0 else " + ")
        text += sign + (power if size == 1 and power else f"{size}{power}")
    return text or "0"


@dataclasses.dataclass(frozen=True)
class Knot:
    """What a closed polygon is, as far as its polynomials tell."""

    status: str
    """"named"; "several" names fit; "unknown" to the table; "too complex"; or "bad polygon"."""
    text: str
    """In words, as "+3_1", "9_12 or 4_1 # 5_2", "-5_1 or beyond nine crossings", "not named: repeated beads"."""
    names: list[str]
    """Rolfsen's numbers with a hand: "0_1", "+3_1", "4_1", "+3_1 # -3_1"."""
    proven: bool
    """Whether every knot that it can be is among the names."""
    crossings: int
    """Of the simplified diagram."""
    invariants: dict[str, dict[float, int] | int]
    """Those that were computed, by their keys; of polynomials the exponents and their coefficients."""

    @property
    def jones(self) -> dict[float, int]:
        """The Jones polynomial; empty when not computed."""
        return self.invariants.get("jones", {})  # type: ignore[return-value]

    @property
    def alexander(self) -> dict[float, int]:
        """The Alexander polynomial likewise."""
        return self.invariants.get("alexander", {})  # type: ignore[return-value]

    @property
    def name(self) -> str | None:
        """The one name, if there is one."""
        return self.names[0] if len(self.names) == 1 else None

    def __str__(self) -> str:
        return self.text

    def __repr__(self) -> str:
        proof = "proven" if self.proven else "not proven"
        return f"<Knot {self.text} ({self.crossings} crossings left, {proof})>"

    def to_dict(self) -> dict[str, Any]:
        """Plain values, as for JSON."""
        values = dataclasses.asdict(self)
        invariants = values.pop("invariants")
        return {**values, "jones": {}, "alexander": {}, **invariants}

    def _repr_html_(self) -> str:
        jones = f", Jones polynomial {html.escape(polynomial(self.jones))}" if self.jones else ""
        return f"<b>{html.escape(self.text)}</b>{jones}"


def knot(polygon: Any) -> Knot:
    """Names the knot of a closed polygon, a segment joining its last bead to its first; a copy of the first bead at
    the end is left out. A list or tuple of two polygons is named as a link, as "2^2_1". An open chain has to be closed
    first, see :func:`close` and :func:`survey`.

    Fewer than three beads, two beads at one place and polygons that meet themselves get the status "bad polygon".
    Raises ValueError for coordinates that are not finite, and for more than two polygons. Ctrl-C is obeyed, even though
    the work then goes on unseen until it is done.

    >>> import loopwise as lw
    >>> found = lw.knot(lw.close(lw.sample("figure_eight"), direction=0))
    >>> found
    <Knot 4_1 (4 crossings left, proven)>
    """
    polygons = structure_of(polygon)
    if len(polygons) > 2:
        raise ValueError(f"a knot or a link of two polygons is named, not {len(polygons)}: see linking_numbers")
    return Knot(**_core.knot(polygons))


def linking_numbers(polygons: Any) -> dict[tuple[int, int], int]:
    """How often each two of several closed polygons wind around each other, by their positions in the list.

    Raises ValueError when polygons meet, have fewer than three beads or coordinates that are not finite.

    >>> square = [[0, 0, 0], [4, 0, 0], [4, 4, 0.5], [0, 4, 0]]
    >>> through = [[2, 2, -3], [2, 2, 3], [9, 9, 1]]
    >>> linking_numbers([square, through])
    {(0, 1): 1}
    """
    return _core.linking_numbers(structure_of(polygons))
