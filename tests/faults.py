#!/usr/bin/env python3
# How many small faults in the sources the tests see: puts one random fault at a time (an operator, a bound, a
# constant) into a copy of the tree, builds it and runs the tests until one fails or hangs. Faults that change
# nothing that is promised stand in data/equivalent_faults.txt.
#
#     tests/faults.py --count 80 --seed 1 --jobs 2
#     tests/faults.py --only src/closure --count 20 --tree /another/checkout
import argparse
import os
import pathlib
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
from concurrent import futures

# What may stand in a line, and what may stand there instead. Binary operators have blanks around them.
SWAPS = {
    " < ": (" <= ", " > "), " <= ": (" < ",), " > ": (" >= ", " < "), " >= ": (" > ",), " == ": (" != ",),
    " != ": (" == ",), " + ": (" - ",), " - ": (" + ",), " * ": (" / ",), " / ": (" * ",), " % ": (" / ",),
    " += ": (" -= ",), " -= ": (" += ",), " && ": (" || ",), " || ": (" && ",), " & ": (" | ",),
    " | ": (" & ",),
    " << ": (" >> ",), " >> ": (" << ",), "++": ("--",), "--": ("++",), "!": ("",), "true": ("false",),
    "false": ("true",), "begin()": ("end()",), "end()": ("begin()",), "front()": ("back()",),
    "back()": ("front()",),
    "std::min": ("std::max",), "std::max": ("std::min",), "floor": ("ceil",), "break;": ("",),
    " and ": (" or ",), " or ": (" and ",), "True": ("False",), "False": ("True",), " is not ": (" is ",),
}
TOKEN = re.compile("|".join(re.escape(swap) for swap in sorted(SWAPS, key=len, reverse=True)) +
                   r"|(?<![\w.'])\d[\w.']*(?:(?<=e)-\d+)?")
SKIPPED = re.compile(r"^\s*(//|#|\*|static_assert|template|using|namespace)|\| None")
NOT_CODE = re.compile(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])\'|//.*')
LONG_TEXT = re.compile(r'R"\(.*?\)"|""".*?"""', re.DOTALL)
MOST_PER_FILE = 60  # a table of numbers must not take all the faults
CONFIGURE = ["cmake", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Faults", "-DCMAKE_CXX_FLAGS=-O1",
             "-DLOOPWISE_BENCHMARKS=OFF", "-DLOOPWISE_EXAMPLES=OFF", "-DLOOPWISE_INSTALL=OFF"]


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


def faults_of(path):
    """All faults of a file, as (path, line number, the line before, the line with the fault)."""
    text = pathlib.Path(path).read_text(encoding="utf-8")
    blank = LONG_TEXT.sub(lambda match: re.sub(r"[^\n]", "\0", match[0]), text).split("\n")
    for number, (line, code) in enumerate(zip(text.split("\n"), blank)):
        code = "" if SKIPPED.search(line) else NOT_CODE.sub(lambda match: "\0" * len(match[0]), code)
        for match in TOKEN.finditer(code):
            for new in replacements(match[0]):
                yield path, number, line, line[:match.start()] + new + line[match.end():]


def run(command, folder, log, seconds=900):
    """The return code, or None after the time; nothing that the command started stays behind."""
    environment = {**os.environ, "TEST_TMPDIR": folder + "/"}
    with subprocess.Popen(command, cwd=folder, env=environment, stdout=log, stderr=log,
                          start_new_session=True) as process:
        try:
            return process.wait(seconds)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)


class Copy:
    """A copy of the tree with a build of its own."""

    def __init__(self, options):
        self.folder = tempfile.TemporaryDirectory(prefix="loopwise_faults_")
        self.tree = self.folder.name
        self.build = os.path.join(self.tree, "build")
        self.test = ["ctest", "--stop-on-failure", "--timeout", str(options.timeout), "-E", options.without]
        for path in filter(os.path.isfile, listed()):
            os.makedirs(os.path.dirname(os.path.join(self.tree, path)), exist_ok=True)
            shutil.copy(path, os.path.join(self.tree, path))
        self.log = open(os.path.join(self.tree, "log"), "w+", encoding="utf-8", errors="replace")
        configure = [*CONFIGURE, *options.cmake, "-B", self.build]
        if run(configure, self.tree, self.log) or self.verdict() != "not seen":
            print("It does not pass without any fault:", self.log.name, file=sys.stderr)
            os._exit(2)

    def verdict(self):
        """What becomes of the copy as it is now."""
        if run(["cmake", "--build", self.build, "-j", "1"], self.tree, self.log) != 0:
            return "does not build"
        start = self.log.seek(0, os.SEEK_END)
        if run(self.test, self.build, self.log) == 0:
            return "not seen"
        self.log.seek(start)
        return "seen by " + ", ".join(re.findall(r"Test +#\d+: (\S+) .*\*\*\*", self.log.read()))

    def verdict_on(self, fault):
        """The same with the fault; the file is as before afterwards."""
        file = pathlib.Path(self.tree, fault[0])
        before = file.read_text(encoding="utf-8")
        lines = before.split("\n")
        lines[fault[1]] = fault[3]
        file.write_text("\n".join(lines), encoding="utf-8")
        start, verdict = time.monotonic(), self.verdict()
        file.write_text(before, encoding="utf-8")
        return verdict, time.monotonic() - start


def listed(*folders):
    """Tracked files, without the tests of Python."""
    files = subprocess.check_output(["git", "ls-files", *folders], text=True).split()
    return [file for file in files if "/tests/" not in file] if folders else files


def main():
    tests = os.path.dirname(os.path.abspath(__file__))
    parser = argparse.ArgumentParser()
    parser.add_argument("--count", type=int, default=60, help="how many faults")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=1, help="how many copies at the same time")
    parser.add_argument("--only", action="append", help="a file or folder to put faults into; src by default")
    parser.add_argument("--tree", default=os.path.dirname(tests), help="the checkout; this one by default")
    parser.add_argument("--timeout", type=int, default=120, help="seconds until a test counts as hanging")
    parser.add_argument("--without", default="package|abi|readme|builds_by_hand", help="tests to leave out")
    parser.add_argument("--cmake", action="append", default=[], help="a further argument for configuring")
    options = parser.parse_args()
    with open(os.path.join(tests, "data", "equivalent_faults.txt"), encoding="utf-8") as file:
        equivalent = {tuple(line.split(" | ")[:2]) for line in file}
    os.chdir(options.tree)

    chance, faults = random.Random(options.seed), []
    for path in filter(re.compile(r"\.(cpp|hpp|inl|py)$").search, listed(*(options.only or ["src"]))):
        of_file = list(faults_of(path))
        faults += chance.sample(of_file, min(len(of_file), MOST_PER_FILE))
    faults = chance.sample(faults, min(len(faults), options.count))

    counts, here = {"seen": 0, "not seen": 0}, threading.local()

    def prepare():
        here.copy = Copy(options)

    with futures.ThreadPoolExecutor(options.jobs, initializer=prepare) as pool:
        verdicts = pool.map(lambda fault: here.copy.verdict_on(fault), faults)
        for (path, number, before, line), (verdict, seconds) in zip(faults, verdicts):
            if verdict == "not seen" and (path, line.strip()) in equivalent:
                verdict = "changes nothing"
            kind = verdict.split(" by ")[0]
            counts[kind] = counts.get(kind, 0) + 1
            lines = f"    - {before.strip()}\n    + {line.strip()}"
            print(f"{verdict} ({seconds:.0f} s): {path}:{number + 1}\n{lines}", flush=True)
    of_interest = counts["seen"] + counts["not seen"]
    print(", ".join(f"{count} {kind}" for kind, count in counts.items()))
    print(f"of those that change something, {100 * counts['seen'] / max(1, of_interest):.1f} in 100 are seen")
    return counts["not seen"] > 0


if __name__ == "__main__":
    sys.exit(main())
