"""Pictures, for which matplotlib is needed."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

import numpy as np

if TYPE_CHECKING:
    from matplotlib.figure import Figure

    from .fingerprint import Fingerprint
    from .survey import Survey, Trajectory

_colours = "viridis"
_closing = "0.6"
_longest_knot = 30


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
    """Segments coloured by where they are along the chain, those that close it in grey. They are drawn in pieces from
    the farthest to the nearest, so that what crosses above interrupts what is below."""
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
                label = component.chain.labels[position]
                after.annotate(label, place[:2], (5, 5), textcoords="offset points", fontsize=9)
    return figure


def trajectory_figure(trajectory: "Trajectory") -> "Figure":
    """The share of every knot over the frames, one upon another."""
    figure = _figure(figsize=(9, 3.5))
    axes = figure.subplots()
    shares: dict[str, Any] = {}
    for frame, survey in enumerate(trajectory):
        for knot, closures in survey._only().types.items():
            name = knot.short(_longest_knot) if knot.has_name else "not named"
            shares.setdefault(name, np.zeros(len(trajectory)))[frame] += closures / survey.counted
    axes.stackplot(range(len(trajectory)), list(shares.values()), labels=list(shares), step="mid")
    axes.set(xlabel="frame", ylabel="share of closures", xlim=(0, max(len(trajectory) - 1, 1)), ylim=(0, 1))
    axes.legend(loc="center left", bbox_to_anchor=(1, 0.5), frameon=False)
    return figure


def fingerprint_figure(fingerprint: "Fingerprint") -> "Figure":
    """The matrix of all stretches, first beads down and last beads across."""
    import matplotlib
    from matplotlib.patches import Patch

    figure = _figure(figsize=(7.5, 6))
    axes = figure.subplots()
    knots = [i for i in range(len(fingerprint.types)) if i in np.unique(fingerprint.numbers) and i > 0]
    hues = {number: matplotlib.colormaps["tab10"](k % 10)[:3] for k, number in enumerate(knots)}
    beads = len(fingerprint.chain)
    image = np.ones((beads, beads, 3))
    for number, hue in hues.items():
        strength = np.where(fingerprint.numbers == number, fingerprint.shares, 0.0)[..., None]
        image -= strength * (1 - np.array(hue))
    image[np.tril_indices(beads, -1)] = 0.93
    axes.imshow(image, origin="lower", interpolation="nearest")
    for place in fingerprint.places:
        if place.core:
            axes.plot(place.core[1], place.core[0], "kx", markersize=7)
            ends = "-".join(fingerprint.chain.labels[i] for i in place.core)
            corner = (place.core[1], place.core[0])
            axes.annotate(f"{place.type.short(_longest_knot)} {ends}", corner, (8, -12), textcoords="offset points")
    ticks = [tick for tick in axes.get_xticks() if 0 <= tick < beads]
    labels = [fingerprint.chain.labels[int(tick)] for tick in ticks]
    axes.set_xticks(ticks, labels)
    axes.set_yticks(ticks, labels)
    axes.set(xlabel="last bead", ylabel="first bead", xlim=(-0.5, beads - 0.5), ylim=(-0.5, beads - 0.5))
    patches = [Patch(color=hue, label=fingerprint.types[number].short(_longest_knot)) for number, hue in hues.items()]
    if patches:
        axes.legend(handles=patches, loc="center left", bbox_to_anchor=(1, 0.5), frameon=False)
    axes.set_title(f"{fingerprint.chain.name or 'chain'}: {fingerprint.knot} in {100 * fingerprint.share:.0f} %")
    return figure
