#!/usr/bin/env bash
# Sets up what is missing, builds, and runs every test: the release build by g++ and by clang, the
# address and undefined-behaviour sanitizers, the thread sanitizer, the Windows DLL under Wine, the
# formatting and clang-tidy. One ctest run at the end holds them all; the names of the tests begin
# with the build that they belong to.
#
# usage: scripts/test.sh [CTEST_OPTION...]      for example: scripts/test.sh -R ServiceMap
set -euo pipefail
cd "$(dirname "$0")/.."
presets=(release clang asan-ubsan tsan mingw-x64)
jobs=$(nproc)

say() { printf '== %s\n' "$*"; }

scripts/setup.sh test
for preset in "${presets[@]}"; do
  say "building $preset"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" -j "$jobs" | { grep -vE '^\[[0-9]+/[0-9]+\] (Building|Linking)|no work to do' || true; }
done

say "preparing Wine"
# A first start makes the prefix; were it left to the tests, two of them would make it at once.
scripts/run-under-wine.sh --prepare >/dev/null 2>build/wine-prepare.log || {
  cat build/wine-prepare.log >&2
  echo "test: Wine cannot be started, so the DLL cannot be tested" >&2
  exit 1
}

mkdir -p build/all
{
  printf 'subdirs('
  printf '"../%s" ' "${presets[@]}"
  printf ')\n'
} >build/all/CTestTestfile.cmake

say "testing"
ctest --test-dir build/all -j "$jobs" --output-on-failure --no-tests=error "$@" |
  grep -vE '^ *Start +[0-9]+:'
