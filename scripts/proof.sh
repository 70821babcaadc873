#!/usr/bin/env bash
# Runs every kind of proof that docs/proof.md tells of, those that scripts/test.sh has no time for
# with a short budget each. Goes on after a failure and names the failed ones at the end. What each
# said last goes with its date and commit onto docs/proof-figures.md.
#
# usage: scripts/proof.sh [WHAT...]     about 60 minutes on two cores for all of it
#
#   WHAT   only the proofs whose name begins so: scripts/proof.sh coverage mutation
#
# What is longer by nature is asked for by itself: scripts/fuzz.sh 30, scripts/mutation.sh.
set -uo pipefail
cd "$(dirname "$0")/.." || exit 1
wanted=("$@")
logs=build/proof
mkdir -p "$logs"

is_wanted() {
  local prefix
  [ ${#wanted[@]} -eq 0 ] && return 0
  for prefix in "${wanted[@]}"; do
    case "$1" in "$prefix"*) return 0 ;; esac
  done
  return 1
}

failed=()
tried=0
prove() {
  is_wanted "$1" || return 0
  tried=$((tried + 1))
  printf '\n== %s\n' "$1"
  local log result=holds
  log="$logs/$(tr -cs 'a-zA-Z0-9\n' - <<<"$1").log"
  "${@:2}" 2>&1 | tee "$log.part" || result='does not hold'
  [ "$result" = holds ] || failed+=("$1")
  {
    printf '%s\n%s\n' "$1" "${*:2}"
    date -u +%Y-%m-%d
    git describe --always --dirty --exclude '*'
    printf '%s\n' "$result"
    cat "$log.part"
  } >"$log"
  rm "$log.part"
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

# The rooms as they are asked for, or the whole folder of the host where it has none.
rooms() {
  local room
  for room in "$@"; do
    [ -d "$room" ] || room=host
    echo "$room"
  done | sort -u
}
mapfile -t judging < <(rooms host/judging host/evidence)
mapfile -t others < <(rooms host/basics host/reading host/reporting host/scanning host/commands)
jobs=$(nproc)

scripts/setup.sh test && scripts/setup.sh proof || exit 1
prove "all tests" scripts/test.sh
prove "all random inputs under the sanitizers" all_rounds asan-ubsan
prove "all random inputs under Wine" all_rounds mingw-x64
prove "coverage of the library" scripts/coverage.sh
prove "coverage of what judges a file" scripts/coverage.sh "${judging[@]}"
prove "coverage of the rest of the host" scripts/coverage.sh "${others[@]}"
prove "mutation of the library, a sample" scripts/mutation.sh --sample 24 --jobs "$jobs"
prove "mutation of what judges a file, a sample" \
  scripts/mutation.sh "${judging[@]}" --sample 24 --jobs "$jobs"
prove "mutation of the rest of the host, a sample" \
  scripts/mutation.sh "${others[@]}" --sample 24 --at-least 90 --jobs "$jobs"
prove "includes of the library" scripts/check-includes.sh
prove "valgrind" scripts/valgrind.sh
prove "a Slurm cluster of one node" scripts/try-slurm.sh
prove "two ssh hosts" scripts/try-ssh.sh
prove "fuzzing, a minute each" scripts/fuzz.sh 1

if [ "$tried" -eq 0 ]; then
  echo "proof: there is no proof of that name" >&2
  exit 2
fi
python3 -B scripts/proof_figures.py "$logs"/*.log >docs/proof-figures.md
if [ ${#failed[@]} -gt 0 ]; then
  printf '\nnot proven:\n'
  printf '  %s\n' "${failed[@]}"
  exit 1
fi
printf '\nall of it holds\n'
