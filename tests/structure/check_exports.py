"""Compares what a built library exports with the list of exported names.

On ELF also: no unique symbol (it would keep the library loaded), nothing run at load time beyond the
compiler's own start-up entry, no dependence but on the run-time libraries of C and C++, and nothing
in writable memory but the two pieces of state that the interface names.
"""
import argparse
import re
import subprocess
import sys

ALLOWED_ELF = re.compile(r"lib(stdc\+\+|gcc_s|m|c|asan|ubsan|tsan)\.so|ld-linux")
# advapi32 has the random numbers of the checked stacks.
ALLOWED_PE = re.compile(
    r"(libstdc\+\+-6|libgcc_s_seh-1|libwinpthread-1|kernel32|advapi32|msvcrt|api-ms-win-crt-\S+)\.dll", re.I)
# What stands in .data and .bss: the state, and what the compiler puts there.
WRITABLE = re.compile(r"\S*(trackNumberCounter|streamTypeSymbol)\S*|DW\.ref\.\S+|"
                      r"completed\.0|__dso_handle|__TMC_END__")


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def elf(library, nm, objdump):
    exported = [line.split() for line in run(nm, "-D", "--defined-only", library).splitlines()]
    problems = [f"unique symbol {s[-1]}" for s in exported if s[-2] == "u"]
    private = run(objdump, "-p", library)
    needed = re.findall(r"NEEDED\s+(\S+)", private)
    problems += [f"depends on {n}" for n in needed if not ALLOWED_ELF.match(n)]
    sections = run(objdump, "-h", library)
    size = re.search(r"\.init_array\s+([0-9a-f]+)", sections)
    if size and int(size[1], 16) > 8 and not any("san" in n for n in needed):
        problems.append("runs code of its own when it is loaded")
    if not any("san" in n for n in needed):
        symbols = run(objdump, "-t", library)
        objects = re.findall(r" O \.(?:data|bss)\s+[0-9a-f]+\s+(?:\.hidden )?(\S+)$", symbols, re.M)
        problems += [f"can be written: {o}" for o in objects if not WRITABLE.fullmatch(o)]
    return {s[-1] for s in exported}, problems


def pe(library, objdump):
    private = run(objdump, "-p", library)
    table = private.split("[Ordinal/Name Pointer] Table", 1)[1].split("\n\n", 1)[0]
    names = set(re.findall(r"^\s*\[\s*\d+\]\s+(?:\+base\[\s*\d+\]\s+\S+\s+)?(\S+)$", table, re.M))
    needed = re.findall(r"DLL Name: (\S+)", private)
    return names, [f"depends on {n}" for n in needed if not ALLOWED_PE.match(n)]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("library")
    parser.add_argument("names")
    parser.add_argument("--nm", required=True)
    parser.add_argument("--objdump", required=True)
    options = parser.parse_args()
    with open(options.names, encoding="ascii") as file:
        expected = set(file.read().split())
    if options.library.endswith(".dll"):
        exported, problems = pe(options.library, options.objdump)
    else:
        exported, problems = elf(options.library, options.nm, options.objdump)
    problems += [f"exports {name}, which is not on the list" for name in sorted(exported - expected)]
    problems += [f"does not export {name}" for name in sorted(expected - exported)]
    for problem in problems:
        print(f"{options.library} {problem}")
    print(f"{len(exported)} exported names, {len(expected)} on the list")
    sys.exit(1 if problems or not exported else 0)


main()
