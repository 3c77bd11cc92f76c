"""How long the package takes beside the same calls in C++, and two threads beside one: interleaved, the best of many.

usage: PYTHONPATH=build/release/python python3 bench/python.py build/release/python/tests/libloopwise_direct.so [ROUNDS]
"""

import ctypes
import sys
import threading
import time

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


xyz = protein_like(331)
chain, loop = lw.Chain(xyz), lw.close(xyz, direction=0).xyz
pointer = {id(a): (a.ctypes.data_as(ctypes.c_void_p), ctypes.c_size_t(len(a))) for a in (xyz, loop)}
times = 50
measured = {
    "reduce 331 beads, C++": lambda: direct.seconds_of_reductions(*pointer[id(loop)], times) / times,
    "reduce 331 beads, Python": lambda: seconds(lambda: lw.reduce(loop), times) / times,
    "400 closures, C++": lambda: direct.seconds_of_surveys(*pointer[id(xyz)], 1, 1),
    "400 closures, Python": lambda: seconds(lambda: lw.survey(chain, threads=1)),
    "400 closures, two threads": lambda: seconds(lambda: lw.survey(chain, threads=2)),
    "400 closures, C++, two threads": lambda: direct.seconds_of_surveys(*pointer[id(xyz)], 2, 1),
    "2 x 400 closures in two Python threads": lambda: seconds(
        lambda: from_two_threads(lambda: lw.survey(chain, threads=1))
    ),
}
best = {name: float("inf") for name in measured}
for _ in range(rounds):
    for name, measure in measured.items():
        best[name] = min(best[name], measure())
for name, duration in best.items():
    print(f"{name:40}{1e6 * duration:12.1f} us")


def ratio(name, above, below, goal):
    print(f"{name:40}{above / below:12.3f}    {goal}")


times_of = list(best.values())
ratio("reduce, Python over C++", times_of[1], times_of[0], "at most 1.1")
ratio("survey, Python over C++", times_of[3], times_of[2], "at most 1.02")
ratio("survey, one thread over two", times_of[3], times_of[4], "at least 1.8 on two free cores")
ratio("the same in C++", times_of[2], times_of[5], "")
ratio("two Python threads over one", 2 * times_of[3], times_of[6], "at least 1.8 on two free cores")
