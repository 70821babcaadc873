"""Copies of the tree in which mutants are built and tested: one plan for the library, one for the
host.

The library is a shared one: a mutant costs one unit, one link and the programs that load it; only
where these notice nothing the white-box tests are linked, which hold its objects. The host is a
static library: each unit is compiled on its own, without optimisation and with a precompiled
header, and only the programs are linked that hold something of it.
"""

import collections
import fcntl
import os
import pathlib
import re
import resource
import shutil
import subprocess
import time

HOME = pathlib.Path("build/mutation")
# Each of its tests asks for a process that has just started, as under ctest.
APART = "track_number_counter_test"
MEMORY = 4 << 30
ROUNDS = "4"  # of the random tests, in percent
# Read once, since most of the time goes into compiling.
STANDARD = "<algorithm> <array> <cstdint> <iterator> <memory> <numeric> <optional> <span> " \
    "<stdexcept> <string> <string_view> <utility> <vector>"
PRECOMPILED = f"""
target_precompile_headers(kestrel_objects PRIVATE {STANDARD})
if(TARGET kestrel_host_parts)
  target_precompile_headers(kestrel_host_parts PRIVATE {STANDARD} <filesystem> <functional> <map>
    <fmt/format.h> <nlohmann/json.hpp>)
endif()
"""


class Failure(Exception):
    """The build or the tests fail without any fault."""


class Plan:
    """How one part of Kestrel is built, and which programs may notice a fault in it."""

    name, room = "", ""
    options = ()
    left_out = "-"  # long tests that notice what shorter ones notice, by GoogleTest's filter

    def targets(self, build):
        """What to build before the first mutant."""
        raise NotImplementedError

    def stages(self, file, build):
        """(targets to build, programs to run) in turn, until one notices."""
        raise NotImplementedError

    def is_limited(self, program, build):
        """Whether the program may take no more memory than MEMORY."""
        return True


class LibraryPlan(Plan):
    name = "library"
    options = ("-DKESTREL_BUILD_HOST=OFF",)
    left_out = "-SingleChanges*:WholeItems*:*EveryShortText*"

    def targets(self, build):
        return ["kestrel", *build.programs(r"^tests/(?!host/)")]

    def stages(self, file, build):
        programs = build.programs(r"^tests/(?!host/)")
        white = [p for p in programs if build.needs(p, "kestrel_objects.dir/")]
        black = [p for p in programs if p not in white]
        if file == "standards/ebu_r123_evaluation.cc":  # hardly reached from outside
            return [(white, white), (["kestrel"], black)]
        return [(["kestrel"], black), (white, white)]


class HostPlan(Plan):
    """Tests of the whole program count for the rooms whose work is seen there only."""

    name = "host"
    options = ("-DKESTREL_BUILD_HOST=ON", "-DKESTREL_HOST_BATCH=0", "-DKESTREL_HOST_OPTIONS=-O0")
    left_out = "-*Random*:*random*"
    seen_outside = re.compile(r"host/(?:basics|reading|reporting|scanning|commands)/")

    def __init__(self):
        self._stages = {}

    def targets(self, build):
        return self._parts(build) + (self._whole(build) if build.seen_outside else [])

    def is_limited(self, program, build):
        return not self._is_whole(program, build)  # a browser reserves more than there is

    def _parts(self, build):
        return [p for p in build.programs(r"^tests/host/") if not self._is_whole(p, build)]

    def _whole(self, build):
        return [p for p in build.programs(r"^tests/host/") if self._is_whole(p, build)]

    @staticmethod
    def _is_whole(program, build):
        """Whether it starts the program, or a browser for a page of it."""
        return program.endswith("/host_page_test") or build.needs(program, "|| host/kestrel")

    def stages(self, file, build):
        if file not in self._stages:
            reaching = [p for p in self._parts(build) if build.holds(p, file)]
            self._stages[file] = [(["kestrel_host_parts"], [])]
            self._stages[file] += [([program], [program]) for program in reaching]
            if self.seen_outside.match(file):
                whole = self._whole(build)
                self._stages[file].append((["host/kestrel", *whole], whole))
        return sorted(self._stages[file], key=lambda stage: build.order(file, stage[1][:1]))


class Build:
    """One copy of the tree with its build."""

    def __init__(self, number, plan, files):
        self._tree = (HOME / f"tree-{plan.name}-{number}").resolve()
        self._build = (HOME / f"build-{plan.name}-{number}").resolve()
        self._plan = plan
        self.seen_outside = any(HostPlan.seen_outside.match(file) for file in files)
        self._programs, self._needs, self._limits = [], {}, {}
        self._kills = collections.defaultdict(collections.Counter)

    def prepare(self):
        """Copies what has changed, builds it, and sees that every test passes."""
        self._tree.mkdir(parents=True, exist_ok=True)
        self._lock = open(f"{self._tree}.lock", "w", encoding="utf-8")
        try:
            fcntl.flock(self._lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError as error:
            raise Failure("another run is at work") from error
        listed = self._run("git", "ls-files", "-co", "--exclude-standard").splitlines()
        names = [name for name in listed if pathlib.Path(name).exists()]
        for name in names:
            self._copy(name)
        for path in self._tree.rglob("*"):  # what was moved away would still be found by globs
            if path.is_file() and str(path.relative_to(self._tree)) not in names:
                path.unlink()
        flags = "-O1 -w -D_GLIBCXX_ASSERTIONS"
        self._run("cmake", "-S", self._tree, "-B", self._build, "-G", "Ninja", "-Wno-dev",
                  f"-DCMAKE_CXX_FLAGS={flags}", "-DKESTREL_TEST_PREFIX=mutation",
                  *self._plan.options)
        self._read_programs()
        targets = self._plan.targets(self)
        self._run("cmake", "--build", self._build, "-j", "2", "--target", *targets)
        for program in [target for target in targets if target in self._programs]:
            began = time.monotonic()
            if not self._passes(program, 600):
                raise Failure(f"{program} fails without any fault")
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
            raise Failure(f"{command[0]} fails\n{done.stdout[-2000:]}{done.stderr[-2000:]}")
        return done.stdout

    def _read_programs(self):
        targets = self._run("ninja", "-C", self._build, "-t", "targets", "all")
        self._programs = sorted(set(re.findall(
            r"^(tests/\S*_test): CXX_EXECUTABLE_LINKER", targets, re.M)))
        for program in self._programs:
            self._needs[program] = self._run("ninja", "-C", self._build, "-t", "query", program)

    def programs(self, pattern):
        """The test programs whose names match."""
        return [program for program in self._programs if re.search(pattern, program)]

    def needs(self, program, name):
        """Whether the program is linked from, or after "||" made after, what has such a name."""
        return re.search(r"^ +" + re.escape(name) if name[0] == "|" else re.escape(name),
                         self._needs[program], re.M) is not None

    def holds(self, program, file):
        """Whether something of the unit is in the program; of a header that is not known."""
        units = list((self._build / "host").rglob(f"{pathlib.Path(file).name}.o"))
        if not units:
            return True
        exported = {name for kind, name in symbols_of(units[0]) if kind in "TDBR"}
        # A hidden one is local in a program.
        linked = {name for _, name in symbols_of(self._build / program)}
        return not exported or bool(exported & linked)

    def order(self, file, programs):
        """What goes first: the build without a program, then what noticed most, then the quick."""
        if not programs:
            return (0, 0, 0)
        return (1, -self._kills[file][programs[0]], self._limits.get(programs[0], 0))

    def _builds(self, targets):
        command = ["ninja", "-C", str(self._build), *targets]
        environment = os.environ | {"CCACHE_DISABLE": "1"}  # no mutant is built twice
        return subprocess.run(command, capture_output=True, env=environment).returncode == 0

    def _passes(self, program, limit):
        path = self._build / program
        before = limited if self._plan.is_limited(program, self) else os.setsid
        if path.name != APART:
            return self._passes_filter(path, self._plan.left_out, limit, before)
        listed = subprocess.run([str(path), "--gtest_list_tests"], capture_output=True, text=True)
        tests = [line.strip() for line in listed.stdout.splitlines() if line.startswith(" ")]
        return bool(tests) and all(
            self._passes_filter(path, f"*.{test}", limit, before) for test in tests)

    def _passes_filter(self, path, tests, limit, before):
        command = [str(path), f"--gtest_filter={tests}", "--gtest_fail_fast", "--gtest_brief=1"]
        process = subprocess.Popen(
            command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, preexec_fn=before,
            env=os.environ | {"KESTREL_TEST_ROUNDS": ROUNDS}, cwd=self._build)
        try:
            return process.wait(limit) == 0
        except subprocess.TimeoutExpired:
            return False
        finally:
            end_group(process)

    def try_all(self, mutants, tell):
        """Tries mutants of one file and tells of each (mutant, result, program, seconds)."""
        target = self._tree / mutants[0].file
        original = target.read_text(encoding="utf-8")
        try:
            for mutant in mutants:
                target.write_text(mutant.written_into(original), encoding="utf-8")
                began = time.monotonic()
                result, by = self._judge(mutant.file)
                tell(mutant, result, by, time.monotonic() - began)
        finally:
            target.write_text(original, encoding="utf-8")

    def _judge(self, file):
        kills = self._kills[file]
        for targets, programs in self._plan.stages(file, self):
            if not self._builds(targets):
                return "not compiling", ""
            for program in sorted(programs, key=lambda p: (-kills[p], self._limits[p])):
                if not self._passes(program, self._limits[program]):
                    kills[program] += 1
                    return "killed", program.rpartition("/")[2]
        return "survived", ""


def symbols_of(path):
    """(kind, name) of what a file defines, by the letters of nm."""
    listed = subprocess.run(
        ["nm", "--defined-only", str(path)], capture_output=True, text=True).stdout
    return {tuple(line.split()[-2:]) for line in listed.splitlines() if len(line.split()) > 2}


def limited():
    os.setsid()
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))


def end_group(process):
    """Ends the program and what it started; the group is its own."""
    try:
        os.killpg(process.pid, 9)
    except ProcessLookupError:
        pass
    process.wait()
