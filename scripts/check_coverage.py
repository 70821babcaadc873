"""Judges the counts that llvm-cov exports: every line, branch and condition must be covered.

usage: check_coverage.py COUNTS.json

A template is covered when its instantiations together are. There is one exclusion, and it needs no
list: a consteval function runs in the compiler only, so no test can execute it.
"""

import json
import os
import re
import sys

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
        for decision in function["mcdc_records"]:
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
    share = 100 * sum(flags) / len(flags)
    print(f"{what:<10} {sum(flags):>5} of {len(flags):>5}  {share:6.2f} %")


def main():
    sources = Sources()
    with open(sys.argv[1], encoding="utf-8") as export:
        counts = Counts(json.load(export)["data"][0], sources)
    missed = sorted(missed_of(counts, sources))
    for file, line, why in missed:
        print(f"{os.path.relpath(file)}:{line}: {why}")
    say("lines", counts.lines)
    say("branches", counts.branches)
    say("conditions", counts.conditions)
    print(f"left out: {counts.excluded} consteval functions")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
