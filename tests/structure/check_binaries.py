"""Checks how built programs and libraries are protected.

usage: check_binaries.py [--run-paths FOLDER]... [--shipped FILE]... [--sanitized]

Of every ELF file in a FOLDER: its run path has no empty or relative entry, since the loader would
look for libraries in the current folder, where a delivery may lie. Of each FILE that ships also: it
has random addresses, tables that are read-only once it runs, no executable stack, checked stacks;
on Linux also a shadow stack, and a program has checked copies.
"""
import argparse
import pathlib
import re
import subprocess
import sys


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def begins_with(path, magic):
    if not path.is_file():
        return False
    with path.open("rb") as file:
        return file.read(len(magic)) == magic


def run_path_problems(path):
    """The entries of an ELF file's run path that depend on the current folder."""
    sections = run("readelf", "--dynamic", "--wide", path)
    for entries in re.findall(r"\((?:RUNPATH|RPATH)\).*\[(.*)\]", sections):
        for entry in entries.split(":"):
            if not re.match(r"(/|\$ORIGIN(/|$)|\$\{ORIGIN\}(/|$))", entry):
                yield f'the entry "{entry}" of its run path leads to the current folder'


def elf_problems(path):
    head = run("readelf", "--file-header", "--program-headers", "--dynamic", "--notes", "--wide", path)
    symbols = run("readelf", "--dyn-syms", "--wide", path)
    rules = {
        "its address is always the same": re.search(r"Type:\s+DYN", head),
        "its tables stay writable (no RELRO)": "GNU_RELRO" in head,
        "its tables stay writable (functions are bound late)": re.search(r"\(FLAGS_1\).*NOW", head),
        "its stack can be executed": re.search(r"GNU_STACK.* RW ", head),
        "its stack is not checked": "__stack_chk_fail" in symbols,
    }
    if "X86-64" in head:
        rules["it has no shadow stack"] = re.search(r"x86 feature: .*SHSTK", head)
    if "_main@" in symbols:
        rules["its copies are not checked"] = "_chk@" in symbols
    return [problem for problem, holds in rules.items() if not holds]


def pe_problems(path):
    head = run("x86_64-w64-mingw32-objdump", "--private-headers", path)
    symbols = run("x86_64-w64-mingw32-nm", path)
    rules = {
        "its address is always the same": "DYNAMIC_BASE" in head,
        "its address is one of few": "HIGH_ENTROPY_VA" in head,
        "its data can be executed": "NX_COMPAT" in head,
        "its stack is not checked": "__stack_chk_fail" in symbols,
    }
    return [problem for problem, holds in rules.items() if not holds]


def problems_of(path, is_sanitized):
    if begins_with(path, b"MZ"):
        return pe_problems(path)
    if not begins_with(path, b"\x7fELF"):
        return ["it is no program and no library"]
    return list(run_path_problems(path)) + ([] if is_sanitized else elf_problems(path))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--run-paths", type=pathlib.Path, action="append", default=[])
    parser.add_argument("--shipped", type=pathlib.Path, action="append", default=[])
    parser.add_argument("--sanitized", action="store_true")
    arguments = parser.parse_args()
    found = [(path, problem) for path in arguments.shipped
             for problem in problems_of(path, arguments.sanitized)]
    looked_at = 0
    for folder in arguments.run_paths:
        for path in folder.rglob("*"):
            if path.suffix != ".o" and begins_with(path, b"\x7fELF"):
                looked_at += 1
                found += [(path, problem) for problem in run_path_problems(path)]
    if arguments.run_paths and looked_at == 0:
        sys.exit("there is no ELF file in these folders")
    if found:
        sys.exit("\n".join(f"{path}: {problem}" for path, problem in found))
    print(f"{len(arguments.shipped)} protected; {looked_at} run paths hold")


main()
