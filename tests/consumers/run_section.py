"""Does what a section of docs/install.md says, and compares what comes out.

The section's `sh` blocks are run in a fresh copy of the consumers' folder. Then the program that
they built is run, under an emulator where one is given; without a program the blocks' own output
counts.
Every `cmake` block of the section must stand in the project that the section builds.
"""
import argparse
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys

CONSUMERS = pathlib.Path(__file__).resolve().parent
DOCUMENT = CONSUMERS.parents[1] / "docs" / "install.md"


def section_of(text, title):
    found = re.search(rf"^## {re.escape(title)}\n(.*?)(?=^## |\Z)", text, re.M | re.S)
    if not found:
        sys.exit(f"{DOCUMENT.name} has no section {title}")
    return found[1]


def blocks(section, language):
    return re.findall(rf"^```{language}\n(.*?)^```$", section, re.M | re.S)


def check_projects(section):
    projects = "\0".join(path.read_text() for path in CONSUMERS.glob("*/CMakeLists.txt"))
    for block in blocks(section, "cmake"):
        if block not in projects:
            sys.exit(f"no project is as the section shows it:\n{block}")


def output(command, folder):
    done = subprocess.run(command, cwd=folder, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(f"{command} failed:\n{done.stdout}{done.stderr}")
    return done.stdout.replace("\r\n", "\n")


def built(folder, name):
    programs = [path for path in folder.rglob("*") if path.name in {name, name + ".exe"}]
    if len(programs) != 1:
        sys.exit(f"{len(programs)} programs {name} were built: {programs}")
    return programs[0]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("section")
    parser.add_argument("expected", type=pathlib.Path)
    parser.add_argument("--work", type=pathlib.Path, required=True)
    parser.add_argument("--program")
    options = parser.parse_args()
    section = section_of(DOCUMENT.read_text(encoding="utf-8"), options.section)
    commands = "".join(blocks(section, "sh"))
    check_projects(section)
    shutil.rmtree(options.work, ignore_errors=True)
    shutil.copytree(CONSUMERS, options.work)
    shown = output(["bash", "-euo", "pipefail", "-c", commands], options.work)
    if options.program:
        emulator = shlex.split(os.environ.get("EMULATOR", ""))
        shown = output([*emulator, built(options.work, options.program)], options.work)
    print(shown, end="")
    if not commands or shown != options.expected.read_text(encoding="utf-8"):
        sys.exit(f"{options.expected} says something else")


main()
