"""Chains closed in many ways."""

from __future__ import annotations

import dataclasses
import itertools
import os
from typing import TYPE_CHECKING, Any, Iterable, Iterator, overload

import numpy as np
from numpy.typing import NDArray

from . import _core
from .chain import Chain, ChainLike, Coordinates, Positions, as_chain, is_structure
from .knots import KnotType
from .operations import method_named, methods, scale_for, within
from .progress import Progress, teller
from .results import data_frame, html_table, percent, svg_image

if TYPE_CHECKING:
    import pandas
    from matplotlib.figure import Figure

_most_threads = 1024
_frames_a_thread = 64


@dataclasses.dataclass(frozen=True, repr=False)
class Core:
    """The smallest loop that was left of a chain, apart from bare ones."""

    closure: int
    """The number of its closure."""
    kept: Positions
    """Positions in the closed chain; those from the chain's length on are beads that close it."""
    xyz: Coordinates
    """Where they are."""
    labels: list[str]
    """What they are called; +1, +2, ... for those that close."""

    def __repr__(self) -> str:
        return f"<Core of {len(self.kept)} beads: {' '.join(self.labels)}>"


@dataclasses.dataclass(frozen=True, repr=False)
class Component:
    """What the closures made of one chain."""

    chain: Chain
    left: dict[int, int]
    """Beads left -> closures."""
    bare: int
    """Closures that left three beads: nothing held the loop."""
    types: dict[KnotType, int]
    """Knots as values -> closures, the most frequent first."""
    smallest: Core | None

    @property
    def knots(self) -> dict[str, int]:
        """Knots in words -> closures, the most frequent first."""
        return {str(knot): closures for knot, closures in self.types.items()}

    @property
    def knot(self) -> str | None:
        """The most frequent knot; None when no closure was named."""
        return next(iter(self.knots), None)

    @property
    def proven(self) -> bool:
        """Whether the most frequent knot is proven."""
        return any(knot.proven for knot in itertools.islice(self.types, 1))

    def __repr__(self) -> str:
        return f"<Component {self.chain!r}: {_knots_text(self.knots)}>"

    def to_dict(self) -> dict[str, Any]:
        """Plain values, as for JSON."""
        core = self.smallest
        return {
            "chain": self.chain.name,
            "beads": len(self.chain),
            "left": dict(self.left),
            "bare": self.bare,
            "knots": self.knots,
            "proven": self.proven,
            "smallest": core and {"closure": core.closure, "labels": list(core.labels), "kept": core.kept.tolist()},
        }


@dataclasses.dataclass(frozen=True, repr=False)
class Specimen:
    """One closure, before and after the reduction."""

    closure: int
    closed: list[Coordinates]
    """Of each component, the chain and the beads that close it."""
    kept: list[Positions]
    """Of each component, the positions in it that are left."""
    knots: list[str]

    def __repr__(self) -> str:
        beads = ", ".join(f"{len(closed)} beads to {len(kept)}" for closed, kept in zip(self.closed, self.kept))
        return f"<Specimen of closure {self.closure}: {beads}>"


@dataclasses.dataclass(frozen=True, repr=False)
class Survey:
    """What :func:`survey` found. Of a single chain its knots, core and so on are at hand here; those of several are
    with their ``components``."""

    components: list[Component]
    method: str
    closures: int
    scale: float | None
    seed: int | None
    counted: int
    """Closures that could be made."""
    failed: int
    """Closures that could not."""
    left: dict[int, int]
    """Beads left, of all components together -> closures."""
    bare: int
    """Closures of which no component kept more than three beads."""
    link_types: dict[KnotType, int]
    """Links of two chains as values -> closures, the most frequent first; empty for one chain or more than two."""
    linking_numbers: dict[tuple[int, int], dict[int, int]]
    """Of two of several chains, by their positions: linking number -> closures."""
    typical: Specimen | None
    """The closure to look at: where most are bare the first that is, otherwise one with the fewest beads left."""
    table: tuple[Positions, NDArray[np.int64], NDArray[np.int64], list[str]]
    """Of the counted closures: their numbers; for each component, the beads left; the knots' numbers in the list."""

    def _only(self) -> Component:
        if len(self.components) > 1:
            raise ValueError(f"the survey is of {len(self.components)} chains: see its components")
        return self.components[0]

    @property
    def chain(self) -> Chain:
        """The chain."""
        return self._only().chain

    @property
    def knots(self) -> dict[str, int]:
        """Knots -> closures, the most frequent first."""
        return self._only().knots

    @property
    def knot(self) -> str | None:
        """The most frequent knot; None when no closure was named."""
        return self._only().knot

    @property
    def proven(self) -> bool:
        """Whether the most frequent knot is proven."""
        return self._only().proven

    @property
    def links(self) -> dict[str, int]:
        """Links of two chains in words -> closures, the most frequent first."""
        return {str(link): closures for link, closures in self.link_types.items()}

    @property
    def smallest(self) -> Core | None:
        """The smallest loop that was left, apart from bare ones."""
        return self._only().smallest

    @property
    def share(self) -> float:
        """The share of the most frequent knot among the counted closures."""
        return self.knots[self.knot] / self.counted if self.knot else 0.0

    @property
    def knotted(self) -> float:
        """The share of the counted closures that are a knot; those that got no name do not count as one."""
        knotted = sum(closures for knot, closures in self._only().types.items() if knot.is_knot)
        return knotted / self.counted if self.counted else 0.0

    def __repr__(self) -> str:
        chains = "; ".join(f"{c.chain!r}: {_knots_text(c.knots)}" for c in self.components)
        failed = f", {self.failed} failed" if self.failed else ""
        return f"<Survey of {self.closures} closures by {self.method}{failed}. {chains}; {self.bare} come apart>"

    def to_dict(self) -> dict[str, Any]:
        """Plain values, as for JSON."""
        return {
            "method": self.method,
            "closures": self.closures,
            "scale": self.scale,
            "seed": self.seed,
            "counted": self.counted,
            "failed": self.failed,
            "bare": self.bare,
            "left": dict(self.left),
            "links": self.links,
            "chains": [c.to_dict() for c in self.components],
        }

    def to_dataframe(self) -> "pandas.DataFrame":
        """A row for each closure and chain: closure, chain, beads left, knot. Needs pandas."""
        closures, left, knots, names = self.table
        width = len(self.components)
        columns: dict[str, Any] = {
            "closure": np.repeat(closures, width),
            "chain": [c.chain.name for c in self.components] * len(closures),
            "left": left.ravel(),
        }
        if names:
            columns["knot"] = [names[number] for number in knots.ravel().tolist()]
        return data_frame(columns)

    def plot(self) -> "Figure":
        """The typical closure before and after its reduction, in three dimensions. Needs matplotlib."""
        from .pictures import specimen_figure

        return specimen_figure(self)

    def to_svg(self) -> str:
        """The same as the text of an SVG picture, for which nothing is needed.

        Raises ValueError when every closure failed."""
        if self.typical is None:
            raise ValueError("every closure failed: there is nothing to draw")
        components = [
            (c.chain.name, c.chain.labels, c.types, closed, kept)
            for c, closed, kept in zip(self.components, self.typical.closed, self.typical.kept)
        ]
        whole = {"left": self.left, "bare": self.bare, "links": self.link_types, "closure": self.typical.closure}
        return _core.survey_picture(components, self.method.replace("_", "-"), whole)

    def _repr_svg_(self) -> str | None:
        return None if self.typical is None else self.to_svg()

    def _repr_html_(self) -> str:
        rows = [
            (c.chain.name, knot, closures, percent(closures, self.counted))
            for c in self.components
            for knot, closures in c.knots.items()
        ]
        table = html_table(("chain", "knot", "closures", "share"), rows, f"{self.closures} closures by {self.method}")
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
        stretches = [f"{knot} for {len(list(run))}" for knot, run in itertools.groupby(self.knots)]
        shown = stretches if len(stretches) <= 8 else [*stretches[:7], f"and {len(stretches) - 7} changes more"]
        return f"<Trajectory of {len(self)} frames: {', '.join(shown)}>"

    def to_dict(self) -> dict[str, Any]:
        """Plain values, as for JSON."""
        return {"frames": [survey.to_dict() for survey in self.surveys]}

    def to_dataframe(self) -> "pandas.DataFrame":
        """A row for each frame: frame, knot, share, share of closures that are a knot. Needs pandas."""
        return data_frame(
            {
                "frame": range(len(self)),
                "knot": self.knots,
                "share": self.shares,
                "knotted": [survey.knotted for survey in self.surveys],
            }
        )

    def plot(self) -> "Figure":
        """The share of every knot over the frames. Needs matplotlib."""
        from .pictures import trajectory_figure

        return trajectory_figure(self)

    def _repr_html_(self) -> str:
        rows = [(i, s.knot, percent(s.knots[s.knot], s.counted) if s.knot else "-") for i, s in enumerate(self)]
        return html_table(("frame", "knot", "share"), rows[:100], f"{len(self)} frames")


def _knots_text(knots: dict[str, int]) -> str:
    shown = [f"{knot} in {closures}" for knot, closures in itertools.islice(knots.items(), 3)]
    more = [f"{len(knots) - 3} more"] if len(knots) > 3 else []
    return ", ".join(shown + more) or "not named"


def _component(chain: Chain, found: dict[str, Any]) -> Component:
    core = None
    if found["smallest"] is not None:
        closure, kept, xyz = found["smallest"]
        own = len(chain)
        labels = [chain._label(i) if i < own else f"+{i - own + 1}" for i in kept.tolist()]
        core = Core(closure, kept, xyz, labels)
    return Component(chain, found["left"], found["bare"], found["knots"], core)


def _survey(chains: list[Chain], plan: dict[str, Any], found: dict[str, Any]) -> Survey:
    typical = None
    if found["typical"] is not None:
        closure, loops, knots = found["typical"]
        typical = Specimen(closure, [closed for closed, _ in loops], [kept for _, kept in loops], knots)
    method = found["method"].replace("-", "_")
    return Survey(
        components=[_component(chain, one) for chain, one in zip(chains, found["components"])],
        method=method,
        closures=found["closures"],
        scale=plan["scale"] if methods[method].default_scale else None,
        seed=plan["seed"] if methods[method].random else None,
        counted=found["counted"],
        failed=found["failed"],
        left=found["left"],
        bare=found["bare"],
        link_types=found["links"],
        linking_numbers=found["linking_numbers"],
        typical=typical,
        table=found["table"],
    )


def threads_for(threads: int | None) -> int:
    """As many as there are processors for this process, unless it is said."""
    if threads is None:
        return min(len(os.sched_getaffinity(0)), _most_threads)
    return within("threads", threads, 1, _most_threads)


def _plan(
    together: bool,
    closures: int | None,
    method: str | None,
    scale: float | None,
    seed: int,
    threads: int | None,
    names: bool,
) -> dict[str, Any]:
    name = method_named(method, together, rings=True)
    row = methods[name]
    return {
        "method": row.name,
        "closures": within("closures", row.default_closures if closures is None else closures, 1, row.most_closures),
        "scale": scale_for(name, scale),
        "seed": within("seed", seed, 0, 2**64 - 1),
        "threads": threads_for(threads),
        "names": bool(names),
        "together": together,
    }


def _is_trajectory(given: Any) -> bool:
    return (isinstance(given, np.ndarray) and given.ndim == 3) or hasattr(given, "__next__")


def _survey_frames(frames: Iterable[Any], plan: dict[str, Any], progress: Progress) -> Trajectory:
    tell = teller(progress)
    total = len(frames) * plan["closures"] if isinstance(frames, np.ndarray) else 0
    results: list[Survey] = []

    def tell_of_all(done: int, planned: int) -> None:
        before = len(results) * plan["closures"]
        if tell:
            tell(before + done, max(total, before + planned))

    rest = iter(frames)
    while chunk := [as_chain(frame) for frame in itertools.islice(rest, _frames_a_thread * plan["threads"])]:
        components = [[(c._xyz, c.ids)] for c in chunk]
        found = _core.survey_frames(components, plan, tell_of_all if tell else None)
        results += [_survey([chain], plan, one) for chain, one in zip(chunk, found)]
    return Trajectory(results)


@overload
def survey(  # type: ignore[misc]  # an iterator is anything else, too
    chain: Iterator[ChainLike],
    *,
    closures: int | None = ...,
    method: str | None = ...,
    scale: float | None = ...,
    seed: int = ...,
    threads: int | None = ...,
    names: bool = ...,
    progress: Progress = ...,
) -> Trajectory: ...
@overload
def survey(
    chain: NDArray[Any] | ChainLike,
    *,
    closures: int | None = ...,
    method: str | None = ...,
    scale: float | None = ...,
    seed: int = ...,
    threads: int | None = ...,
    names: bool = ...,
    progress: Progress = ...,
) -> Survey: ...
def survey(
    chain: Any,
    *,
    closures: int | None = None,
    method: str | None = None,
    scale: float | None = None,
    seed: int = 0,
    threads: int | None = None,
    names: bool = True,
    progress: Progress = None,
) -> Any:
    """Closes a chain in many ways, reduces every loop, names its knot and counts what came of it.

    ``chain`` is a chain; a list or tuple of chains, which are closed and reduced together; or the frames of a
    trajectory, an (m, n, 3) array or an iterator of chains, for which a :class:`Trajectory` comes back.

    ``method`` is "directions", the first ``closures`` (400) of 400 directions in turn, or one of :func:`close`, drawn
    ``closures`` (400) times with ``seed``; "outside" is one closure, and
    "ring" reduces the chain as it is, its last bead joined to its first: so are chains that end where they begin,
    whatever the method. Several chains default to "direction". ``threads``
    are by default as many as there are processors; the result is the same for any number. Without ``names`` no knot
    is named, which is faster. ``progress`` is called with the closures done and planned; True draws a bar on stderr.

    Raises ValueError for other values and coordinates that are not finite. Ctrl-C stops it within a tenth of a second.

    >>> import loopwise as lw
    >>> result = lw.survey(lw.sample("trefoil"), closures=100)
    >>> result.knot, result.share > 0.5
    ('-3_1', True)
    >>> lw.survey(iter([lw.sample("trefoil"), lw.sample("unknot")]), closures=20).knots
    ['-3_1', '0_1']
    """
    together = is_structure(chain)
    plan = _plan(together, closures, method, scale, seed, threads, names)
    if _is_trajectory(chain):
        return _survey_frames(chain, plan, progress)
    chains = [as_chain(c) for c in chain] if together else [as_chain(chain)]
    found = _core.survey([(c._xyz, c.ids) for c in chains], plan, teller(progress))
    return _survey(chains, plan, found)
