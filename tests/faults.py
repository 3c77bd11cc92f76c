#!/usr/bin/env python3
"""How many small faults in the sources the tests see.

Puts one random fault at a time (an operator, a bound, a constant) into a copy of the tree, builds it and runs
the tests until one fails. A fault that makes a test hang or that no compiler takes is told apart. Faults that
change nothing a test could see are listed with their reasons in tests/data/equivalent_faults.txt, one a line:
the path, what the line then says, and why, separated by " | ".

    tests/faults.py --count 80 --seed 1 --jobs 2
    tests/faults.py --only src/closure --count 20 --tree /another/checkout
"""
import argparse
import os
import queue
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

# What may stand in a line, and what may stand there instead. Binary operators have blanks around them.
SWAPS = {
    " < ": (" <= ", " > "), " <= ": (" < ",), " > ": (" >= ", " < "), " >= ": (" > ",), " == ": (" != ",),
    " != ": (" == ",), " + ": (" - ",), " - ": (" + ",), " * ": (" / ",), " / ": (" * ",), " % ": (" / ",),
    " += ": (" -= ",), " -= ": (" += ",), " && ": (" || ",), " || ": (" && ",), " & ": (" | ",), " | ": (" & ",),
    " << ": (" >> ",), " >> ": (" << ",), "++": ("--",), "--": ("++",), "!": ("",), "true": ("false",),
    "false": ("true",), "begin()": ("end()",), "end()": ("begin()",), "front()": ("back()",), "back()": ("front()",),
    "std::min": ("std::max",), "std::max": ("std::min",), "floor": ("ceil",), "break;": ("",),
}
TOKEN = re.compile("|".join(re.escape(swap) for swap in sorted(SWAPS, key=len, reverse=True)) +
                   r"|(?<![\w.'])\d[\w.']*(?:(?<=e)-\d+)?")
SKIPPED = re.compile(r"^\s*(//|#|\*|static_assert|template|using|namespace)")
NOT_CODE = re.compile(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])\'|//.*')
MOST_PER_FILE = 60  # a table of numbers must not take all the faults


def replacements(token):
    """What a token can be mistaken for."""
    if token in SWAPS:
        return SWAPS[token]
    number = token.replace("'", "").rstrip("uUlLfF") if not token.startswith("0x") else ""
    suffix = token[len(token.rstrip("uUlLfF")):]
    if re.fullmatch(r"\d+", number):
        return [f"{int(number) + 1}{suffix}"] + [f"{int(number) - 1}{suffix}"] * (int(number) > 0)
    if re.fullmatch(r"[\d.]+(e-?\d+)?", number):
        return [f"{float(number) * factor or 1.0!r}{suffix}" for factor in (2, 0.5, 1.01)]
    return ()


def faults_of(tree, path):
    """All faults of a file, as (path, line number, the line with the fault)."""
    found = []
    with open(os.path.join(tree, path), encoding="utf-8") as file:
        for number, line in enumerate(file):
            if SKIPPED.search(line):
                continue
            code = NOT_CODE.sub(lambda match: "\0" * len(match[0]), line)
            for match in TOKEN.finditer(code):
                for new in replacements(match[0]):
                    found.append((path, number, line[:match.start()] + new + line[match.end():]))
    return found


def run(command, folder, log, seconds):
    """The return code, or None after the time; nothing that the command started stays behind."""
    with subprocess.Popen(command, cwd=folder, stdout=log, stderr=log, start_new_session=True) as process:
        try:
            return process.wait(seconds)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            return None


class Copy:
    """A copy of the tree with a build of its own."""

    def __init__(self, tree, options):
        self.tree = tempfile.mkdtemp(prefix="loopwise_faults_")
        self.build = os.path.join(self.tree, "build", "faults")
        self.test = ["ctest", "--stop-on-failure", "--timeout", str(options.timeout), "-E", options.without]
        files = subprocess.check_output(["git", "ls-files", "-z"], cwd=tree, text=True).split("\0")
        for path in filter(lambda name: os.path.isfile(os.path.join(tree, name)), files):
            os.makedirs(os.path.dirname(os.path.join(self.tree, path)), exist_ok=True)
            shutil.copy(os.path.join(tree, path), os.path.join(self.tree, path))
        self.log = open(os.path.join(self.tree, "log"), "w+", encoding="utf-8", errors="replace")
        configure = ["cmake", "-G", "Ninja", "-S", self.tree, "-B", self.build, "-DCMAKE_BUILD_TYPE=Faults",
                     "-DCMAKE_CXX_FLAGS=-O1", "-DLOOPWISE_BENCHMARKS=OFF", "-DLOOPWISE_EXAMPLES=OFF",
                     "-DLOOPWISE_INSTALL=OFF"] + options.cmake
        if run(configure, self.tree, self.log, 600) or self.verdict() != "not seen":
            self.log.seek(0)
            print("Without any fault it does not pass:\n" + self.log.read()[-3000:], file=sys.stderr)
            os._exit(1)

    def verdict(self):
        """What becomes of the copy as it is now."""
        if run(["cmake", "--build", self.build, "-j", "1"], self.tree, self.log, 900) != 0:
            return "does not build"
        start = self.log.seek(0, os.SEEK_END)
        if run(self.test, self.build, self.log, 3600) == 0:
            return "not seen"
        self.log.seek(start)
        failed = re.findall(r"Test +#\d+: (\S+) .*\*\*\*", self.log.read())
        return "seen by " + ", ".join(failed)

    def try_out(self, fault):
        """The verdict on one fault; the file is as before afterwards."""
        path, number, line = fault
        name = os.path.join(self.tree, path)
        with open(name, encoding="utf-8") as file:
            before = file.readlines()
        for lines in before[:number] + [line] + before[number + 1:], before:
            with open(name, "w", encoding="utf-8") as file:
                file.writelines(lines)
            if lines is not before:
                result = self.verdict()
        return before[number], result


def main():
    here = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=60, help="how many faults")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=1, help="how many copies at the same time")
    parser.add_argument("--only", action="append", help="a file or folder to put faults into; src by default")
    parser.add_argument("--tree", default=here, help="the checkout to try; this one by default")
    parser.add_argument("--timeout", type=int, default=120, help="seconds until a test counts as hanging")
    parser.add_argument("--without", default="package|abi|readme|builds_by_hand", help="tests to leave out")
    parser.add_argument("--cmake", action="append", default=[], help="a further argument for configuring")
    options = parser.parse_args()

    chance = random.Random(options.seed)
    files = subprocess.check_output(["git", "ls-files", *(options.only or ["src"])], cwd=options.tree, text=True)
    faults = []
    for path in filter(lambda name: name.endswith((".cpp", ".hpp", ".inl", ".h")), files.split()):
        all_of_file = faults_of(options.tree, path)
        faults += chance.sample(all_of_file, min(len(all_of_file), MOST_PER_FILE))
    faults = chance.sample(faults, min(len(faults), options.count))
    with open(os.path.join(here, "tests", "data", "equivalent_faults.txt"), encoding="utf-8") as file:
        equivalent = {tuple(line.split(" | ")[:2]) for line in file if not line.startswith("#")}

    waiting, counts, lock = queue.Queue(), {}, threading.Lock()
    for fault in faults:
        waiting.put(fault)

    def work():
        copy = Copy(options.tree, options)
        while True:
            try:
                fault = waiting.get_nowait()
            except queue.Empty:
                shutil.rmtree(copy.tree)
                return
            start = time.monotonic()
            before, result = copy.try_out(fault)
            path, number, line = fault
            if result == "not seen" and (path, line.strip()) in equivalent:
                result = "changes nothing"
            with lock:
                kind = result.split(" by ")[0]
                counts[kind] = counts.get(kind, 0) + 1
                print(f"{result} ({time.monotonic() - start:.0f} s): {path}:{number + 1}\n"
                      f"    - {before.strip()}\n    + {line.strip()}", flush=True)

    workers = [threading.Thread(target=work) for _ in range(options.jobs)]
    for worker in workers:
        worker.start()
    for worker in workers:
        worker.join()
    seen, missed = counts.get("seen", 0), counts.get("not seen", 0)
    print(f"{len(faults)} faults: " + ", ".join(f"{count} {kind}" for kind, count in sorted(counts.items())))
    print(f"seen of those that change something: {seen} of {seen + missed}, {100 * seen / max(1, seen + missed):.1f} in 100")
    return missed > 0


if __name__ == "__main__":
    sys.exit(main())
