"""Where in a chain its knot is."""

from __future__ import annotations

import dataclasses
from typing import TYPE_CHECKING, Any

import numpy as np
from numpy.typing import NDArray

from . import _core
from .chain import Chain, ChainLike, as_chain
from .knots import KnotType
from .operations import within
from .progress import Progress, teller
from .results import data_frame, html_table, svg_image
from .survey import threads_for

if TYPE_CHECKING:
    import pandas
    from matplotlib.figure import Figure


@dataclasses.dataclass(frozen=True, repr=False)
class _Named:
    """What has a knot."""

    type: KnotType
    """The knot as a value."""

    @property
    def knot(self) -> str:
        """The knot in words."""
        return str(self.type)

    @property
    def proven(self) -> bool:
        """Whether the knot is proven."""
        return self.type.proven


@dataclasses.dataclass(frozen=True)
class Place(_Named):
    """A place where a knot is. A subchain is the positions of its first and last bead, both included."""

    share: float
    """Share of the closures of the whole chain."""
    greatest_share: float
    """Greatest share among the subchains that hold the core and are this knot most often."""
    greatest: tuple[int, int]
    """The shortest subchain with that share."""
    core: tuple[int, int] | None
    """The shortest subchain with a share of at least one half."""
    core_within: int
    """Each end of the core is known to within as many beads; 1 is exact."""
    slipknot: bool
    """Whether the chain, or a subchain around the core, is unknotted or a different knot."""

@dataclasses.dataclass(frozen=True, repr=False)
class Fingerprint(_Named):
    """What :func:`fingerprint` found; its knot is that of the whole chain."""

    chain: Chain
    closures: int
    """Closures of each subchain."""
    step: int
    """Beads between two lines of the grid; 1: every subchain was closed."""
    stretches: int
    """Number of subchains that were closed."""
    share: float
    """Its share of the whole chain's closures."""
    depth: tuple[int, int] | None
    """How many beads can be taken off the front, or off the back, and the knot stays all the way."""
    depth_within: tuple[int, int]
    """Each depth is known to within as many beads; 1 is exact."""
    borders_within: int
    """The borders between knots are known to within as many beads everywhere; 1 is exact."""
    places: list[Place]
    """The chain's own knot first, then by greatest share."""
    types: list[KnotType]
    """The knots as values, by their numbers; the unknot first."""
    numbers: NDArray[np.uint16]
    """(n, n): the number of the most frequent knot of the subchain from row to column; 0 below the diagonal."""
    counts: NDArray[np.uint16]
    """(n, n): the closures that gave it."""
    tested: NDArray[np.bool_]
    """(n, n): whether the subchain was closed or is too short for a knot. The knot of any other is inferred from tested
    subchains around it, which agree, or from the nearest one near a border that was not followed."""

    @property
    def names(self) -> list[str]:
        """The knots in words, by their numbers."""
        return [str(knot) for knot in self.types]

    @property
    def shares(self) -> NDArray[np.float64]:
        """(n, n): the share of the most frequent knot."""
        return self.counts / self.closures

    @property
    def core(self) -> tuple[int, int] | None:
        """The core of the chain's own knot, if it has one."""
        return next((place.core for place in self.places if place.type == self.type), None)

    def _labels(self, subchain: tuple[int, int] | None) -> list[str] | None:
        return None if subchain is None else [self.chain._label(i) for i in subchain]

    def _tails(self, subchain: tuple[int, int] | None) -> list[int] | None:
        return None if subchain is None else [subchain[0], len(self.chain) - 1 - subchain[1]]

    def __repr__(self) -> str:
        places = [
            f"{p.knot}{' (slipknot)' if p.slipknot else ''} in {'-'.join(self._labels(p.core) or ['no core'])}"
            for p in self.places[:4]
        ]
        return f"<Fingerprint of {self.chain!r}: {self.knot} in {100 * self.share:.0f} %; {', '.join(places) or 'no knot'}>"

    def to_dict(self) -> dict[str, Any]:
        """Plain values, as for JSON; cores by the labels of their ends."""
        knots = [
            {
                "knot": p.knot,
                "proven": p.proven,
                "share": p.share,
                "greatest_share": p.greatest_share,
                "core": self._labels(p.core),
                "tails": self._tails(p.core),
                "core_within": None if p.core is None else p.core_within,
                "slipknot": p.slipknot,
            }
            for p in self.places
        ]
        return {
            "chain": self.chain.name,
            "residues": len(self.chain),
            "step": self.step,
            "stretches": self.stretches,
            "knot": self.knot,
            "proven": self.proven,
            "share": self.share,
            "depth": None if self.depth is None else list(self.depth),
            "depth_within": None if self.depth is None else list(self.depth_within),
            "borders_within": self.borders_within,
            "knots": knots,
        }

    def to_dataframe(self) -> "pandas.DataFrame":
        """A row for each subchain that was closed or is too short for a knot: first, last, knot, share. The ends are
        labels. Needs pandas."""
        first, last = np.nonzero(self.tested & (self.counts > 0))
        labels = np.array(self.chain.labels, dtype=object)
        return data_frame(
            {
                "first": labels[first],
                "last": labels[last],
                "knot": np.array(self.names, dtype=object)[self.numbers[first, last]],
                "share": self.shares[first, last],
            }
        )

    def plot(self) -> "Figure":
        """The picture of :meth:`to_svg` as a figure of matplotlib, which is needed."""
        from .pictures import fingerprint_figure

        return fingerprint_figure(self)

    def to_svg(self) -> str:
        """The matrix as the text of an SVG picture: first residues across, last residues upwards, a colour for each
        knot, stronger for a greater share, the cores marked."""
        return str(self._picture()["svg"])

    def _picture(self) -> dict[str, Any]:
        given = {
            "chain": self.chain.name or "chain",
            "labels": self.chain.labels,
            "types": self.types,
            "closures": self.closures,
            "step": self.step,
            "borders_within": self.borders_within,
            "type": self.type,
            "share": self.share,
        }
        places = [(place.type, *place.core, place.slipknot) for place in self.places if place.core]
        return _core.fingerprint_picture(self.numbers, self.counts, given, places)

    def _repr_svg_(self) -> str:
        return self.to_svg()

    def _repr_html_(self) -> str:
        rows = [
            (p.knot, f"{p.share:.2f}", f"{p.greatest_share:.2f}", "-".join(self._labels(p.core) or []), p.slipknot)
            for p in self.places
        ]
        head = ("knot", "share", "greatest share", "core", "slipknot")
        table = html_table(head, rows, f"{self.knot} in {100 * self.share:.0f} % of {self.closures} closures")
        return table + svg_image(self.to_svg())


def fingerprint(
    chain: ChainLike,
    *,
    step: int | None = None,
    closures: int = 100,
    full: bool = False,
    threads: int | None = None,
    most_memory: int = 2**33,
    progress: Progress = None,
) -> Fingerprint:
    """Finds the knot of every subchain of a chain (King, Yeates and Yeates 2007), and from it cores, depth and slipknots.

    Each subchain is closed in ``closures`` directions. By default the subchains are those of a grid with some 40 lines,
    and the borders between knots are followed, cores and depths first, until a limit of work is reached that the
    chain's length sets; the result says to within how many beads the borders are known. With ``step``, the grid has a
    line every ``step`` beads, and every border is followed to the bead. With ``full``, every subchain is closed.
    The matrix may take ``most_memory`` bytes. ``threads`` and ``progress`` are as in :func:`survey`.

    Raises ValueError for values out of range, coordinates that are not finite, a chain without beads and a matrix that
    is too large. Ctrl-C stops it within a tenth of a second.

    >>> import loopwise as lw
    >>> found = lw.fingerprint(lw.sample("trefoil"), closures=20)
    >>> found.knot, found.core is not None
    ('-3_1', True)
    """
    one = as_chain(chain)
    grid_step = 0 if step is None else within("step", step, 1, 2**31)
    plan = {
        "step": 1 if full else grid_step,
        "closures": within("closures", closures, 1, 400),
        "threads": threads_for(threads),
        "most_memory": within("most_memory", most_memory, 0, 2**63),
    }
    found = _core.fingerprint(one._xyz, plan, teller(progress))
    found["places"] = [Place(**place) for place in found["places"]]
    depth = found.pop("depth")
    return Fingerprint(chain=one, depth=None if depth is None else (depth[0], depth[1]), **found)
