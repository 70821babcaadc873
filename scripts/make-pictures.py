#!/usr/bin/env python3
"""Writes docs/pictures/*.svg: the tracks of test media as the program draws them in its HTML page.

usage: scripts/make-pictures.py KESTREL [--check]

With --check nothing is written: it fails where a picture is not what the program draws.
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
PICTURES = {
    "conforms.svg": ["mxf_51_stereo.mxf", "--layout", "T8=5.1 Mix,Stereo"],
    "does-not-conform.svg": ["as11_12d_dolby_e.mxf", "--code", "12c"],
}


def drawn(program, arguments):
    """The picture of the tracks with the page's style, so that it can stand alone."""
    command = [program, "inspect", *arguments, "--format", "html"]
    ran = subprocess.run(command, cwd=ROOT / "tests" / "media", stdout=subprocess.PIPE, check=False)
    page = ran.stdout.decode("utf-8")
    style = re.search(r"<style>.*?</style>", page, re.DOTALL).group()
    picture = re.search(r"<svg.*?</svg>", page, re.DOTALL).group()
    start, rest = picture.split(">", 1)
    background = '<rect width="100%" height="100%" style="fill: var(--page)"/>'
    return f'{start} xmlns="http://www.w3.org/2000/svg">\n{style}\n{background}{rest}\n'


def main():
    program = str(pathlib.Path(sys.argv[1]).resolve())
    stale = 0
    for name, arguments in PICTURES.items():
        path = ROOT / "docs" / "pictures" / name
        text = drawn(program, arguments)
        if "--check" not in sys.argv[2:]:
            path.parent.mkdir(exist_ok=True)
            path.write_text(text, encoding="utf-8")
        elif not path.exists() or path.read_text(encoding="utf-8") != text:
            stale += 1
            print(f"docs/pictures/{name} is not what the program draws: make it anew")
    print(f"{len(PICTURES)} pictures")
    sys.exit(1 if stale else 0)


main()
