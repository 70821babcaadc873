"""Judges the counts that llvm-cov exports.

usage: check_coverage.py COUNTS.json ROOM...

Every line, branch and condition of the library must be covered, of the rooms of the host that judge
a file every line and branch. Of its other rooms 95 % of the lines, and what is missed must stand in
tests/coverage/missed.txt with its reason:

  file ;; first line of the stretch that is missed ;; reason

An entry of which no missed stretch begins any more fails. Files are named without their room.

A template is covered when its instantiations together are. There is one exclusion, and it needs no
list: a consteval function runs in the compiler only, so no test can execute it.
"""

import json
import os
import pathlib
import re
import sys

MISSED = pathlib.Path("tests/coverage/missed.txt")
SEEN_OUTSIDE = re.compile(r"host(?!/judging|/evidence)(?:/|$)")
WANTED_LINES = 95  # percent, of the rooms of the host that are seen from outside
COMMENT = re.compile(r"//[^\n]*")
CODE = 0  # the kind of a region that is neither skipped nor a macro


class Sources:
    """The lines of the source files, read once each."""

    def __init__(self):
        self._texts = {}

    def lines(self, file):
        if file not in self._texts:
            with open(file, encoding="utf-8") as source:
                self._texts[file] = source.read().split("\n")
        return self._texts[file]

    def between(self, file, place):
        line, begin, _, end = place
        return self.lines(file)[line - 1][begin - 1 : end - 1]

    def is_consteval(self, file, line, column):
        """Whether the function whose body begins there is declared consteval."""
        before = self.lines(file)[max(0, line - 5) : line - 1] + [
            self.lines(file)[line - 1][: column - 1]
        ]
        head = re.split(r"[;{}]", COMMENT.sub("", "\n".join(before)))[-1]
        return "consteval" in head.split("(")[0] or head.rstrip().endswith("consteval")


class Counts:
    """What was covered, by file and place, over all instantiations."""

    def __init__(self, export, sources):
        self.lines, self.branches, self.conditions = {}, {}, {}
        self.excluded = 0
        files = {entry["filename"] for entry in export["files"]}
        for function in export["functions"]:
            self._add(function, files, sources)

    def _add(self, function, files, sources):
        names = function["filenames"]
        if names[0] not in files:
            return
        first = function["regions"][0]
        if sources.is_consteval(names[0], first[0], first[1]):
            self.excluded += 1
            return
        for line, executed in executed_lines(function["regions"]):
            if is_code(sources.lines(names[0])[line - 1]):
                merge(self.lines, (names[0], line), [executed])
        for branch in function["branches"]:
            merge(self.branches, (names[branch[6]], *branch[:4]), [n > 0 for n in branch[4:6]])
        for decision in function.get("mcdc_records", []):
            merge(self.conditions, (names[0], *decision[:4]), decision[-1])


def is_code(text):
    return text.strip() and not text.lstrip().startswith("//")


def executed_lines(regions):
    """(line, whether it was executed) of a function whose first region is its body.

    A line belongs to the regions that begin in it and to the innermost one that it begins in.
    """
    code = [region for region in regions if region[7] == CODE and region[5] == 0]
    for line in range(code[0][0], code[0][2] + 1):
        around = [r for r in code if r[0] < line and (r[2], r[3]) > (line, 1)]
        counts = [region[4] for region in code if region[0] == line]
        counts += [max(around, key=lambda r: (r[0], r[1]))[4]] if around else []
        yield line, any(counts)


def merge(table, place, covered):
    table[place] = [a or b for a, b in zip(table.get(place, covered), covered)]


def missed_of(counts, sources):
    for (file, line), (executed,) in counts.lines.items():
        if not executed:
            yield file, line, "never executed"
    for (file, *place), ways in counts.branches.items():
        for covered, way in zip(ways, ("true", "false")):
            if not covered:
                yield file, place[0], f"never {way}: {sources.between(file, place)}"
    for (file, *place), conditions in counts.conditions.items():
        for number, covered in enumerate(conditions, start=1):
            if not covered:
                yield file, place[0], f"condition {number} never decides alone"


def say(what, table):
    flags = [flag for flags in table.values() for flag in flags]
    share = 100 * sum(flags) / max(len(flags), 1)
    if flags:
        print(f"{what:<10} {sum(flags):>5} of {len(flags):>5}  {share:6.2f} %")
    return share


def without_room(file):
    """host/verdict.cc for host/judging/verdict.cc: a file is moved more often than renamed."""
    parts = pathlib.PurePath(file).parts
    return f"{parts[0]}/{parts[-1]}"


def missed_stretches(counts, sources):
    """(file, first line, last line) of lines never executed without an executed one between."""
    stretch = None
    for (file, line), (executed,) in sorted(counts.lines.items()):
        if stretch and (executed or stretch[0] != file):
            yield stretch
            stretch = None
        if not executed:
            stretch = (file, stretch[1] if stretch else line, line)
    if stretch:
        yield stretch


def listed():
    """(file, first line) of what may be missed."""
    if not MISSED.exists():
        return set()
    entries = set()
    for line in MISSED.read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            file, first, _reason = line.split(" ;; ")
            entries.add((file, first))
    return entries


def judge_seen_outside(counts, sources):
    """Whether enough lines are executed and the others are in the list."""
    entries, seen, faults = listed(), set(), 0
    for file, first, last in missed_stretches(counts, sources):
        entry = without_room(os.path.relpath(file)), sources.lines(file)[first - 1].strip()
        seen.add(entry)
        if entry not in entries:
            print(f"{os.path.relpath(file)}:{first} to {last}: never executed: {entry[1]}")
            faults += 1
    measured = {without_room(os.path.relpath(file)) for file, _ in counts.lines}
    gone = {file for file, _ in entries if not any(pathlib.Path("host").rglob(file[5:]))}
    for file, first in sorted(entries - seen):
        if file in measured | gone:
            print(f"{MISSED}: not missed any more: {file} ;; {first}")
            faults += 1
    say("branches", counts.branches)
    share = say("lines", counts.lines)
    if share < WANTED_LINES:
        print(f"less than {WANTED_LINES} % of the lines")
    return faults == 0 and share >= WANTED_LINES


def judge_all(counts, sources):
    """Whether everything is covered."""
    missed = sorted(missed_of(counts, sources))
    for file, line, why in missed:
        print(f"{os.path.relpath(file)}:{line}: {why}")
    say("lines", counts.lines)
    say("branches", counts.branches)
    say("conditions", counts.conditions)
    print(f"left out: {counts.excluded} consteval functions")
    return not missed


def main():
    sources = Sources()
    with open(sys.argv[1], encoding="utf-8") as export:
        counts = Counts(json.load(export)["data"][0], sources)
    rooms = sys.argv[2:]
    print(" ".join(rooms))
    seen_outside = any(SEEN_OUTSIDE.match(room) for room in rooms)
    return 0 if (judge_seen_outside if seen_outside else judge_all)(counts, sources) else 1


if __name__ == "__main__":
    sys.exit(main())
