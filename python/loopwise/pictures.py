"""Pictures, for which matplotlib is needed."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Sequence

import numpy as np

from . import _core

if TYPE_CHECKING:
    from matplotlib.figure import Figure

_colours = "viridis"
_closing = "0.6"
_longest_knot = 30
_labelled_cores = 6


def _figure(**options: Any) -> Figure:
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
    """Segments coloured by where they are along the chain, those that close it in grey. They are drawn in
    pieces from the farthest to the nearest, so that what crosses above interrupts what is below."""
    import matplotlib
    from matplotlib.collections import LineCollection

    colours = matplotlib.colormaps[_colours]
    piece_length = np.ptp(loop[:, :2], axis=0).max() / 60
    pieces = []
    for a, b in zip(range(len(loop)), [*range(1, len(loop)), 0]):
        start, end = loop[a], loop[b]
        chain = max(positions[a], positions[b]) < own and b != 0
        colour = colours(positions[a] / max(own - 1, 1)) if chain else _closing
        count = max(3, int(np.ceil(np.linalg.norm((end - start)[:2]) / piece_length)))
        for k in range(count):
            low, high, low_more, high_more = (
                start + (end - start) * part / count for part in (k, k + 1, k - 0.2, k + 1.2)
            )
            depth = float(low[2] + high[2])
            if 0 < k < count - 1:  # at its ends it would cut its neighbours
                pieces.append((depth, 0, (low[:2], high[:2]), "white", 7.0))
            pieces.append((depth, 1, (low_more[:2], high_more[:2]), colour, 2.4 if chain else 1.2))
    pieces.sort(key=lambda piece: piece[:2])
    _, _, segments, edges, widths = zip(*pieces)
    axes.add_collection(LineCollection(segments, colors=edges, linewidths=widths, capstyle="butt"))
    axes.autoscale_view()
    axes.set_aspect("equal", adjustable="datalim")
    axes.set_axis_off()


def specimen_figure(survey: _core.Survey) -> Figure:
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
                label = component.chain.labels[position]
                after.annotate(label, place[:2], (5, 5), textcoords="offset points", fontsize=9)
    return figure


def trajectory_figure(surveys: Sequence[_core.Survey]) -> Figure:
    """The share of every knot over the frames, one upon another."""
    figure = _figure(figsize=(9, 3.5))
    axes = figure.subplots()
    shares: dict[str, Any] = {}
    for frame, survey in enumerate(surveys):
        for knot, closures in survey.types.items():
            name = knot.short(_longest_knot) if knot.has_name else "not named"
            shares.setdefault(name, np.zeros(len(surveys)))[frame] += closures / survey.counted
    axes.stackplot(range(len(surveys)), list(shares.values()), labels=list(shares), step="mid")
    axes.set(xlabel="frame", ylabel="share of closures", xlim=(0, max(len(surveys) - 1, 1)), ylim=(0, 1))
    axes.legend(loc="center left", bbox_to_anchor=(1, 0.5), frameon=False)
    return figure


def fingerprint_figure(fingerprint: _core.Fingerprint) -> Figure:
    """The matrix as in the program's picture: first residues across, last residues upwards."""
    from matplotlib.colors import to_rgba
    from matplotlib.patches import Patch

    beads, dot, rows, knots, colours, legend, is_complete, ticks, cores, *words = fingerprint._picture()
    title, about, first_axis, last_axis = words
    dots = np.zeros((len(rows), len(rows), 4))
    for row, runs in zip(dots, rows):
        start = 0
        for knot, shade, count in runs:
            row[start : start + count] = to_rgba(colours[knot][shade], 1 if knot else 0)
            start += count
    figure = _figure(figsize=(7.5, 6))
    axes = figure.subplots()
    axes.fill([0, 0, beads], [0, beads, beads], colours[0][0], linewidth=0, zorder=0)
    side = len(rows) * dot
    axes.imshow(dots, origin="lower", interpolation="nearest", extent=(0, side, 0, side), zorder=1)
    for i, ((first, last), knot, label) in enumerate(cores):
        place = first + 0.5, last + 0.5
        axes.plot(*place, "o", color=colours[knot][-1], markeredgecolor="black", markersize=8)
        if i < _labelled_cores:
            axes.annotate(label, place, (8, -12), textcoords="offset points", fontsize=9)
    middles, labels = [bead + 0.5 for bead, _ in ticks], [label for _, label in ticks]
    axes.set_xticks(middles, labels)
    axes.set_yticks(middles, labels)
    axes.set(xlim=(0, beads), ylim=(0, beads), xlabel=first_axis, ylabel=last_axis)
    axes.spines[["top", "right"]].set_visible(False)
    patches = [Patch(color=colours[knot][-1], label=knots[knot]) for knot in legend]
    if not is_complete:
        patches.insert(-1, Patch(color="none", label="and others"))
    axes.legend(handles=patches, loc="lower right", frameon=False)
    figure.suptitle(title)
    axes.set_title(about, fontsize=7)
    return figure
