"""Chains to try things on."""

from __future__ import annotations

from typing import Callable

import numpy as np

from .chain import Chain, Coordinates

_bond = 3.8


def _trefoil(t: Coordinates) -> list[Coordinates]:
    return [np.sin(t) + 2 * np.sin(2 * t), np.cos(t) - 2 * np.cos(2 * t), -np.sin(3 * t)]


def _figure_eight(t: Coordinates) -> list[Coordinates]:
    return [(2 + np.cos(2 * t)) * np.cos(3 * t), (2 + np.cos(2 * t)) * np.sin(3 * t), np.sin(4 * t)]


def _unknot(t: Coordinates) -> list[Coordinates]:
    return [np.cos(t), np.sin(t), 0.1 * t]


_curves: dict[str, Callable[[Coordinates], list[Coordinates]]] = {
    "trefoil": _trefoil,
    "figure_eight": _figure_eight,
    "unknot": _unknot,
}


def sample(name: str, beads: int = 60) -> Chain:
    """An open chain along a "trefoil", a "figure_eight" or an "unknot", its beads about 3.8 apart.

    Raises ValueError for another name or fewer than 12 beads.

    >>> sample("figure_eight", 80)
    Chain figure_eight of 80 beads, 1 to 80
    """
    if name not in _curves:
        raise ValueError(f"name must be one of {', '.join(_curves)}, not {name!r}")
    if beads < 12:
        raise ValueError(f"beads must be at least 12, not {beads}")
    # The gap is where the knot is on the outside, so that closing it changes nothing.
    start = {"trefoil": np.pi / 6, "figure_eight": 0.0, "unknot": 0.0}[name]
    fine = np.linspace(start + 0.15, start + 2 * np.pi - 0.15, 20001)
    curve = np.stack(_curves[name](fine), axis=1)
    along = np.concatenate([[0.0], np.cumsum(np.linalg.norm(np.diff(curve, axis=0), axis=1))])
    places = np.linspace(0.0, along[-1], beads)
    xyz = np.stack([np.interp(places, along, axis) for axis in curve.T], axis=1)
    return Chain(xyz * (_bond * (beads - 1) / along[-1]), name=name)
