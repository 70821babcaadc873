#!/usr/bin/env python3
"""Writes docs/pictures/structure.svg: the folders, what each is for, and which includes which.

usage: scripts/make-structure-picture.py [--check]

With --check nothing is written: it fails where the picture is not what the tree says.

What a folder is for is read from "The house" in CONTRIBUTING.md, what it includes from its sources;
only the places of the boxes stand here. An arrow that others lead round is left out, and every box
names all that its folder includes. Places and ways are for the arrows that there are: a new one
must be given its way (WAYS), and a cycle has none.
"""
import pathlib
import re
import sys
import textwrap

ROOT = pathlib.Path(__file__).resolve().parent.parent
PICTURE = ROOT / "docs" / "pictures" / "structure.svg"
INCLUDE = re.compile(r'^ *# *include ["<]([a-z_]+)/', re.MULTILINE)
SOURCES = {".h", ".cc", ".c"}

WIDTH, HEIGHT, ACROSS, DOWN, MARGIN, LINE = 250, 92, 70, 38, 24, 15
# Column and row of each box.
PLACES = {
    "bench": (0, 0), "tests": (1, 0), "fuzz": (2, 0),
    "bindings": (0, 1), "plain_c": (1, 1), "host": (2, 1),
    "standards": (1, 2),
    "analyser": (1, 3),
    "examples": (0, 4), "catalogue": (1, 4),
    "docs": (0, 5), "api": (1, 5),
    "cmake": (0, 6), "packaging": (1, 6), "scripts": (2, 6),
}
LIBRARY = ["plain_c", "standards", "analyser", "catalogue", "api"]


def edge(folder, side, share=0.5):
    """A point on the edge of a box: its side, and how far along it."""
    column, row = PLACES[folder]
    left = MARGIN + column * (WIDTH + ACROSS)
    top = MARGIN + row * (HEIGHT + DOWN)
    across, down = left + share * WIDTH, top + share * HEIGHT
    return {"left": (left, down), "right": (left + WIDTH, down),
            "top": (across, top), "bottom": (across, top + HEIGHT)}[side]


def straight(source, side, target, other):
    return [edge(source, side), edge(target, other)]


def beside(source, target, share):
    """Out to the right, up or down between the columns, and on to the left edge of the target."""
    start, end = edge(source, "right"), edge(target, "left", share)
    middle = start[0] + ACROSS / 3
    return [start, (middle, start[1]), (middle, end[1]), end]


def round_the_corner(source, target):
    """Out at the bottom, then along to the right edge of the target."""
    start, end = edge(source, "bottom"), edge(target, "right")
    return [start, (start[0], end[1]), end]


def over(source, target):
    """Out at the bottom, along between the rows, and down into the target."""
    start, end = edge(source, "bottom", 0.8), edge(target, "top")
    middle = start[1] + DOWN / 3
    return [start, (start[0], middle), (end[0], middle), end]


WAYS = {
    ("bench", "tests"): straight("bench", "right", "tests", "left"),
    ("fuzz", "tests"): straight("fuzz", "left", "tests", "right"),
    ("tests", "plain_c"): straight("tests", "bottom", "plain_c", "top"),
    ("tests", "host"): over("tests", "host"),
    ("plain_c", "standards"): straight("plain_c", "bottom", "standards", "top"),
    ("standards", "analyser"): straight("standards", "bottom", "analyser", "top"),
    ("analyser", "catalogue"): straight("analyser", "bottom", "catalogue", "top"),
    ("catalogue", "api"): straight("catalogue", "bottom", "api", "top"),
    ("host", "api"): round_the_corner("host", "api"),
    ("docs", "api"): beside("docs", "api", 0.5),
    ("examples", "api"): beside("examples", "api", 0.25),
}


def purposes():
    """What each folder is for, by its name."""
    house = (ROOT / "CONTRIBUTING.md").read_text(encoding="utf-8").split("## The house")[1]
    lines = re.findall(r"^(\w+)/ +(.*)$", house.split("```")[1], re.MULTILINE)
    return {folder: text.replace("`", "") for folder, text in lines}


def included(folder, folders):
    """The other folders that the sources of one include; <kestrel/...> is api."""
    names = set()
    for file in (ROOT / folder).glob("**/*"):
        if file.suffix in SOURCES:
            names.update(INCLUDE.findall(file.read_text(encoding="utf-8")))
    names = {"api" if name == "kestrel" else name for name in names}
    return sorted(name for name in names & folders if name != folder)


def reached(folder, includes, on_the_way=()):
    """All folders that arrows lead to from one, which none may be led back to."""
    if folder in on_the_way:
        sys.exit(f"structure: {' includes '.join([*on_the_way, folder])}")
    far = set()
    for target in includes[folder]:
        far |= {target} | reached(target, includes, (*on_the_way, folder))
    return far


def arrows(includes):
    """The includes that no chain of other includes replaces."""
    for folder, targets in includes.items():
        for target in targets:
            others = [other for other in targets if other != target]
            if not any(target in reached(other, includes) for other in others):
                yield folder, target


def box(folder, purpose, targets):
    x, y = edge(folder, "left", 0)
    lines = textwrap.wrap(purpose, 36)
    if len(lines) > 3:
        sys.exit(f"structure: what CONTRIBUTING.md says of {folder} takes more than three lines")
    yield f'<rect class="box" x="{x}" y="{y:g}" width="{WIDTH}" height="{HEIGHT}" rx="6"/>'
    yield f'<text class="name" x="{x + 12}" y="{y + 21:g}">{folder}/</text>'
    for number, line in enumerate(lines):
        yield f'<text x="{x + 12}" y="{y + 38 + number * LINE:g}">{line}</text>'
    if targets:
        end = f"{x + WIDTH - 12}"
        words = ", ".join(targets)
        foot = f"{y + HEIGHT - 8:g}"
        yield f'<text class="soft" text-anchor="end" x="{end}" y="{foot}">{words}</text>'


def way(points, kind):
    words = " L".join(f"{x:g} {y:g}" for x, y in points)
    return f'<path class="{kind}" d="M{words}" marker-end="url(#head)"/>'


def library_frame():
    x, y = edge(LIBRARY[0], "left", 0)
    end = edge(LIBRARY[-1], "bottom", 1)
    yield (f'<rect class="frame" x="{x - 16}" y="{y - 16:g}" width="{WIDTH + 32}" '
           f'height="{end[1] - y + 42:g}" rx="10"/>')
    words = "one shared library, libkestrel-dll64"
    yield f'<text class="soft" x="{x}" y="{end[1] + 18:g}">{words}</text>'


def loads_the_library():
    """Python includes nothing: it loads the built library by its name."""
    text = (ROOT / "bindings/python/kestrel/_library.py").read_text(encoding="utf-8")
    if "ctypes" in text and "libkestrel-dll64" in text:
        x, y = edge("bindings", "right")
        yield way([(x, y), (x + ACROSS - 17, y)], "loads")


STYLE = """<style>
:root { color-scheme: light dark;
  --page: #ffffff; --ink: #1b1f24; --soft: #57606a; --line: #57606a; --panel: #f6f8fa;
  --frame: #e2ebf5; }
@media (prefers-color-scheme: dark) {
  :root { --page: #14171c; --ink: #e6e9ee; --soft: #a3adb9; --line: #a3adb9; --panel: #1d2229;
    --frame: #26364a; } }
text { font: 12px system-ui, "Segoe UI", "DejaVu Sans", sans-serif; fill: var(--ink); }
text.name { font-size: 14px; font-weight: 600; }
text.soft { font-size: 11px; fill: var(--soft); }
rect.page { fill: var(--page); }
rect.box { fill: var(--panel); stroke: var(--line); }
rect.frame { fill: var(--frame); }
path { fill: none; stroke: var(--line); stroke-width: 1.5; }
path.loads { stroke-dasharray: 5 4; }
marker path { fill: var(--line); stroke: none; }
</style>"""
HEAD = ('<defs><marker id="head" viewBox="0 0 8 8" refX="8" refY="4" markerWidth="7" '
        'markerHeight="7" orient="auto"><path d="M0 0L8 4L0 8z"/></marker></defs>')
LEGEND = ("An arrow: includes. Where a chain of arrows leads to a folder there is no other; all "
          "that a folder includes stands at the foot of its box. Dashed: loads the built library.")


def picture():
    folders = {path.name for path in ROOT.iterdir() if path.is_dir() and path.name[0] != "."}
    folders -= {"build"}
    told = purposes()
    for folder in sorted(folders):
        if folder not in told or folder not in PLACES:
            sys.exit(f"structure: {folder}/ has no line in CONTRIBUTING.md or no place here")
    includes = {folder: included(folder, folders) for folder in PLACES if folder in folders}
    width = edge("host", "right")[0] + MARGIN
    height = edge("scripts", "bottom")[1] + 46
    yield (f'<svg xmlns="http://www.w3.org/2000/svg" role="img" aria-labelledby="title" '
           f'width="{width}" height="{height:g}" viewBox="0 0 {width} {height:g}">')
    yield "<title id=\"title\">The folders of Kestrel and which includes which</title>"
    yield from [STYLE, HEAD, '<rect class="page" width="100%" height="100%"/>', *library_frame()]
    for folder, targets in includes.items():
        yield from box(folder, told[folder], targets)
    for arrow in arrows(includes):
        if arrow not in WAYS:
            sys.exit(f"structure: the arrow from {arrow[0]} to {arrow[1]} has no way in WAYS")
        yield way(WAYS[arrow], "includes")
    yield from loads_the_library()
    yield f'<text class="soft" x="{MARGIN}" y="{height - 18:g}">{LEGEND}</text>'
    yield "</svg>"


def main():
    text = "\n".join(picture()) + "\n"
    if "--check" not in sys.argv[1:]:
        PICTURE.write_text(text, encoding="utf-8")
    elif not PICTURE.exists() or PICTURE.read_text(encoding="utf-8") != text:
        sys.exit("docs/pictures/structure.svg is stale: run scripts/make-structure-picture.py")
    print(f"{text.count('class=' + chr(34) + 'box')} folders, "
          f"{text.count('class=' + chr(34) + 'includes')} arrows")


if __name__ == "__main__":
    main()
