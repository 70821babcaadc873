"""Runs the `console` blocks of pages, and compares what is printed with what the pages show.

usage: run_console.py --folder FOLDER --work WORK [--section TITLE] PAGE...

In a block a line that begins with "$ " is a command, further lines of it begin with "> ". What
stands below, up to the next command, is all that it prints, errors too; a line "..." stands for any
number of lines. Each block has a shell and a fresh copy of FOLDER, in WORK, of its own.
"""
import argparse
import difflib
import pathlib
import re
import shutil
import subprocess
import sys

import pages


def turns(block):
    """The commands of a block, each with the lines that it is to print."""
    for turn in re.split(r"^\$ ", block, flags=re.M)[1:]:
        lines = turn.splitlines()
        further = next((i for i, line in enumerate(lines[1:], 1) if line[:2] != "> "), len(lines))
        command = "\n".join([lines[0], *(line[2:] for line in lines[1:further])])
        yield command, lines[further:]


def printed(commands, folder):
    """What each command prints. The shell keeps its status from one command to the next."""
    script = "".join(
        f"{{ {command}\n}} 2>&1; status=$?; printf '\\0'; (exit $status)\n" for command in commands)
    shell = subprocess.run(["bash", "-c", script], cwd=folder, stdin=subprocess.DEVNULL,
                           stdout=subprocess.PIPE, check=False)
    return [text.splitlines() for text in shell.stdout.decode("utf-8").split("\0")[:-1]]


def matches(shown, lines):
    pattern = "".join(
        r"(?:.*\n)*?" if line.strip() == "..." else re.escape(line.rstrip()) + r" *\n"
        for line in shown)
    return re.fullmatch(pattern, "".join(line + "\n" for line in lines))


def differences(block, folder):
    """Yields the commands that print something else. A block that ends early fails as well."""
    expected = list(turns(block))
    answers = printed([command for command, _ in expected], folder)
    for index, (command, shown) in enumerate(expected):
        lines = answers[index] if index < len(answers) else ["(the shell has ended)"]
        if not matches(shown, lines):
            yield "\n".join([f"$ {command}", *difflib.ndiff(shown, lines)])


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("pages", type=pathlib.Path, nargs="+")
    parser.add_argument("--folder", type=pathlib.Path, required=True)
    parser.add_argument("--work", type=pathlib.Path, required=True)
    parser.add_argument("--section")
    options = parser.parse_args()
    commands, wrong = 0, []
    for page in options.pages:
        text = pages.section(page, options.section) if options.section else pages.read(page)
        for block in pages.blocks(text, "console"):
            shutil.rmtree(options.work, ignore_errors=True)
            shutil.copytree(options.folder, options.work)
            commands += len(list(turns(block)))
            wrong += [f"{page.name}: {found}" for found in differences(block, options.work)]
    print("\n\n".join([*wrong, f"{commands} commands"]))
    sys.exit(1 if wrong or not commands else 0)


main()
