#!/usr/bin/env bash
# Runs the library's interface, plain C and white-box tests under valgrind's memcheck; reads and
# jumps that depend on bytes never written, bytes read beside a block, and blocks left behind are
# failures. Random tests make a share of their rounds (KESTREL_TEST_ROUNDS, in percent; 2 here).
#
# usage: scripts/valgrind.sh [PROGRAM...]      for example: scripts/valgrind.sh service_map_test
#
# Left out: the programs that replace malloc() themselves, which valgrind does too; the exhaustive
# test, millions of calls of what the others call as well; and the test that loads and unloads the
# library, whose findings would have no names any more.
set -euo pipefail
cd "$(dirname "$0")/.."
export KESTREL_TEST_ROUNDS="${KESTREL_TEST_ROUNDS:-2}"
build=build/release
logs=$build/valgrind

programs=(catalogue_test service_map_test service_map_random_test stream_naming_test
  layout_code_test ebu_r123_test threads_test c_header_test c_catalogue_test c_analysis_test
  c_diagnosis_test c_random_test hostile_values_test analyser_test
  layout_description_random_test ebu_r123_evaluation_test track_number_counter_test)
if [ $# -gt 0 ]; then programs=("$@"); fi

scripts/setup.sh proof
cmake --preset release >/dev/null
cmake --build --preset release --target "${programs[@]}" >/dev/null
mkdir -p "$logs"

# The library under test is loaded at run time and stays loaded; what it holds is reachable.
check() {
  nice valgrind --quiet --error-exitcode=99 --leak-check=full --show-leak-kinds=definite,indirect \
    --errors-for-leak-kinds=definite,indirect --trace-children=no --num-callers=30 \
    --suppressions=scripts/valgrind.supp --log-file="$logs/$1.%p.valgrind" "$2" >"$logs/$1.log" 2>&1
}

failed=0 tests=0 errors=0
for program in "${programs[@]}"; do
  rm -f "$logs/$program".*
  path=$(find "$build/tests" -name "$program" -type f -perm -u+x)
  verdict=ok
  check "$program" "$path" || verdict=FAILED
  # A child process has a log of its own, and its exit status may be lost.
  found=$(cat "$logs/$program".*.valgrind | grep -cE '^==[0-9]+== [A-Z]' || true)
  if [ "$found" -ne 0 ]; then verdict=FAILED errors=$((errors + found)); fi
  passed=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) test.*/\1/p' "$logs/$program.log")
  tests=$((tests + ${passed:-0}))
  printf '%-34s %4s tests  %s\n' "$program" "${passed:-0}" "$verdict"
  if [ $verdict = FAILED ]; then
    failed=$((failed + 1))
    tail -n 40 "$logs/$program".*
  fi
done
echo "valgrind: ${#programs[@]} programs, $tests tests, $errors errors, $failed programs failed"
[ "$failed" -eq 0 ]
