"""Where in a chain its knot is."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np
from numpy.typing import NDArray

from . import _core
from .chain import ChainLike, as_chain
from .progress import Progress, teller
from .results import data_frame, extends, html_table, svg_image

if TYPE_CHECKING:
    import pandas
    from matplotlib.figure import Figure


@extends(_core.Place)
class Place(_core.Place):
    def __repr__(self) -> str:
        kind = "" if self.kind == "knot" else f" ({self.kind})"
        core = "without a core" if self.core is None else "with the core {}-{}".format(*self.core)
        return f"<Place of {self.knot}{kind} {core}, greatest share {self.greatest_share:.2f}>"


@extends(_core.Fingerprint)
class Fingerprint(_core.Fingerprint):
    @property
    def shares(self) -> NDArray[np.float64]:
        """(n, n): the share of the most frequent knot, 0 to 1."""
        return self.counts / self.closures

    def _labels(self, subchain: tuple[int, int] | None) -> list[str]:
        return [] if subchain is None else [self.chain._label(i) for i in subchain]

    def __repr__(self) -> str:
        places = [
            f"{p.knot}{'' if p.kind == 'knot' else f' ({p.kind})'} in {'-'.join(self._labels(p.core)) or 'no core'}"
            for p in self.places[:4]
        ]
        share = f"{100 * self.share:.0f} %"
        return f"<Fingerprint of {self.chain!r}: {self.knot} in {share}; {', '.join(places) or 'no knot'}>"

    def _place_dict(self, place: _core.Place) -> dict[str, Any]:
        core = place.core
        return {
            "knot": place.knot,
            "proven": place.proven,
            "share": place.share,
            "greatest_share": place.greatest_share,
            "core": self._labels(core) or None,
            "tails": core and [core[0], len(self.chain) - 1 - core[1]],
            "core_within": core and place.core_within,
            "slipknot": place.slipknot,
            "kind": place.kind,
        }

    def to_dict(self) -> dict[str, Any]:
        """Plain values, as for JSON; cores by the labels of their ends."""
        keys = "step", "stretches", "knot", "proven", "share"
        return {
            "chain": self.chain.name,
            "residues": len(self.chain),
            **{key: getattr(self, key) for key in keys},
            "depth": self.depth and list(self.depth),
            "depth_within": self.depth and list(self.depth_within),
            "borders_within": self.borders_within,
            "knots": [self._place_dict(place) for place in self.places],
            "verdict": self.verdict and self.verdict.to_dict(),
        }

    def to_dataframe(self) -> pandas.DataFrame:
        """A row for each subchain that was closed or is too short for a knot: first, last, knot, share. The
        ends are labels. Needs pandas."""
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

    def plot(self) -> Figure:
        """The picture of :meth:`to_svg` as a figure of matplotlib, which is needed."""
        from .pictures import fingerprint_figure

        return fingerprint_figure(self)

    def _repr_svg_(self) -> str:
        return self.to_svg()

    def _repr_html_(self) -> str:
        rows = [
            (p.knot, f"{p.share:.2f}", f"{p.greatest_share:.2f}", "-".join(self._labels(p.core)), p.kind)
            for p in self.places
        ]
        head = ("knot", "share", "greatest share", "core", "kind")
        table = html_table(head, rows, f"{self.knot} in {100 * self.share:.0f} % of {self.closures} closures")
        return table + svg_image(self.to_svg())


def fingerprint(
    chain: ChainLike, *, step: int | None = None, closures: int = 100, full: bool = False,
    threads: int | None = None, most_memory: int = 2**33, progress: Progress = None,
) -> Fingerprint:
    """Finds the knot of every subchain of a chain (King, Yeates and Yeates 2007), and from it knot cores,
    depth and slipknots.

    Each subchain is closed in ``closures`` directions, 1 to 400. By default the subchains are those of a grid
    with some 40 lines, and the borders between knots are followed, cores and depths first, until a limit of
    work is reached that the chain's length sets; the result says to within how many beads the borders are
    known. With ``step``, the grid has a line every ``step`` beads, and every border is followed to the bead.
    With ``full``, every subchain is closed. The matrix may take ``most_memory`` bytes. ``threads`` and
    ``progress`` are as in :func:`survey`.

    Raises ValueError for values out of range, coordinates that are not finite, a chain without beads and a
    matrix that is too large. Ctrl-C stops it within a tenth of a second.

    >>> import loopwise as lw
    >>> found = lw.fingerprint(lw.sample("trefoil"), closures=20)
    >>> found.knot, found.core is not None
    ('-3_1', True)
    """
    grid_step = 1 if full else step
    return _core.fingerprint(as_chain(chain), grid_step, closures, threads, most_memory, teller(progress))
