"""Does what a section of docs/install.md says, and compares what comes out.

The section's `sh` blocks are run in a fresh copy of the consumers' folder. Then the program that
they built is run, under an emulator where one is given; without a program the blocks' own output
counts.
Every `cmake` block of the section must stand in the project that the section builds.
"""
import argparse
import os
import pathlib
import shlex
import shutil
import subprocess
import sys

CONSUMERS = pathlib.Path(__file__).resolve().parent
DOCUMENT = CONSUMERS.parents[1] / "docs" / "install.md"
sys.path.insert(0, str(CONSUMERS.parent / "documents"))
import pages  # noqa: E402 (it stands in a folder beside this one)


def check_projects(section):
    projects = "\0".join(path.read_text() for path in CONSUMERS.glob("*/CMakeLists.txt"))
    for block in pages.blocks(section, "cmake"):
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
    section = pages.section(DOCUMENT, options.section)
    commands = "".join(pages.blocks(section, "sh"))
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
