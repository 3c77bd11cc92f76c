#!/usr/bin/env python3
"""Compares default fingerprints with those of every subchain in all directions, on random walks in a ball.

    bench/fingerprints.py build/release/app/loopwise --beads 110-190 --chains 100
    bench/fingerprints.py NEW --full OLD       which program makes the full fingerprints

A place is a knot with a core. It is missed if the default shows no place of the knot that meets the core; a core is
wrong if its ends differ; its `within` is false if they differ by more than `core_within`, which 1 does not allow for.
"""

import argparse
import json
import math
import pathlib
import random
import resource
import subprocess
import tempfile

BOND = 3.8
RADII = (0.75, 1.0)  # of the ball, for a chain of one bond; the volume grows with the beads


def walk(beads, radii, generator):
    """A random walk in a ball."""
    radius = BOND * generator.uniform(*radii) * beads ** (1 / 3)
    chain = [(0.0, 0.0, 0.0)]
    while len(chain) < beads:
        way = [generator.gauss(0, 1) for _ in range(3)]
        size = BOND / math.hypot(*way)
        bead = tuple(a + size * w for a, w in zip(chain[-1], way))
        if math.hypot(*bead) < radius:
            chain.append(bead)
    return chain


def run(program, chain_file, *options):
    """The report, and seconds of the processor."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
    text = subprocess.run(
        [program, "fingerprint", "--json", "--threads", "1", *options, chain_file], check=True, capture_output=True
    ).stdout
    return json.loads(text)["results"][0], resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before


def places(report):
    return [(place["knot"], place["core"], place["core_within"], place["kind"] if "kind" in place else "")
            for place in report["knots"] if place["core"]]


def compare(found, full, totals):
    left = list(found)
    for knot, core, _, kind in full:
        totals["places"] += 1
        near = [p for p in left if p[0] == knot and p[1][0] <= core[1] and core[0] <= p[1][1]]
        if not near:
            totals["missed"] += 1
            continue
        best = min(near, key=lambda p: abs(p[1][0] - core[0]) + abs(p[1][1] - core[1]))
        left.remove(best)
        off = max(abs(best[1][0] - core[0]), abs(best[1][1] - core[1]))
        totals["wrong"] += off > 0
        totals["false within"] += off > (0 if best[2] == 1 else best[2])
        totals["other kind"] += best[3] != kind
    totals["surplus"] += len(left)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("--full", metavar="PROGRAM", help="makes the full fingerprints (default: the program)")
    parser.add_argument("--beads", default="110-190")
    parser.add_argument("--chains", type=int, default=100)
    parser.add_argument("--step", help="of a grid, in place of the default")
    parser.add_argument("--radii", type=float, nargs=2, default=RADII, help="of the ball, see RADII")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--keep", type=pathlib.Path, help="keeps full reports in this folder for the next run")
    options = parser.parse_args()
    fewest, most = map(int, options.beads.split("-"))
    totals = dict.fromkeys(["places", "missed", "wrong", "false within", "other kind", "surplus"], 0)
    seconds = [0.0, 0.0]
    with tempfile.TemporaryDirectory() as folder:
        keep = options.keep or pathlib.Path(folder)
        keep.mkdir(exist_ok=True)
        for number in range(options.chains):
            generator = random.Random(1000 * options.seed + number)
            beads = generator.randint(fewest, most)
            file = pathlib.Path(folder) / "chain.txt"
            file.write_text("".join(f"{i} {x:.3f} {y:.3f} {z:.3f}\n"
                                    for i, (x, y, z) in enumerate(walk(beads, options.radii, generator), 1)))
            kept = keep / f"{options.beads}-{options.seed}-{number}.json"
            if not kept.exists():
                kept.write_text(json.dumps(run(options.full or options.program, file, "--full")))
            full, long = json.loads(kept.read_text())
            found, short = run(options.program, file, *(["--step", options.step] if options.step else []))
            seconds = [seconds[0] + short, seconds[1] + long]
            compare(places(found), places(full), totals)
    print(f"{options.chains} chains of {options.beads} beads: "
          + ", ".join(f"{name} {count}" for name, count in totals.items())
          + f"; {seconds[0]:.1f} s, with --full {seconds[1]:.1f} s")


if __name__ == "__main__":
    main()
