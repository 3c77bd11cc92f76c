"""Chains closed in many ways."""

from __future__ import annotations

import dataclasses
import itertools
from typing import TYPE_CHECKING, Any, Iterable, Iterator, overload

import numpy as np
from numpy.typing import NDArray

from . import _core
from .chain import Chain, ChainLike, as_chain, is_structure
from .progress import Progress, teller
from .results import data_frame, extends, html_table, percent, svg_image

if TYPE_CHECKING:
    import pandas
    from matplotlib.figure import Figure

_frames_a_thread = 64


@extends(_core.Core)
class Core(_core.Core):
    def __repr__(self) -> str:
        return f"<Core of {len(self.labels)} beads: {' '.join(self.labels)}>"


@extends(_core.Component)
class Component(_core.Component):
    def __repr__(self) -> str:
        return f"<Component {self.chain!r}: {_knots_text(self.knots)}>"

    def to_dict(self) -> dict[str, Any]:
        """Plain values, as for JSON."""
        core = self.smallest
        return {
            "chain": self.chain.name,
            "beads": len(self.chain),
            "left": self.left,
            "bare": self.bare,
            "knots": self.knots,
            "proven": self.proven,
            "smallest": core and {"closure": core.closure, "labels": core.labels, "kept": core.kept.tolist()},
        }


@extends(_core.Specimen)
class Specimen(_core.Specimen):
    def __repr__(self) -> str:
        beads = [f"{len(closed)} beads to {len(kept)}" for closed, kept in zip(self.closed, self.kept)]
        return f"<Specimen of closure {self.closure}: {', '.join(beads)}>"


@extends(_core.Survey)
class Survey(_core.Survey):
    def __repr__(self) -> str:
        chains = "; ".join(f"{c.chain!r}: {_knots_text(c.knots)}" for c in self.components)
        failed = f", {self.failed} failed" if self.failed else ""
        how = f"{self.closures} closures by {self.method}{failed}"
        return f"<Survey of {how}. {chains}; {self.bare} fully reduced>"

    def to_dict(self) -> dict[str, Any]:
        """Plain values, as for JSON."""
        keys = "method", "closures", "scale", "seed", "counted", "failed", "bare", "left", "links"
        pairs = [
            {"chains": list(pair), "links": links, "linking": self.linking_numbers[pair]}
            for pair, links in self.pair_links.items()
        ]
        chains = [c.to_dict() for c in self.components]
        return {key: getattr(self, key) for key in keys} | {"pairs": pairs, "chains": chains}

    def to_dataframe(self) -> pandas.DataFrame:
        """A row for each closure and chain: closure, chain, beads left, knot. Needs pandas."""
        closures, left, knots, names = self.table
        chains = [c.chain.name for c in self.components]
        columns: dict[str, Any] = {
            "closure": np.repeat(closures, len(chains)),
            "chain": chains * len(closures),
            "left": left.ravel(),
        }
        if names:
            columns["knot"] = [names[number] for number in knots.ravel().tolist()]
        return data_frame(columns)

    def plot(self) -> Figure:
        """The typical closure before and after its reduction, as a figure of matplotlib, which is needed.
        Raises ValueError where every closure failed."""
        from .pictures import specimen_figure

        return specimen_figure(self)

    def _repr_svg_(self) -> str | None:
        return self.to_svg() if self.typical else None

    def _repr_html_(self) -> str:
        rows = [
            (c.chain.name, knot, closures, percent(closures, self.counted))
            for c in self.components
            for knot, closures in c.knots.items()
        ]
        caption = f"{self.closures} closures by {self.method}"
        table = html_table(("chain", "knot", "closures", "share"), rows, caption)
        return table + svg_image(self._repr_svg_())


@dataclasses.dataclass(frozen=True, repr=False)
class Trajectory:
    """The surveys of the frames of one chain, in order; it can be indexed and iterated like a list."""

    surveys: list[Survey]

    @property
    def knots(self) -> list[str | None]:
        """The most frequent knot of each frame."""
        return [survey.knot for survey in self.surveys]

    @property
    def shares(self) -> NDArray[np.float64]:
        """Its share in each frame."""
        return np.array([survey.share for survey in self.surveys])

    def __len__(self) -> int:
        return len(self.surveys)

    def __getitem__(self, frame: int) -> Survey:
        return self.surveys[frame]

    def __iter__(self) -> Iterator[Survey]:
        return iter(self.surveys)

    def __repr__(self) -> str:
        runs = [f"{knot} for {len(list(run))}" for knot, run in itertools.groupby(self.knots)]
        shown = runs if len(runs) <= 8 else [*runs[:7], f"and {len(runs) - 7} changes more"]
        return f"<Trajectory of {len(self)} frames: {', '.join(shown)}>"

    def to_dict(self) -> dict[str, Any]:
        """Plain values, as for JSON."""
        return {"frames": [survey.to_dict() for survey in self.surveys]}

    def to_dataframe(self) -> pandas.DataFrame:
        """A row for each frame: frame, knot, share, share of closures that are a knot. Needs pandas."""
        return data_frame(
            {
                "frame": range(len(self)),
                "knot": self.knots,
                "share": self.shares,
                "knotted": [survey.knotted for survey in self.surveys],
            }
        )

    def plot(self) -> Figure:
        """The share of every knot over the frames. Needs matplotlib."""
        from .pictures import trajectory_figure

        return trajectory_figure(self.surveys)

    def _repr_html_(self) -> str:
        rows = [(i, s.knot, f"{100 * s.share:.1f} %" if s.knot else "-") for i, s in enumerate(self)]
        return html_table(("frame", "knot", "share"), rows[:100], f"{len(self)} frames")


def _knots_text(knots: dict[str, int]) -> str:
    shown = [f"{knot} in {closures}" for knot, closures in itertools.islice(knots.items(), 3)]
    more = [f"{len(knots) - 3} more"] if len(knots) > 3 else []
    return ", ".join(shown + more) or "not named"


def _frame(given: ChainLike) -> Chain:
    """A chain with coordinates of its own: readers of simulations fill one array with frame after frame."""
    chain = as_chain(given)
    return chain if chain is given else Chain(np.array(chain.xyz), chain._ids, labels=chain._labels, name=chain.name)


def _together(given: Any, together: bool | None) -> bool:
    if not is_structure(given):
        return False
    shapes = {np.shape(chain) if not isinstance(chain, Chain) else None for chain in given}
    if together is None and len(given) > 1 and len(shapes) == 1 and None not in shapes:
        raise ValueError(
            f"{len(given)} arrays of {len(given[0])} beads each may be a structure or frames: for a structure say "
            "together=True; give frames as an (m, n, 3) array or by an iterator"
        )
    if together is False:
        raise ValueError("a list of chains is a structure, which is surveyed together; survey each by itself")
    return True


def _is_trajectory(given: Any) -> bool:
    return (isinstance(given, np.ndarray) and given.ndim == 3) or hasattr(given, "__next__")


def _survey_frames(frames: Iterable[Any], plan: _core.Plan, progress: Progress) -> Trajectory:
    tell = teller(progress)
    total = len(frames) * plan.closures if isinstance(frames, np.ndarray) else 0
    results: list[Survey] = []

    def tell_of_all(done: int, planned: int) -> None:
        before = len(results) * plan.closures
        if tell:
            tell(before + done, max(total, before + planned))

    rest = iter(frames)
    while chunk := [_frame(frame) for frame in itertools.islice(rest, _frames_a_thread * plan.threads)]:
        results += _core.survey_frames(chunk, plan, tell_of_all if tell else None)
    return Trajectory(results)


@overload
def survey(  # type: ignore[misc]  # an iterator is anything else, too
    chain: Iterator[ChainLike], *, closures: int | None = ..., method: str | None = ...,
    scale: float | None = ..., seed: int = ..., threads: int | None = ..., names: bool = ...,
    progress: Progress = ..., together: bool | None = ...,
) -> Trajectory: ...
@overload
def survey(
    chain: NDArray[Any] | ChainLike, *, closures: int | None = ..., method: str | None = ...,
    scale: float | None = ..., seed: int = ..., threads: int | None = ..., names: bool = ...,
    progress: Progress = ..., together: bool | None = ...,
) -> Survey: ...
def survey(
    chain: Any, *, closures: int | None = None, method: str | None = None, scale: float | None = None,
    seed: int = 0, threads: int | None = None, names: bool = True, progress: Progress = None,
    together: bool | None = None,
) -> Any:
    """Closes a chain in many ways, reduces every loop, names its knot and counts the results.

    ``chain`` is a chain; a list or tuple of chains, which are closed and reduced together; or the frames of a
    trajectory, an (m, n, 3) array or an iterator of chains, for which a :class:`Trajectory` comes back. An
    iterator may fill the same array again for each frame. A list of bare arrays of one size could be either:
    it needs ``together=True`` to be taken for a structure.

    ``method`` is one of those of :func:`close`, with its ``scale``, or "ring", which bonds the last bead to
    the first. Chains that end where they begin are rings whatever the method. ``closures`` defaults to 400,
    or to 1 if the method has only one. Random methods draw with ``seed``, 0 to 2^64 - 1. ``threads``, 1 to
    1024, are by default as many as there are processors; the result is the same for any number. Without
    ``names`` no knot is named, which is faster. ``progress`` is called with the closures done and planned;
    True draws a bar on stderr.

    Raises ValueError for other values, a chain without beads and coordinates that are not finite. Ctrl-C
    stops it within a tenth of a second.

    >>> import loopwise as lw
    >>> result = lw.survey(lw.sample("trefoil"), closures=100)
    >>> result.knot, result.share > 0.5
    ('-3_1', True)
    >>> lw.survey(iter([lw.sample("trefoil"), lw.sample("unknot")]), closures=20).knots
    ['-3_1', '0_1']
    """
    several = _together(chain, together)
    plan = _core.Plan(method, closures, scale, seed, threads, names, several)
    if _is_trajectory(chain):
        return _survey_frames(chain, plan, progress)
    chains = [as_chain(c) for c in (chain if several else [chain])]
    return _core.survey(chains, plan, teller(progress))
