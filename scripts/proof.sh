#!/usr/bin/env bash
# Runs every kind of proof that docs/proof.md tells of, those that scripts/test.sh has no time for
# with a short budget each. Goes on behind a failure and names the failed ones at the end.
#
# usage: scripts/proof.sh            about 40 minutes on two cores
#
# What is longer by nature is asked for by itself: scripts/fuzz.sh 30, scripts/mutation.sh.
set -uo pipefail
cd "$(dirname "$0")/.." || exit 1

failed=()
prove() {
  printf '\n== %s\n' "$1"
  "${@:2}" || failed+=("$1")
}

# The random inputs in full where scripts/test.sh tries a share of them.
all_rounds() {
  local result=0
  cmake --preset "$1" -DKESTREL_TEST_ROUNDS=100 >/dev/null &&
    cmake --build --preset "$1" -j "$(nproc)" >/dev/null &&
    ctest --test-dir "build/$1" -R 'Random|random' -j "$(nproc)" --no-tests=error | tail -3 ||
    result=1
  cmake --preset "$1" >/dev/null  # back to the share
  return "$result"
}

scripts/setup.sh test && scripts/setup.sh proof || exit 1
prove "all tests" scripts/test.sh
prove "all random inputs under the sanitizers" all_rounds asan-ubsan
prove "all random inputs under Wine" all_rounds mingw-x64
prove "coverage" scripts/coverage.sh
prove "mutation, a sample" scripts/mutation.sh --sample 24 --jobs "$(nproc)"
prove "valgrind" scripts/valgrind.sh
prove "a Slurm cluster of one node" scripts/try-slurm.sh
prove "two ssh hosts" scripts/try-ssh.sh
prove "fuzzing, a minute each" scripts/fuzz.sh 1

if [ ${#failed[@]} -gt 0 ]; then
  printf '\nnot proven:\n'
  printf '  %s\n' "${failed[@]}"
  exit 1
fi
printf '\nall of it holds\n'
