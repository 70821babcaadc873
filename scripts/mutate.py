"""Tries mutants of the library against its tests; see mutation.sh for the usage.

Each worker has a copy of the tree with a build of its own. It writes a mutant into its copy, builds
the shared library and runs the test programs that load it; if these notice nothing, it builds and
runs the white-box tests, which link the library's objects. The program that noticed most mutants of
a file goes first. What came of a mutant goes into a log at once, so an interrupted run is taken up.

tests/mutation/equivalent.txt lists the mutants that change nothing that could be noticed.
"""

import argparse
import collections
import json
import os
import pathlib
import queue
import random
import resource
import shutil
import subprocess
import sys
import threading
import time

from mutants import mutants_of

FOLDERS = ("catalogue", "analyser", "standards", "plain_c")
HOME = pathlib.Path("build/mutation")
EQUIVALENT = pathlib.Path("tests/mutation/equivalent.txt")
WHITE_BOX = (
    "analyser_test",
    "ebu_r123_evaluation_test",
    "layout_description_random_test",
    "track_number_counter_test",
)
# Each of its tests asks for a process that has just started, as under ctest.
APART = "track_number_counter_test"
# Long tests that notice what shorter ones notice.
FILTER = "-SingleChanges*:WholeItems*:*EveryShortText*"
ROUNDS = "4"  # of the random tests, in percent
MEMORY = 4 << 30
# Read once, since most of the time goes into compiling.
PRECOMPILED = """
target_precompile_headers(kestrel_objects PRIVATE <algorithm> <array> <cstdint> <iterator> <memory>
  <numeric> <optional> <span> <stdexcept> <string> <string_view> <utility> <vector>)
"""


def all_mutants(files):
    for folder in FOLDERS:
        for path in sorted(pathlib.Path(folder).iterdir()):
            if path.suffix in (".cc", ".h") and (not files or str(path) in files):
                yield from mutants_of(str(path), path.read_text(encoding="utf-8"))


def equivalents(mutants):
    """Mutant -> why it is equivalent; "*" in the list stands for every change of the line."""
    reasons, listed = {}, {}
    for line in EQUIVALENT.read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            *parts, reason = line.split(" ;; ")
            listed["|".join(parts)] = reason
    used = set()
    for mutant in mutants:
        for key in (mutant.key(), f"{mutant.file}|{mutant.before.strip()}|*"):
            if key in listed:
                reasons[mutant] = listed[key]
                used.add(key)
    return reasons, [key for key in listed if key not in used]


class Log:
    """What came of the mutants tried so far, one line of JSON each."""

    def __init__(self, path):
        self._path, self._lock = path, threading.Lock()
        self.results = {}
        if path.exists():
            for line in path.read_text(encoding="utf-8").splitlines():
                entry = json.loads(line)
                self.results[entry["key"]] = entry

    def add(self, mutant, result, by, seconds):
        entry = {"key": mutant.key(), "result": result, "by": by, "seconds": round(seconds, 1)}
        with self._lock:
            self.results[entry["key"]] = entry
            with open(self._path, "a", encoding="utf-8") as out:
                out.write(json.dumps(entry) + "\n")
            print(f"{mutant.file}:{mutant.line}: {result}{' by ' + by if by else ''}", flush=True)
            if result != "not compiling":
                print(f"    {mutant.before.strip()}\n    {mutant.text.strip()}", flush=True)


def limited():
    os.setsid()
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))


class Worker:
    """A copy of the tree, its build, and the mutants of one file after the other."""

    def __init__(self, number, log):
        self._tree = (HOME / f"tree-{number}").resolve()
        self._build = (HOME / f"build-{number}").resolve()
        self._log = log
        self._limits = {}
        self._kills = collections.defaultdict(collections.Counter)

    def prepare(self):
        """Copies what has changed, builds it, and sees that every test passes."""
        self._tree.mkdir(parents=True, exist_ok=True)
        listed = subprocess.check_output(["git", "ls-files", "-co", "--exclude-standard"], text=True)
        for name in listed.splitlines():
            self._copy(name)
        flags = "-O1 -w -D_GLIBCXX_ASSERTIONS"
        self._run("cmake", "-S", self._tree, "-B", self._build, "-G", "Ninja", "-Wno-dev",
                  f"-DCMAKE_CXX_FLAGS={flags}", "-DKESTREL_BUILD_HOST=OFF",
                  "-DKESTREL_TEST_PREFIX=mutation")
        self._run("cmake", "--build", self._build, "-j", "2")
        tests = self._build / "tests"
        programs = [p for p in tests.glob("**/*_test") if p.is_file() and os.access(p, os.X_OK)]
        for program in sorted(programs, key=lambda p: p.name):
            began = time.monotonic()
            if not self._passes(program, 600):
                sys.exit(f"mutation: {program.name} fails without any fault")
            self._limits[program] = 5 + 5 * (time.monotonic() - began)

    def _copy(self, name):
        source, target = pathlib.Path(name), self._tree / name
        content = source.read_bytes() + (PRECOMPILED.encode() if name == "CMakeLists.txt" else b"")
        if not target.exists() or target.read_bytes() != content:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(content)
            shutil.copymode(source, target)

    def _run(self, *command):
        done = subprocess.run([str(word) for word in command], capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(f"mutation: {command[0]} fails\n{done.stdout[-2000:]}{done.stderr[-2000:]}")

    def _builds(self, *targets):
        command = ["ninja", "-C", str(self._build), *targets]
        return subprocess.run(command, capture_output=True).returncode == 0

    def _passes(self, program, limit):
        if program.name != APART:
            return self._passes_filter(program, FILTER, limit)
        listed = subprocess.run([str(program), "--gtest_list_tests"], capture_output=True, text=True)
        tests = [line.strip() for line in listed.stdout.splitlines() if line.startswith(" ")]
        return bool(tests) and all(self._passes_filter(program, f"*.{test}", limit) for test in tests)

    def _passes_filter(self, program, tests, limit):
        command = [str(program), f"--gtest_filter={tests}", "--gtest_fail_fast", "--gtest_brief=1"]
        process = subprocess.Popen(
            command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, preexec_fn=limited,
            env=os.environ | {"KESTREL_TEST_ROUNDS": ROUNDS}, cwd=self._build)
        try:
            return process.wait(limit) == 0
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
            return False

    def try_all(self, file, mutants):
        target = self._tree / file
        original = target.read_text(encoding="utf-8")
        try:
            for mutant in mutants:
                lines = original.split("\n")
                lines[mutant.line - 1] = mutant.text
                target.write_text("\n".join(lines), encoding="utf-8")
                began = time.monotonic()
                result, by = self._judge(file)
                self._log.add(mutant, result, by, time.monotonic() - began)
        finally:
            target.write_text(original, encoding="utf-8")

    def _judge(self, file):
        if not self._builds("kestrel"):
            return "not compiling", ""
        kills = self._kills[file]
        for white in (False, True) if file != "standards/ebu_r123_evaluation.cc" else (True, False):
            if white and not self._builds(*WHITE_BOX):
                return "not compiling", ""
            programs = [p for p in self._limits if (p.name in WHITE_BOX) == white]
            for program in sorted(programs, key=lambda p: (-kills[p], self._limits[p])):
                if not self._passes(program, self._limits[program]):
                    kills[program] += 1
                    return "killed", program.name
        return "survived", ""


def work(number, log, files, failures):
    try:
        worker = Worker(number, log)
        worker.prepare()
        while True:
            file, mutants = files.get_nowait()
            worker.try_all(file, mutants)
    except queue.Empty:
        pass
    except BaseException as error:  # a worker that stops early must not look like one that is done
        failures.append(error)


def options():
    parser = argparse.ArgumentParser()
    parser.add_argument("--sample", type=int, default=0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--file", action="append", default=[])
    parser.add_argument("--jobs", type=int, default=1)
    parser.add_argument("--again", action="store_true")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--report", action="store_true")
    return parser.parse_args()


def report(tried, log, reasons):
    results = {m: log.results[m.key()]["result"] for m in tried if m.key() in log.results}
    counts = collections.Counter(results.values())
    survivors = [mutant for mutant, result in results.items() if result == "survived"]
    for mutant in survivors:
        print(f"survived: {mutant.file}:{mutant.line}: {mutant.kind}")
        print(f"    {mutant.before.strip()}\n    {mutant.text.strip()}")
    noticed = counts["killed"] + counts["survived"]
    print(f"{len(results)} of {len(tried)} mutants tried: {counts['killed']} killed, {counts['survived']} survived, "
          f"{counts['not compiling']} not compiling; {len(reasons)} more are equivalent")
    print(f"score {100 * counts['killed'] / max(noticed, 1):.2f} %")
    return 1 if survivors else 0


def main():
    asked = options()
    found = list({mutant.key(): mutant for mutant in all_mutants(asked.file)}.values())
    chosen = found
    if asked.sample and asked.sample < len(found):
        in_order = sorted(found, key=lambda mutant: mutant.key())
        chosen = random.Random(asked.seed).sample(in_order, asked.sample)
    reasons, stale = equivalents(found)
    if stale and not asked.file:
        sys.exit("mutation: equivalent.txt lists what is no mutant:\n  " + "\n  ".join(stale))
    if asked.list:
        for mutant in sorted(chosen, key=lambda m: (m.file, m.line)):
            print(f"{mutant.file}:{mutant.line}: {mutant.kind}: {mutant.text.strip()}")
        return 0
    HOME.mkdir(parents=True, exist_ok=True)
    equivalent = [mutant for mutant in chosen if mutant in reasons]
    log = Log(HOME / "log.jsonl")
    tried = [mutant for mutant in chosen if mutant not in reasons]
    if asked.report:
        return report(tried, log, equivalent)
    groups, survived = collections.defaultdict(list), set()  # what survived goes first
    for mutant in sorted(tried, key=lambda m: (m.file, m.line)):
        known = log.results.get(mutant.key(), {"result": ""})["result"]
        if asked.again and known == "survived":
            survived.add(mutant.file)
            groups[mutant.file].insert(0, mutant)
        elif not known:
            groups[mutant.file].append(mutant)
    files = queue.Queue()
    for group in sorted(groups.items(), key=lambda item: (item[0] not in survived, -len(item[1]))):
        files.put(group)
    failures = []
    workers = [threading.Thread(target=work, args=(number, log, files, failures))
               for number in range(min(asked.jobs, files.qsize()))]
    for worker in workers:
        worker.start()
    for worker in workers:
        worker.join()
    if failures:
        sys.exit(f"mutation: {failures[0]}")
    return report(tried, log, equivalent)


if __name__ == "__main__":
    sys.exit(main())
