#!/usr/bin/env python3
"""Writes the pages docs/catalogue.md and docs/layout-codes.md from what the library says.

usage: KESTREL_LIBRARY=LIBRARY scripts/make-tables.py [--check]

With --check nothing is written: it fails where a page is not what it would write.
"""
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "bindings" / "python"))

from kestrel import catalogue  # noqa: E402

MADE = "`scripts/make-tables.py` writes this page from what the library says; do not edit it.\n"


def table(head, rows):
    lines = [head, ["---"] * len(head), *rows]
    return "".join("| " + " | ".join(str(cell) for cell in line) + " |\n" for line in lines)


def catalogue_page():
    text = f"# The catalogue of layouts\n\n{MADE}\n"
    text += "A row holds the layouts that fill one number of tracks; its first is its default.\n"
    for row in catalogue.rows():
        text += f"\n## {row.tracks} tracks (row {row.id})\n\n".replace("## 1 tracks", "## 1 track")
        rows = [[item.id, item.name, item.text] for item in row.items]
        text += table(["id", "name", "services, first tracks first"], rows)
    return text


def layout_codes_page():
    text = f"# The layout codes\n\n{MADE}\n"
    text += "The codes of EBU R 123 in the order in which they are tried. The first that a text\n"
    text += "holds decides, so a code that holds an earlier one is found as that one.\n\n"
    rows = []
    for listed in catalogue.layout_codes():
        found = catalogue.item_from_layout_code(listed.code)
        taken = "as listed" if found.id == listed.item.id else f"item {found.id}, {found.name}"
        rows.append([listed.code, listed.item.id, listed.item.name, taken])
    return text + table(["code", "item", "name", "what the library finds for it"], rows)


def main():
    pages = {"catalogue.md": catalogue_page(), "layout-codes.md": layout_codes_page()}
    stale = []
    for name, text in pages.items():
        path = ROOT / "docs" / name
        if "--check" not in sys.argv[1:]:
            path.write_text(text, encoding="utf-8")
        elif not path.exists() or path.read_text(encoding="utf-8") != text:
            stale.append(name)
            print(f"docs/{name} is not what the library says: run scripts/make-tables.py")
    print(f"{len(pages)} pages, {len(catalogue.items())} layouts, "
          f"{len(catalogue.layout_codes())} codes")
    sys.exit(1 if stale else 0)


main()
