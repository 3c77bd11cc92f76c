"""Surveys: results, frames, progress, interruption, threads."""

import json
import os
import pathlib
import pickle
import re
import signal
import subprocess
import sys
import threading
import time
import xml.etree.ElementTree

import numpy as np
import pytest

import loopwise as lw


def walk(beads):
    steps = np.random.default_rng(beads).normal(size=(beads, 3))
    return np.cumsum(3.8 * steps / np.linalg.norm(steps, axis=1, keepdims=True), axis=0)


def test_a_survey_tells_what_became_of_each_closure(trefoil):
    result = lw.survey(trefoil, closures=100, threads=2)
    closure, left, knots, names = result.table
    for k in (0, 50, 99):
        loop = lw.close(trefoil, direction=k)
        kept = lw.reduce(loop)
        assert len(kept) == left[k, 0] and lw.knot(loop[kept]).text == names[knots[k, 0]]
    core = result.smallest
    loop = lw.close(trefoil, direction=core.closure)
    assert loop == lw.close(trefoil, closure=core.closure)
    assert lw.close(trefoil) == lw.close(trefoil, direction=0)
    assert np.array_equal(core.kept, lw.reduce(loop)) and np.array_equal(core.xyz, loop.xyz[core.kept])
    assert core.labels == [str(i + 1) if i < len(trefoil) else f"+{i - 59}" for i in core.kept.tolist()]
    assert result.to_dict() == lw.survey(trefoil, closures=100, threads=1).to_dict()
    many = [lw.survey(trefoil, method="point", closures=8000, threads=threads) for threads in (1, 3)]
    assert many[0].to_dict() == many[1].to_dict() and np.array_equal(many[1].table[0], np.arange(8000))
    assert json.loads(json.dumps(result.to_dict()))["chains"][0]["knots"] == result.knots
    drawn = lw.survey(trefoil, method="point", closures=5, seed=7)
    loop = lw.close(trefoil, "point", seed=7, closure=4)
    assert len(lw.reduce(loop)) == drawn.table[1][4, 0] and drawn.seed == 7


def test_results_show_themselves(trefoil):
    result, pair = lw.survey(trefoil, closures=20), lw.survey([trefoil, lw.sample("unknot")], closures=20)
    frames = lw.survey(np.stack([trefoil.xyz, lw.sample("unknot").xyz]), closures=20)
    for shown in (result, pair, frames):
        assert "-3_1" in repr(shown) and "<td>-3_1</td>" in shown._repr_html_()
        pytest.importorskip("matplotlib")
        assert shown.plot().axes
        pytest.importorskip("pandas")
        assert "-3_1" in set(shown.to_dataframe()["knot"])
    for shown in (pickle.loads(pickle.dumps(result)), pair):
        drawn = "".join(xml.etree.ElementTree.fromstring(shown._repr_svg_()).itertext())
        assert all(label in drawn for label in shown.components[0].smallest.labels)
        assert f"{shown.counted - shown.bare} of {shown.counted} closures" in drawn and "last 60" in drawn
        assert f"{len(shown.components) * 60} beads" in drawn and "data:image/svg" in shown._repr_html_()
    assert len(result.to_dataframe()) == 20 and len(pair.to_dataframe()) == 40
    with pytest.raises(ValueError, match="2 chains"):
        pair.knots


def test_every_result_says_whether_a_knot_is_proven():
    files = pathlib.Path(__file__).parents[2] / "tests/golden/files"
    chain, rings = lw.read(files / "beyond.txt"), lw.read_all(files / "ten_crossings.pdb")
    result, found = lw.survey(chain), lw.fingerprint(chain, closures=2, step=100)
    for shown in (lw.knot(lw.close(chain)), result, found, found.places[0], *result.components):
        assert shown.proven
    for shown in (result, found):
        copy = pickle.loads(pickle.dumps(shown))
        assert shown.knot == "-10_132" and "-10_132" in repr(shown) and "-10_132" in shown.to_svg()
        assert copy.to_svg() == shown.to_svg()
    kinds = [*result.components[0].types, *found.types]
    assert pickle.loads(pickle.dumps(kinds)) == kinds and "beyond ten crossings" in map(str, kinds)
    assert {str(kind): kind for kind in set(kinds)} == {str(kind): kind for kind in kinds}
    assert result.knotted == 1 and not found.types[0].is_knot

    link = lw.knot(rings)
    together = lw.survey([lw.Chain(np.vstack([r.xyz, r.xyz[:1]])) for r in rings])
    for shown in (together, pickle.loads(pickle.dumps(together))):
        (kind,) = shown.link_types
        assert not link.proven and not kind.proven
        assert str(kind) == link.text == "+8^3_1 or beyond eight crossings"
        assert "eight crossings" in link.why_not_proven and link.why_not_proven == kind.why_not_proven
        assert link.text in shown.to_svg()
        assert shown.pair_links == {(0, 1): {"+6^2_3": 1}, (0, 2): {"2^2_1": 1}, (1, 2): {"2^2_1": 1}}
        pair = {"chains": [0, 1], "links": {"+6^2_3": 1}, "linking": {-2: 1}}
        assert shown.to_dict()["pairs"][0] == pair


def test_frames_are_surveyed_as_they_are_alone(trefoil):
    frames = [trefoil.xyz * scale for scale in np.linspace(0.5, 2, 40)] + [lw.sample("unknot")]
    told = []
    together = lw.survey(iter(frames), closures=10, threads=2, progress=lambda *steps: told.append(steps))
    alone = [lw.survey(frame, closures=10) for frame in frames]
    assert [one.to_dict() for one in together] == [one.to_dict() for one in alone]
    assert together.knots == ["-3_1"] * 40 + ["0_1"] and told[-1] == (410, 410)


def test_frames_may_share_an_array_and_are_never_taken_for_a_structure(trefoil):
    frames = [trefoil.xyz, lw.sample("unknot").xyz, trefoil.xyz * [1, 1, -1]]
    buffer = np.empty_like(frames[0])

    def reader():
        for frame in frames:
            buffer[:] = frame
            yield buffer

    assert lw.survey(reader(), closures=20).knots == ["-3_1", "0_1", "+3_1"]
    with pytest.raises(ValueError, match="together=True"):
        lw.survey(frames, closures=20)
    assert len(lw.survey(frames, closures=2, together=True).components) == 3
    assert len(lw.survey([trefoil, frames[1][:-1]], closures=2).components) == 2


def test_a_fingerprint_finds_the_core_where_the_closures_change(trefoil):
    found = lw.fingerprint(trefoil, closures=20, full=True)
    first, last = found.core
    held = (found.numbers == found.names.index("-3_1")) & (2 * found.counts.astype(int) >= found.closures)
    shorter = (held[i, j] for i in range(60) for j in range(i, min(60, i + last - first)))
    assert held[first, last] and not any(shorter)
    assert found.knot == "-3_1" == found.to_dict()["knots"][0]["knot"]
    assert "<td>-3_1</td>" in found._repr_html_()
    coarse = lw.fingerprint(trefoil, closures=20, step=8, progress=lambda *_: None)
    assert coarse.core == found.core and coarse.stretches < found.stretches
    drawn = "".join(xml.etree.ElementTree.fromstring(found._repr_svg_()).itertext())
    assert f"-3_1 core {first + 1}-{last + 1}" in drawn and "every subchain was closed" in drawn
    pytest.importorskip("pandas")
    frame = found.to_dataframe()
    assert set(frame["knot"]) <= set(found.names) and len(frame) == np.count_nonzero(found.tested)


def test_the_figure_and_the_svg_picture_of_a_fingerprint_show_the_same(trefoil):
    pytest.importorskip("matplotlib")
    found = lw.fingerprint(trefoil, closures=20, full=True)
    figure, beads = found.plot(), len(trefoil)
    figure.canvas.draw()
    pixels, to_pixel = np.asarray(figure.canvas.buffer_rgba()), figure.axes[0].transData.transform
    # A triangle of unknots, and on it rectangles in the colours of knots: M left lower H right V upper H left
    paths = re.findall(r'<path fill="(#......)" d="([^"]*)"', found.to_svg())
    rectangles = [
        (colour, *map(float, re.split("[MHV ]+", rectangle)[1:5]))
        for colour, path in paths[1:]
        for rectangle in path.split("z")[:-1]
    ]
    colours = set()
    for first, last in ((2, beads - 1), (8, beads - 1), (2, beads // 2), (beads // 2, beads - 3), (35, 20)):
        x, y = 110 + 780 * (first + 0.5) / beads, 880 - 780 * (last + 0.5) / beads
        inside = [c for c, left, low, right, high in rectangles if left < x < right and high < y < low]
        expected = (inside or [paths[0][0] if first <= last else "#ffffff"])[0]
        across, up = to_pixel((first + 0.5, last + 0.5))
        drawn = "#%02x%02x%02x" % tuple(pixels[round(len(pixels) - up), round(across), :3])
        assert drawn == expected, (first, last)
        colours.add(drawn)
    assert len(colours) >= 3 and "#ffffff" in colours


def test_a_fingerprint_of_a_long_chain_says_how_far_it_is_known():
    chain = walk(1500)
    found = lw.fingerprint(chain, closures=1, threads=2)
    told = found.to_dict()
    assert found.borders_within > 1 and told["borders_within"] == found.borders_within
    assert [knot["core_within"] for knot in told["knots"]] == [p.core and p.core_within for p in found.places]
    assert told == lw.fingerprint(chain, closures=1, threads=1).to_dict()
    assert f"borders to within {found.borders_within} residues" in found.to_svg()


def test_progress_is_told_and_may_stop_the_work():
    def stop(done, planned):
        raise RuntimeError(f"{done} of {planned}")

    for beads in (300, 600):
        with pytest.raises(RuntimeError, match="of 1000000"):
            lw.survey(walk(beads), method="direction", closures=1_000_000, threads=2, progress=stop)
    with pytest.raises(TypeError, match="int"):
        lw.survey(walk(30), progress=3)


@pytest.mark.parametrize(
    "work",
    [
        "survey(walk(300), method='point', closures=10**8, threads=1)",
        "survey(walk(300), method='point', closures=10**8, threads=2)",
        "survey(walk(600), method='point', closures=10**8)",
        "reduce(walk(150_000), False)",
    ],
)
def test_an_interrupt_stops_within_a_tenth_of_a_second(work):
    script = f"""
import signal, time, numpy as np, loopwise as lw
signal.alarm(20)
def walk(beads): return np.cumsum(np.random.default_rng(1).normal(size=(beads, 3)), axis=0)
print("ready", flush=True)
try:
    lw.{work}
except KeyboardInterrupt:
    print(time.time(), flush=True)
"""
    with subprocess.Popen([sys.executable, "-c", script], stdout=subprocess.PIPE, text=True) as process:
        process.stdout.readline()
        time.sleep(1)
        sent = time.time()
        process.send_signal(signal.SIGINT)
        assert float(process.stdout.readline()) - sent < (0.1 if len(os.sched_getaffinity(0)) > 1 else 1)
        assert process.wait(20) == 0
        assert "reduce" in work or time.time() - sent < 1.5  # Python waits two seconds for work that goes on


def test_other_threads_run_meanwhile():
    chain, done = walk(400), threading.Event()
    worker = threading.Thread(target=lambda: (lw.survey(chain, closures=400, threads=1), done.set()))
    worker.start()
    turns = 0
    while not done.is_set():
        turns += 1
        time.sleep(0.001)
    worker.join()
    assert turns > 3


@pytest.mark.parametrize(
    "call",
    (
        "survey(long)",
        "survey(short, closures=2000, method='point', progress=lambda *_: sum(range(1000)))",
        "fingerprint(long[:300], progress=lambda *_: None)",
        "reduce(long)",
        "knot(short)",
        "fingerprint(short, closures=2).to_svg()",
    ),
)
def test_a_process_ends_cleanly_while_threads_work(call):
    code = f"""
import threading, time
import numpy as np
import loopwise as lw
short, long = lw.sample("trefoil"), np.cumsum(np.random.default_rng(1).normal(size=(3000, 3)), axis=0)
def work():
    while True:
        lw.{call}
for _ in range(3):
    threading.Thread(target=work, daemon=True).start()
time.sleep(0.2)
"""
    ended = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, timeout=60)
    assert (ended.returncode, ended.stderr) == (0, "")


def test_results_come_back_from_a_pickle_whole(trefoil):
    labelled = lw.Chain(trefoil.xyz, labels=[f"{i}A" for i in range(60)], name="A")
    pair = lw.survey([labelled, lw.sample("unknot")], method="point", closures=20, seed=3)
    found, knot = lw.fingerprint(labelled, closures=5), lw.knot(lw.close(trefoil, direction=0))
    part = pair.components[0]
    results = [pair, part, part.smallest, pair.typical, found, found.places[0], knot]
    copies = pickle.loads(pickle.dumps(results))
    for one, copy in zip(results, copies):
        names = [name for name, member in vars(type(one)).items() if isinstance(member, property)]
        assert len(names) > 3
        for name in names:
            try:
                before = getattr(one, name)
            except ValueError:  # what only a survey of one chain has
                continue
            np.testing.assert_equal(repr(getattr(copy, name)), repr(before))
    assert np.array_equal(copies[4].numbers, found.numbers) and copies[0].to_svg() == pair.to_svg()
    assert copies[4].to_svg() == found.to_svg() and copies[6] == knot != lw.knot(lw.sample("unknot"))


def test_knots_are_values_and_polynomials_are_written_as_in_reports(trefoil):
    turned = lw.knot(lw.close(trefoil.xyz[::-1], direction=0))
    result = lw.survey(trefoil, closures=50)
    assert max(result.types, key=result.types.get) == turned.type == lw.fingerprint(trefoil, closures=5).type
    assert turned.type != lw.knot(lw.close(trefoil.xyz * [1, 1, -1], direction=0)).type
    assert turned.invariant_texts["Jones polynomial"] == "-t^-4 + t^-3 + t^-1"
    angle = np.linspace(0, 2 * np.pi, 40, endpoint=False)
    rings = [
        np.stack([wide * np.cos(angle), wide * np.sin(angle), np.sin(turn)], axis=1)
        for turn in (2 * angle, 2 * angle + np.pi)
        for wide in [2 + np.cos(turn)]
    ]
    link = lw.knot(rings)
    assert "Jones polynomial -t^(-5/2) + " in link._repr_html_() and link.jones[-2.5] == -1


def test_help_lists_the_methods_of_the_table():
    for name in ("directions", "direction", "point", "two_points", "outside"):
        assert f'- "{name}": ' in lw.close.__doc__ and lw.survey(lw.sample("unknot"), method=name, closures=1)
    assert '"ring"' not in lw.close.__doc__
