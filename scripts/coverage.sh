#!/usr/bin/env bash
# Measures what the tests execute: lines, both ways of every branch, and, in the library, every
# condition of a compound one on its own (MC/DC). Lists what is missed and fails when it is too much
# (scripts/check_coverage.py says how much that is for which room).
#
# usage: scripts/coverage.sh [ROOM...]      for example: scripts/coverage.sh host/judging
#
#   ROOM   a folder of the library or of the host (default: the library)
#
# clang counts in the source: a branch is one that somebody wrote. gcov counts in the machine code,
# where every call that may raise has a hidden branch that no test of behaviour can mean.
set -euo pipefail
cd "$(dirname "$0")/.."
llvm=19
library=(api catalogue analyser standards plain_c)
rooms=("$@")
if [ ${#rooms[@]} -eq 0 ]; then rooms=("${library[@]}"); fi
for room in "${rooms[@]}"; do
  if [ ! -d "$room" ]; then
    echo "coverage: there is no folder $room" >&2
    exit 2
  fi
done

scripts/setup.sh proof

build_preset() {
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$1" -j "$(nproc)" "${@:2}" |
    { grep -vE '^\[[0-9]+/[0-9]+\] (Building|Linking)|no work to do' || true; }
}

# counts_of BUILD NAME OBJECT... -- SOURCE...: what the profiles so named say about the sources
counts_of() {
  local build=$1 name=$2 objects=() first
  shift 2
  while [ "$1" != -- ]; do
    objects+=("-object=$1")
    shift
  done
  first=${objects[0]#-object=}
  llvm-profdata-$llvm merge -o "$build/$name.profdata" "$build/profiles-$name"/*.profraw
  llvm-cov-$llvm export "$first" "${objects[@]:1}" -instr-profile="$build/$name.profdata" \
    "${@:2}" >"$build/$name.json" 2>"$build/llvm-cov.log"
}

# The tests of behaviour: those of GoogleTest, whose names begin with a capital, and the host in C.
# Random and exhaustive ones would hide that no stated test reaches a line; a library with counters
# leaves something behind when it is unloaded.
measure_library() {
  local build=build/coverage programs
  # White-box tests hold the library's objects themselves, so their counts belong to it too.
  mapfile -t programs < <(find "$build/tests" -name '*_test' -type f -executable)
  # A file of counts per process: where several add to one, some are lost.
  LLVM_PROFILE_FILE=$PWD/$build/profiles-library/%p-%m.profraw ctest --test-dir "$build" \
    -j "$(nproc)" -R '^coverage/([A-Z]|c_program_test)' --output-on-failure --no-tests=error \
    -E 'Random|SingleChanges|WholeItems|EveryShortText|Unloading' | tail -4
  counts_of "$build" library "$build/libkestrel-dll64.so" "${programs[@]}" -- "$@"
}

judge() { python3 -B scripts/check_coverage.py "$@"; }

check_library() {
  build_preset coverage
  rm -rf build/coverage/profiles-library
  measure_library "$@"
  # Twice in a dozen runs a process's counts did not arrive. A second run only adds to the first.
  if ! judge build/coverage/library.json "$@"; then
    measure_library "$@"
    judge build/coverage/library.json "$@" || result=1
  fi
}

# The programs of the host's tests: "whole" those that start the program itself, or a browser,
# "parts" the others.
host_tests() {
  local build=build/coverage-host program kind
  for program in "$build"/tests/host/*_test; do
    kind=parts
    # Not into "grep -q", which ends before ninja has written all.
    case "$(ninja -C "$build" -t query "${program#"$build"/}")" in
      *'|| host/kestrel'$'\n'*) kind=whole ;;
    esac
    if [ "${program##*/}" = host_page_test ]; then kind=whole; fi
    if [ "$kind" = "$1" ]; then echo "$program"; fi
  done
}

# run_host NAME PROGRAM...: runs them without random tests; a process that is killed leaves its
# counts too, since they are written as they are made. Two tests let files be small only, which the
# files of counts are not.
run_host() {
  local build=build/coverage-host name=$1 program
  local left_out='-*Random*:*random*:*anOutputFileIsWrittenWholeOrNotAtAll:*aFullDiskEndsIt*'
  rm -rf "$build/profiles-$name"
  mkdir -p "$build/profiles-$name"
  chmod a+rwx "$build/profiles-$name"  # some tests run the program as another user
  for program in "${@:2}"; do
    (cd "$build" && LLVM_PROFILE_FILE=$PWD/profiles-$name/%c%p-%m.profraw \
      "$OLDPWD/$program" --gtest_filter="$left_out" --gtest_brief=1) >"$build/tests.log" 2>&1 || {
      tail -40 "$build/tests.log"
      return 1
    }
    tail -1 "$build/tests.log"
  done
}

# What judges a file is tried by tests that state its input and its answer; whether the whole
# program runs through it proves little. The other rooms are seen from outside.
check_host() {
  local build=build/coverage-host strict=() other=() parts whole room
  for room in "$@"; do
    case "$room" in
      host/judging* | host/evidence*) strict+=("$room") ;;
      *) other+=("$room") ;;
    esac
  done
  build_preset coverage-host --target tests/host/all kestrel_host
  mapfile -t parts < <(host_tests parts)
  mapfile -t whole < <(host_tests whole)
  run_host parts "${parts[@]}"
  if [ ${#strict[@]} -gt 0 ]; then
    counts_of "$build" parts "${parts[@]}" -- "${strict[@]}"
    judge "$build/parts.json" "${strict[@]}" || result=1
  fi
  if [ ${#other[@]} -gt 0 ]; then
    run_host whole "${whole[@]}"
    cp "$build"/profiles-parts/*.profraw "$build/profiles-whole/"
    counts_of "$build" whole "$build/host/kestrel" "${parts[@]}" "${whole[@]}" -- "${other[@]}"
    judge "$build/whole.json" "${other[@]}" || result=1
  fi
}

in_library=() in_host=()
for room in "${rooms[@]%/}"; do
  case "$room" in
    host | host/*) in_host+=("$room") ;;
    *) in_library+=("$room") ;;
  esac
done
result=0
if [ ${#in_library[@]} -gt 0 ]; then check_library "${in_library[@]}"; fi
if [ ${#in_host[@]} -gt 0 ]; then check_host "${in_host[@]}"; fi
exit "$result"
