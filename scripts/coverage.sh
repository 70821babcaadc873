#!/usr/bin/env bash
# Measures what the tests execute of the library: lines, both ways of every branch, and every
# condition of a compound one on its own (MC/DC). Fails below 100 % of any and lists what is missed.
#
# usage: scripts/coverage.sh
#
# clang counts in the source: a branch is one that somebody wrote. gcov counts in the machine code,
# where every call that may raise has a hidden branch that no test of behaviour can mean.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/coverage
llvm=19
# The tests of behaviour: those of GoogleTest, whose names begin with a capital, and the host in C.
# Random and exhaustive ones would hide that no stated test reaches a line; a library with counters
# leaves something behind when it is unloaded.
tests='^coverage/([A-Z]|c_program_test)'
left_out='Random|SingleChanges|WholeItems|EveryShortText|Unloading'

scripts/setup.sh proof
cmake --preset coverage >/dev/null
cmake --build --preset coverage -j "$(nproc)" |
  { grep -vE '^\[[0-9]+/[0-9]+\] (Building|Linking)|no work to do' || true; }

# White-box tests hold the library's objects themselves, so their counts belong to it too.
mapfile -t programs < <(find "$build/tests" -name '*_test' -type f -executable)

# A file of counts per process: where several add to one, some are lost.
measure() {
  LLVM_PROFILE_FILE=$PWD/$build/profiles/%p-%m.profraw ctest --test-dir "$build" -j "$(nproc)" \
    -R "$tests" -E "$left_out" --output-on-failure --no-tests=error | tail -4
  llvm-profdata-$llvm merge -o "$build/tests.profdata" "$build"/profiles/*.profraw
  llvm-cov-$llvm export "$build/libkestrel-dll64.so" "${programs[@]/#/-object=}" \
    -instr-profile="$build/tests.profdata" api catalogue analyser standards plain_c \
    >"$build/counts.json" 2>"$build/llvm-cov.log"
}
judge() { python3 scripts/check_coverage.py "$build/counts.json"; }

rm -rf "$build/profiles"
measure
# Twice in a dozen runs a process's counts did not arrive. A second run only adds to the first.
if ! judge; then
  measure
  judge
fi
