"""Knots in proteins and other chains of beads: close, reduce, name and survey them.

Coordinates are (n, 3) arrays of numbers, by habit in angstroms, or a :class:`Chain`, which also has
identifiers; lists and tuples of chains are the components of one structure. Functions return new values and
leave their arguments alone.

>>> import loopwise as lw
>>> chain = lw.sample("trefoil")
>>> result = lw.survey(chain, closures=100)
>>> result.knot
'-3_1'
"""

from ._core import version as __version__
from .chain import Chain
from .files import from_text, read, read_all, readable_formats, to_text, write
from .fingerprint import Fingerprint, Place, fingerprint
from .knots import Knot, KnotType, knot, linking_numbers
from .operations import Check, arc, centre, check, close, compare_eq, compare_geq, compare_gt, cut
from .operations import determinant, diameter, distance, intersection, is_empty, max_id, on_segment
from .operations import orientation, project, project_point, radius, reduce, scalar_product, segments_cross
from .samples import sample
from .survey import Component, Core, GapVerdict, Specimen, Survey, Trajectory, survey

__all__ = [
    "Chain", "Check", "Component", "Core", "Fingerprint", "GapVerdict", "Knot", "KnotType", "Place", "Specimen",
    "Survey", "Trajectory", "__version__", "arc", "centre", "check", "close", "compare_eq", "compare_geq",
    "compare_gt", "cut", "determinant", "diameter", "distance", "fingerprint", "from_text",
    "intersection", "is_empty", "knot", "linking_numbers", "max_id", "on_segment", "orientation",
    "project", "project_point", "radius", "read", "read_all", "readable_formats", "reduce", "sample",
    "scalar_product", "segments_cross", "survey", "to_text", "write",
]
