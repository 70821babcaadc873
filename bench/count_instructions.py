"""Counts the instructions of single calls and compares them with those in the tree.

usage: count_instructions.py DRIVER FILE [--update]
       count_instructions.py DRIVER --growth

The driver makes few and then many calls under valgrind; the difference holds no loading of the
program. Instructions are counted as valgrind's own processor takes them, with the routines of the C
library that run on any x86-64, so that the figures are the same on every machine and in every run.
Fails when a call takes over 5 % more instructions than FILE says; --update writes FILE anew. With
--growth it counts the calls whose input has a size, at one size and at four times that, and fails
when one grows faster than the size to the power of 1.1.
"""
import argparse
import math
import os
import pathlib
import re
import subprocess
import sys

FEW, MANY = 500, 2500
TOLERANCE = 1.05
PLAIN_ROUTINES = "glibc.cpu.hwcaps=" + ",".join(
    "-" + feature for feature in (
        "AVX", "AVX2", "AVX512F", "AVX512VL", "AVX512BW", "AVX_Fast_Unaligned_Load", "ERMS",
        "FSRM", "BMI1", "BMI2", "LZCNT", "MOVBE", "RTM"))


GROWING = {  # case -> the smaller size
    "streams": 2_000,
    "description": 10_000,
    "streams of one number": 200,
    "streams of one number (plain C)": 200,
    "unknown services": 1_000,
    "sentences": 200,
}
TIMES, EXPONENT = 4, 1.1


def instructions(driver, case, calls, *size):
    command = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", driver, case,
               str(calls), *map(str, size)]
    result = subprocess.run(command, env=os.environ | {"GLIBC_TUNABLES": PLAIN_ROUTINES},
                            capture_output=True, text=True, check=True)
    return int(re.search(r"Collected : (\d+)", result.stderr).group(1))


def per_call(driver, case):
    more = instructions(driver, case, MANY) - instructions(driver, case, FEW)
    return more // (MANY - FEW)


def of_two_calls(driver, case, size):
    return instructions(driver, case, 3, size) - instructions(driver, case, 1, size)


def check_growth(driver):
    fast = []
    for case, size in GROWING.items():
        small, large = (of_two_calls(driver, case, n) for n in (size, TIMES * size))
        exponent = math.log(large / small, TIMES)
        fast += [case] if exponent > EXPONENT else []
        print(f"{case:40} {small // 2:10} -> {large // 2:10}   exponent {exponent:.2f}")
    if fast:
        sys.exit(f"These take more time than their size explains: {', '.join(fast)}")


def read(file):
    """The comments of the file, and its figures by case."""
    lines = file.read_text(encoding="utf-8").splitlines()
    comments = [line for line in lines if line.startswith("#")]
    rows = [line.rsplit(maxsplit=1) for line in lines if line and not line.startswith("#")]
    return comments, {case: int(count) for case, count in rows}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("driver")
    parser.add_argument("file", type=pathlib.Path, nargs="?")
    parser.add_argument("--update", action="store_true")
    parser.add_argument("--growth", action="store_true")
    options = parser.parse_args()
    if options.growth:
        return check_growth(options.driver)
    comments, known = read(options.file)
    counted = {case: per_call(options.driver, case) for case in known}
    grown = [case for case in known if counted[case] > known[case] * TOLERANCE]
    for case in known:
        verdict = "GREW" if case in grown else "ok"
        print(f"{case:40} {known[case]:8} -> {counted[case]:8}   {verdict}")
    if options.update:
        rows = [f"{case:40} {count}" for case, count in counted.items()]
        options.file.write_text("\n".join(comments + rows) + "\n", encoding="utf-8")
    elif grown:
        sys.exit("A call takes over 5 % more instructions than bench/instructions.txt says; when "
                 "that is meant, run scripts/count-instructions.sh --update.")
    elif not known:
        sys.exit("There is no figure to compare with.")


main()
