"""How long the package takes beside the same calls in C++, and two threads beside one: interleaved, the best
of many.

usage: PYTHONPATH=build/release/python python3 bench/python.py
build/release/python/tests/libloopwise_direct.so [ROUNDS]

Two threads are as fast as the processors are free. As root it asks for real-time priority, so that a busy
machine measures as a quiet one; others wait meanwhile, in all for half a minute.
"""

import ctypes
import os
import sys
import threading
import time
from functools import partial

import numpy as np

import loopwise as lw

direct = ctypes.CDLL(sys.argv[1])
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 30
for function in (direct.seconds_of_reductions, direct.seconds_of_surveys):
    function.restype = ctypes.c_double


def protein_like(beads):
    """A compact chain of bonds of 3.8: a random walk that is drawn to its start."""
    random, places = np.random.default_rng(7), [np.zeros(3)]
    while len(places) < beads:
        step = random.normal(size=3) - 0.02 * places[-1]
        places.append(places[-1] + 3.8 * step / np.linalg.norm(step))
    return np.array(places)


def seconds(work, times=1):
    start = time.perf_counter()
    for _ in range(times):
        work()
    return time.perf_counter() - start


def from_two_threads(work):
    threads = [threading.Thread(target=work) for _ in range(2)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()


def first_of_all():
    """In words, whether nothing else has the processors meanwhile."""
    try:
        os.sched_setscheduler(0, os.SCHED_FIFO, os.sched_param(1))
    except PermissionError:
        return "beside whatever else runs"
    return "with real-time priority"


def best_of(rounds, measured):
    """Forwards and backwards by turns: what comes after the other's work finds the caches full of it."""
    best = {name: float("inf") for name in measured}
    names = list(measured)
    for _ in range(rounds):
        for name in names:
            best[name] = min(best[name], measured[name]())
        names.reverse()
    for name, duration in best.items():
        print(f"{name:40}{1e6 * duration:12.1f} us")
    return list(best.values())


def ratio(name, above, below, goal=""):
    print(f"{name:40}{above / below:12.3f}    {goal}")


print(f"{len(os.sched_getaffinity(0))} processors, {first_of_all()}, the best of {rounds}")
xyz = protein_like(331)
chain, loop = lw.Chain(xyz), lw.close(xyz, direction=0).xyz
pointer = {id(a): (a.ctypes.data_as(ctypes.c_void_p), ctypes.c_size_t(len(a))) for a in (xyz, loop)}
times = 300  # long enough for the caches not to matter that the other work left
cpp_reduces, reduces, cpp_surveys, surveys, cpp_again, cpp_two = best_of(
    rounds,
    {
        "reduce 331 beads, C++": lambda: direct.seconds_of_reductions(*pointer[id(loop)], times) / times,
        "reduce 331 beads, Python": lambda: seconds(lambda: lw.reduce(loop), times) / times,
        "400 closures, C++": lambda: direct.seconds_of_surveys(*pointer[id(xyz)], 1, 1),
        "400 closures, Python": lambda: seconds(lambda: lw.survey(chain, threads=1)),
        "400 closures, C++ again": lambda: direct.seconds_of_surveys(*pointer[id(xyz)], 1, 1),
        "400 closures, C++, two threads": lambda: direct.seconds_of_surveys(*pointer[id(xyz)], 2, 1),
    },
)
ratio("reduce, Python over C++", reduces, cpp_reduces, "at most 1.1")
ratio("survey, Python over C++", surveys, cpp_surveys, "at most 1.02")
ratio("survey, C++ over itself", cpp_again, cpp_surveys, "1 but for the noise")
ratio("survey in C++, one thread over two", cpp_surveys, cpp_two)

frames = np.stack([protein_like(120) * (1 + 0.01 * k) for k in range(200)])
for what, chains, closures in (
    ("400 closures of 331 beads", chain, 400),
    ("400 closures of 120 beads", protein_like(120), 400),
    ("20000 closures of 120 beads", protein_like(120), 20000),
    ("200 frames of 120 beads", frames, 50),
):

    def surveyed(threads, chains=chains, closures=closures):
        lw.survey(chains, method="direction", closures=closures, threads=threads)

    twice_at_once = partial(from_two_threads, partial(surveyed, 1))
    one, two, two_calls = best_of(
        max(rounds // 3, 3),
        {
            what: lambda: seconds(lambda: surveyed(1)),
            "  by two threads": lambda: seconds(lambda: surveyed(2)),
            "  twice, from two Python threads": partial(seconds, twice_at_once),
        },
    )
    ratio("  one thread over two", one, two, "at least 1.8")
    ratio("  one call after another over two at once", 2 * one, two_calls, "at least 1.8")
