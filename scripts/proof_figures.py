"""Writes docs/proof-figures.md from the logs of scripts/proof.sh.

usage: proof_figures.py LOG...

A log begins with five lines: what is proven, the command, the date, the commit, how it ended. Of
the rest the lines with figures are taken, or the last one.
"""

import pathlib
import re
import sys

FIGURES = (
    re.compile(r"\d+% tests passed.*"),
    re.compile(r"Total Test time.*"),
    re.compile(r"(?:lines|branches|conditions) +\d+ of +\d+ .*"),
    re.compile(r"\d+ of \d+ mutants tried: .*"),
    re.compile(r"score [\d.]+ %"),
)
HEAD = """# Proof: the figures

Written by `scripts/proof.sh`, which runs what [proof.md](proof.md) tells of; do not change it by
hand. A row is renewed when its proof is run again.

| what | command | figures | ended | date | commit |
|---|---|---|---|---|---|
"""


def figures_of(lines):
    """The last line of each kind: a measure may have been taken twice."""
    found = {}
    for line in lines:
        kind = next((pattern for pattern in FIGURES if pattern.fullmatch(line)), None)
        if kind:
            found[line.split()[0] if kind is FIGURES[2] else kind] = line
    lasts = list(found.values()) or [line for line in lines if line.strip()][-1:]
    return "; ".join(re.sub(r"\s+", " ", line).strip() for line in lasts)


def row(log):
    lines = pathlib.Path(log).read_text(encoding="utf-8", errors="replace").splitlines()
    what, command, date, commit, ended = lines[:5]
    cells = (what, f"`{command}`", figures_of(lines[5:]), ended, date, commit)
    return "| " + " | ".join(cell.replace("|", "\\|") for cell in cells) + " |"


def main():
    print(HEAD + "\n".join(row(log) for log in sys.argv[1:]))


if __name__ == "__main__":
    main()
