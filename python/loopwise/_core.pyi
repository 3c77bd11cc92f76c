# The compiled module. Its classes document themselves; for its functions see their callers in the package.
from typing import Any, Callable, Final, Sequence, SupportsIndex

from numpy import bool_, float64, int32, int64, uint16
from numpy.typing import NDArray

import loopwise

from .chain import Chain

_Xyz = NDArray[float64]
_Ids = NDArray[int32]
_Optional_ids = _Ids | None
_Positions = NDArray[int64]
_Arrays = tuple[_Xyz, _Ids]
_Read = tuple[_Xyz, _Ids, list[str], str, list[str]]
_Components = Sequence[tuple[_Xyz, _Optional_ids]]
_Int = SupportsIndex
_Pair = tuple[int, int]
_Polynomial = dict[float, int]
_Teller = Callable[[int, int], object] | None

version: str
methods: list[Method]

class Method:
    name: Final[str]
    help: Final[str]
    closes: Final[bool]
    default_scale: Final[float]

class Plan:
    closures: Final[int]
    threads: Final[int]
    def __init__(
        self, method: str | None, closures: _Int | None, scale: float | None, seed: _Int, threads: _Int | None,
        names: bool, together: bool,
    ) -> None: ...

class _Knotted:
    type: Final[KnotType]
    knot: Final[str]
    proven: Final[bool]

class KnotType:
    names: Final[list[str]]
    proven: Final[bool]
    why_not_proven: Final[str]
    has_name: Final[bool]
    is_knot: Final[bool]
    def short(self, width: int) -> str: ...

class Knot:
    type: Final[KnotType]
    status: Final[str]
    text: Final[str]
    names: Final[list[str]]
    name: Final[str | None]
    proven: Final[bool]
    why_not_proven: Final[str]
    crossings: Final[int]
    invariants: Final[dict[str, _Polynomial | int]]
    invariant_texts: Final[dict[str, str]]
    jones: Final[_Polynomial]
    alexander: Final[_Polynomial]

class GapVerdict:
    text: Final[str]
    hangs_on: Final[list[_Pair]]
    knot: Final[str]
    paths: Final[int]
    agreeing: Final[int]
    share: Final[float]
    knots: Final[dict[str, int]]
    alone: Final[dict[_Pair, _Pair]]
    fragments: Final[dict[_Pair, dict[str, int]]]

class _OneChain:
    chain: Final[Chain]
    types: Final[dict[KnotType, int]]
    knots: Final[dict[str, int]]
    knot: Final[str | None]
    proven: Final[bool]
    smallest: Final[loopwise.Core | None]
    verdict: Final[loopwise.GapVerdict | None]

class Core:
    closure: Final[int]
    kept: Final[_Positions]
    xyz: Final[_Xyz]
    labels: Final[list[str]]

class Component(_OneChain):
    left: Final[dict[int, int]]
    bare: Final[int]

class Specimen:
    closure: Final[int]
    closed: Final[list[_Xyz]]
    kept: Final[list[_Positions]]
    knots: Final[list[str]]

class Survey(_OneChain):
    method: Final[str]
    closures: Final[int]
    scale: Final[float | None]
    seed: Final[int | None]
    counted: Final[int]
    failed: Final[int]
    left: Final[dict[int, int]]
    bare: Final[int]
    link_types: Final[dict[KnotType, int]]
    links: Final[dict[str, int]]
    linking_numbers: Final[dict[_Pair, dict[int, int]]]
    pair_links: Final[dict[_Pair, dict[str, int]]]
    typical: Final[loopwise.Specimen | None]
    components: Final[list[loopwise.Component]]
    share: Final[float]
    knotted: Final[float]
    table: Final[tuple[_Positions, NDArray[int64], NDArray[int64], list[str]]]
    def to_svg(self) -> str: ...

class Place(_Knotted):
    share: Final[float]
    greatest_share: Final[float]
    greatest: Final[_Pair]
    core: Final[_Pair | None]
    core_within: Final[int]
    kind: Final[str]
    slipknot: Final[bool]

class Fingerprint(_Knotted):
    share: Final[float]
    closures: Final[int]
    step: Final[int]
    stretches: Final[int]
    depth: Final[_Pair | None]
    depth_within: Final[_Pair]
    borders_within: Final[int]
    verdict: Final[loopwise.GapVerdict | None]
    places: Final[list[loopwise.Place]]
    core: Final[_Pair | None]
    types: Final[list[KnotType]]
    names: Final[list[str]]
    numbers: Final[NDArray[uint16]]
    counts: Final[NDArray[uint16]]
    tested: Final[NDArray[bool_]]
    chain: Final[Chain]
    def to_svg(self) -> str: ...
    def _picture(self) -> Any: ...

def read(path: bytes, model: str, atom: str) -> list[_Read]: ...
def parse(text: str) -> list[_Read]: ...
def plain_text(chain: Chain) -> str: ...
def pdb_text(chain: Chain, closed: bool) -> str: ...
def readable_formats() -> str: ...
def cut(xyz: _Xyz, ids: _Optional_ids, first: _Int, last: _Int) -> _Pair: ...
def check(xyz: _Xyz, ids: _Optional_ids) -> tuple[_Xyz, list[int], str]: ...
def centre(xyz: _Xyz) -> _Xyz: ...
def radius(xyz: _Xyz) -> float: ...
def diameter(xyz: _Xyz) -> float: ...
def diameter_together(components: _Components) -> float: ...
def max_id(components: _Components) -> int: ...
def is_empty(components: _Components) -> bool: ...
def distance(a: _Xyz, b: _Xyz) -> float: ...
def compare_eq(a: float, b: float) -> bool: ...
def compare_gt(a: float, b: float) -> bool: ...
def compare_geq(a: float, b: float) -> bool: ...
def intersection(triangle: _Xyz, segment: _Xyz) -> int: ...
def segments_cross(
    x1: float, y1: float, x2: float, y2: float, x3: float, y3: float, x4: float, y4: float, /
) -> bool: ...
def on_segment(x1: float, y1: float, x2: float, y2: float, px: float, py: float, /) -> bool: ...
def orientation(x1: float, y1: float, x2: float, y2: float, x3: float, y3: float, /) -> float: ...
def scalar_product(a: _Xyz, b: _Xyz) -> float: ...
def determinant(matrix: _Xyz) -> float: ...
def project_point(point: _Xyz, direction: _Xyz) -> _Xyz: ...
def project(xyz: _Xyz, ids: _Optional_ids, direction: _Int, closed: bool) -> _Xyz: ...
def close(
    xyz: _Xyz, ids: _Optional_ids, method: str | None, direction: _Int | None, scale: float | None, seed: _Int,
    closure: _Int,
) -> _Arrays: ...
def close_together(
    components: _Components, method: str | None, scale: float | None, seed: _Int, closure: _Int
) -> list[_Arrays]: ...
def arc(start: _Xyz, end: _Xyz, centre: _Xyz, radius: float, last_id: _Int) -> _Arrays: ...
def reduce(xyz: _Xyz, ids: _Optional_ids, closed: bool) -> _Positions: ...
def reduce_together(components: _Components, closed: bool) -> list[_Positions]: ...
def knot(polygons: _Components) -> loopwise.Knot: ...
def linking_numbers(polygons: _Components) -> dict[_Pair, int]: ...
def fingerprint(
    chain: Chain, step: _Int | None, closures: _Int, threads: _Int | None, most_memory: _Int, progress: _Teller
) -> loopwise.Fingerprint: ...
def survey(chains: list[Chain], plan: Plan, progress: _Teller) -> loopwise.Survey: ...
def survey_frames(frames: list[Chain], plan: Plan, progress: _Teller) -> list[loopwise.Survey]: ...
def picture(chain: Chain) -> str: ...
