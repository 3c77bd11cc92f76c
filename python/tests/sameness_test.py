"""The same input through Python and through C++ gives the same bits."""

import ctypes
import hashlib
import os

import numpy as np
import pytest

import loopwise as lw


def every_result(xyz):
    """What every_result() of direct.cpp writes."""
    out = bytearray()

    def add(*values):
        for value in values:
            if isinstance(value, lw.Chain):
                for place, number in zip(value.xyz, value.ids):
                    add(place, number)
            elif isinstance(value, list):
                add(*value)
            elif isinstance(value, str):
                out.extend(value.encode())
            elif isinstance(value, (bool, np.bool_)):
                out.extend(np.uint8(value).tobytes())
            elif isinstance(value, int):
                out.extend(np.int64(value).tobytes())
            else:
                out.extend(np.asarray(value).tobytes())

    chain, half = lw.Chain(xyz), len(xyz) // 2
    parts = [lw.Chain(xyz[:half]), lw.Chain(xyz[half:])]
    add(lw.centre(chain), lw.radius(chain), lw.diameter(chain))
    add(lw.diameter(parts), np.int32(lw.max_id(parts)), lw.is_empty(parts))
    for i in range(len(xyz) - 4):
        p = xyz[i : i + 5]
        contact = ["none", "through", "touch"].index(lw.intersection(p[:3], p[3:]))
        add(np.int32(contact), lw.distance(p[0], p[1]))
        add(*(compare(p[0, 0], p[1, 0]) for compare in (lw.compare_eq, lw.compare_gt, lw.compare_geq)))
        add(lw.segments_cross(*p[:4]), lw.on_segment(*p[:3]), lw.orientation(*p[:3]))
        add(lw.scalar_product(p[0], p[1]), lw.determinant(p[:3]), lw.project_point(p[0], p[1]))
        add(lw.arc(p[0], p[1], p[2], 9, 1))
    for row in range(60):
        add(lw.project(chain, row, closed=row % 2 == 0))
    add(lw.check(chain).text, lw.cut(chain, 20, 5))
    for closed in (False, True):
        add(chain[lw.reduce(chain, closed)])
        add([part[kept] for part, kept in zip(parts, lw.reduce(parts, closed))])
    ring = lw.Chain(np.vstack([xyz, xyz[:1]]), [*range(1, len(xyz) + 1), 1])
    add(ring[lw.reduce(ring, False)])
    for seed in range(5):
        drawn = {"seed": seed, "closure": 3}
        loops, methods = [lw.close(chain, direction=seed)], ("direction", "point", "two_points", "outside")
        loops += [lw.close(chain, method, **drawn) for method in methods]
        for loop in loops:
            add(loop, loop[lw.reduce(loop)])
        for method in methods:
            loops = lw.close(parts, method, **drawn)
            add(loops, [loop[kept] for loop, kept in zip(loops, lw.reduce(loops))])
    add(lw.knot(chain).text)
    result = lw.survey(chain, closures=40)
    add(*(value for count in result.knots.items() for value in count))
    add(*(value for count in result.left.items() for value in count))
    return bytes(out)


@pytest.mark.parametrize("seed", range(3))
def test_every_operation_gives_the_bits_of_a_call_from_cpp(seed, tmp_path):
    steps = np.random.default_rng(seed).normal(size=(40, 3))
    xyz = np.cumsum(3.8 * steps / np.linalg.norm(steps, axis=1, keepdims=True), axis=0)
    direct = ctypes.CDLL(os.environ["LOOPWISE_DIRECT"])
    path = tmp_path / "bytes"
    direct.every_result(xyz.ctypes.data_as(ctypes.c_void_p), ctypes.c_size_t(len(xyz)), os.fsencode(path))
    here, there = every_result(xyz), path.read_bytes()
    differing = next((i for i, (a, b) in enumerate(zip(here, there)) if a != b), min(len(here), len(there)))
    assert hashlib.sha256(here).digest() == hashlib.sha256(there).digest(), f"from byte {differing} on"
