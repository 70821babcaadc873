#!/usr/bin/env python3
"""Writes docs/pictures/rooms.svg: the rooms of the host, and what each takes from the one below it.

usage: scripts/make-rooms-picture.py [--check]

With --check nothing is written: it fails where the picture is not what the tree says.

The order of the rooms and what they do are read from the table in host/README.md, all else from the
includes: an arrow for each that no chain of others replaces, beside it the headers that lead over
this border, those first that most files include. A room that includes one above it has no place.
"""
import collections
import importlib
import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
structure = importlib.import_module("make-structure-picture")

HOST = structure.ROOT / "host"
PICTURE = structure.ROOT / "docs" / "pictures" / "rooms.svg"
ROW = re.compile(r"^\| \[`(\w+)/`\]\([^)]*\) \| ([^|]*) \| ([^|]*) \|", re.MULTILINE)
INCLUDE = re.compile(r'^#include "host/(\w+)/([\w.]+)"', re.MULTILINE)

LEFT, TOP, WIDTH, HEIGHT, DOWN = 24, 24, 490, 58, 40
MOST_HEADERS = 4


def rooms():
    """Name, what it does, what leaves it; the first is the one above all others."""
    return ROW.findall((HOST / "README.md").read_text(encoding="utf-8"))


def headers_taken(room):
    """For each other room: how many files of this one include each of its headers."""
    taken = collections.defaultdict(collections.Counter)
    for file in sorted((HOST / room).glob("**/*")):
        if file.suffix in structure.SOURCES:
            for target, header in INCLUDE.findall(file.read_text(encoding="utf-8")):
                if target != room:
                    taken[target][header] += 1
    return taken


def top_of(row):
    return TOP + row * (HEIGHT + DOWN)


def box(row, name, does, leaves, targets):
    y = top_of(row)
    yield f'<rect class="box" x="{LEFT}" y="{y}" width="{WIDTH}" height="{HEIGHT}" rx="6"/>'
    yield f'<text class="name" x="{LEFT + 12}" y="{y + 20}">{name}/</text>'
    yield f'<text x="{LEFT + 110}" y="{y + 20}">{does}</text>'
    yield f'<text x="{LEFT + 110}" y="{y + 36}">gives {leaves}</text>'
    if targets:
        yield (f'<text class="soft" text-anchor="end" x="{LEFT + WIDTH - 12}" y="{y + HEIGHT - 7}">'
               f'{", ".join(targets)}</text>')


def arrow(row, headers):
    x, y = LEFT + 40, top_of(row) + HEIGHT
    yield structure.way([(x, y), (x, y + DOWN)], "includes")
    most = sorted(headers, key=lambda name: (-headers[name], name))
    words = ", ".join(most[:MOST_HEADERS]) + (", ..." if len(most) > MOST_HEADERS else "")
    yield f'<text class="soft" x="{x + 14}" y="{y + DOWN / 2 + 4:g}">{words}</text>'


def picture():
    told = rooms()
    names = [name for name, *_ in told]
    here = sorted(path.name for path in HOST.iterdir() if any(path.glob("*.h")))
    if sorted(names) != here:
        sys.exit(f"rooms: host/README.md tells of {sorted(names)}, the tree has {here}")
    taken = {name: headers_taken(name) for name in names}
    includes = {name: [target for target in names if taken[name][target]] for name in names}
    chain = list(zip(names, names[1:]))
    if sorted(structure.arrows(includes)) != sorted(chain):
        sys.exit(f"rooms: these arrows are no chain: {sorted(structure.arrows(includes))}")
    width, height = LEFT * 2 + WIDTH, top_of(len(names)) - DOWN + 40
    yield (f'<svg xmlns="http://www.w3.org/2000/svg" role="img" aria-labelledby="title" '
           f'width="{width}" height="{height}" viewBox="0 0 {width} {height}">')
    yield '<title id="title">The rooms of the host and what each takes from the one below</title>'
    yield from [structure.STYLE, structure.HEAD, '<rect class="page" width="100%" height="100%"/>']
    for row, (name, does, leaves) in enumerate(told):
        yield from box(row, name, does, leaves, includes[name])
    for row, (name, target) in enumerate(chain):
        yield from arrow(row, taken[name][target])
    yield (f'<text class="soft" x="{LEFT}" y="{height - 16}">An arrow: includes, beside it the '
           'headers that most files take. At the foot: all its includes.</text>')
    yield "</svg>"


def main():
    text = "\n".join(picture()) + "\n"
    if "--check" not in sys.argv[1:]:
        PICTURE.write_text(text, encoding="utf-8")
    elif not PICTURE.exists() or PICTURE.read_text(encoding="utf-8") != text:
        sys.exit("docs/pictures/rooms.svg is stale: run scripts/make-rooms-picture.py")
    print(f"{text.count('class=' + chr(34) + 'box')} rooms, "
          f"{text.count('class=' + chr(34) + 'includes')} arrows")


if __name__ == "__main__":
    main()
