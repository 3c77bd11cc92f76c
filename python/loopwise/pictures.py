"""Pictures, for which matplotlib is needed."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np

if TYPE_CHECKING:
    from matplotlib.figure import Figure

    from .survey import Survey, Trajectory

_colours = "viridis"
_closing = "0.6"


def _figure(**options: Any) -> "Figure":
    """A figure that notebooks show once and no window keeps alive."""
    from matplotlib.backends.backend_agg import FigureCanvasAgg
    from matplotlib.figure import Figure

    figure = Figure(layout="constrained", **options)
    FigureCanvasAgg(figure)
    return figure


def _view_axes(xyz: Any) -> Any:
    """The three directions in which a loop is widest, second and least: seen along the last, it lies open."""
    centred = xyz - xyz.mean(axis=0)
    return np.linalg.svd(centred, full_matrices=False)[2]


def _draw_loop(axes: Any, loop: Any, positions: Any, own: int) -> None:
    """Segments coloured by where they are along the chain, those that close it in grey; nearer ones are drawn later."""
    import matplotlib

    colours = matplotlib.colormaps[_colours]
    ring = np.append(np.arange(len(loop)), 0)
    pairs = list(zip(ring[:-1], ring[1:]))
    for a, b in sorted(pairs, key=lambda pair: float(loop[list(pair), 2].sum())):
        chain = max(positions[a], positions[b]) < own and b != 0
        colour = colours(positions[a] / max(own - 1, 1)) if chain else _closing
        for width, under in ((6, "white"), (2.2 if chain else 1.2, colour)):
            axes.plot(*loop[[a, b], :2].T, color=under, linewidth=width, solid_capstyle="round")
    axes.set_aspect("equal", adjustable="datalim")
    axes.set_axis_off()


def specimen_figure(survey: "Survey") -> "Figure":
    """The typical closure before and after its reduction."""
    if survey.typical is None:
        raise ValueError("every closure failed: there is nothing to draw")
    figure = _figure(figsize=(9, 4.5 * len(survey.components)))
    panels = figure.subplots(len(survey.components), 2, squeeze=False)
    for i, (before, after) in enumerate(panels):
        component, closed, kept = survey.components[i], survey.typical.closed[i], survey.typical.kept[i]
        own = len(component.chain)
        turned = (closed - closed[:own].mean(axis=0)) @ _view_axes(closed[:own]).T
        _draw_loop(before, turned, np.arange(len(closed)), own)
        _draw_loop(after, turned[kept], kept, own)
        near = turned[:own, :2]
        before.set(xlim=(near[:, 0].min(), near[:, 0].max()), ylim=(near[:, 1].min(), near[:, 1].max()))
        name = component.chain.name or "chain"
        before.set_title(f"{name}: {own} beads, closure {survey.typical.closure}")
        knot = f", {survey.typical.knots[i]}" if survey.typical.knots else ""
        after.set_title(f"reduced to {len(kept)} beads{knot}")
        for position, place in zip(kept.tolist(), turned[kept]):
            if position < own and len(kept) <= 30:
                after.annotate(component.chain.labels[position], place[:2], fontsize=8, ha="center", va="center")
    return figure


def trajectory_figure(trajectory: "Trajectory") -> "Figure":
    """The share of every knot over the frames, one upon another."""
    figure = _figure(figsize=(9, 3.5))
    axes = figure.subplots()
    knots = list(dict.fromkeys(knot for survey in trajectory for knot in survey.knots))
    shares = [[survey.knots.get(knot, 0) / max(survey.counted, 1) for survey in trajectory] for knot in knots]
    axes.stackplot(range(len(trajectory)), shares, labels=knots, step="mid")
    axes.set(xlabel="frame", ylabel="share of closures", xlim=(0, max(len(trajectory) - 1, 1)), ylim=(0, 1))
    axes.legend(loc="center left", bbox_to_anchor=(1, 0.5), frameon=False)
    return figure
