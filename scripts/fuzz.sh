#!/usr/bin/env bash
# Builds the fuzzers and runs each for some minutes, two at a time, from the committed corpora.
# Fails when one of them fails; what it failed on, and all else that is found, stays in
# build/fuzz-run.
#
# usage: scripts/fuzz.sh MINUTES [HARNESS...]
#        scripts/fuzz.sh --merge [HARNESS...]     what the runs found, minimised, into fuzz/corpus
#        KESTREL_FUZZ_JOBS=N                      as many at a time, instead of two
set -euo pipefail
cd "$(dirname "$0")/.."

usage() {
  sed -n 's/^# \{0,1\}//; /^usage:/,/^$/p' "$0" | sed '/^set /,$d' >&2
  exit 2
}

[[ "${1:-}" =~ ^([1-9][0-9]*|--merge)$ ]] || usage
minutes=$1
shift
run=build/fuzz-run
programs=build/fuzz/fuzz
mapfile -t harnesses < <(awk '/^[a-z]/ { print $1 }' fuzz/harnesses.txt)
if [ $# -gt 0 ]; then harnesses=("$@"); fi

row() { awk -v name="$1" '$1 == name' fuzz/harnesses.txt; }
longest() { row "$1" | awk '{ print $2 }'; }
options() { row "$1" | awk '{ for (i = 4; i <= NF; ++i) print $i }'; }
for name in "${harnesses[@]}"; do
  [ -n "$(longest "$name")" ] || { echo "fuzz: there is no harness $name" >&2; exit 2; }
done

scripts/setup.sh fuzz
cmake --preset fuzz --no-warn-unused-cli >/dev/null
cmake --build --preset fuzz --target "${harnesses[@]/%/_fuzzer}" |
  { grep -vE '^\[[0-9]+/[0-9]+\]|no work to do' || true; }

# The time limit of an input is wall time, hence long: a loaded machine is no hang.
fuzz() {
  local name=$1
  mkdir -p "$run/$name/found" "$run/$name/failures"
  # shellcheck disable=SC2046 # several options are meant to be split
  "$programs/${name}_fuzzer" -max_len="$(longest "$name")" -max_total_time=$((minutes * 60)) \
    -dict="fuzz/dictionaries/$name.dict" -artifact_prefix="$run/$name/failures/" \
    -timeout=120 -rss_limit_mb=3000 -print_final_stats=1 $(options "$name") \
    "$run/$name/found" "fuzz/corpus/$name" >"$run/$name/log" 2>&1
}

report() {
  local name=$1 status=$2 log="$run/$1/log"
  awk -v name="$name" -v status="$status" '
    /^stat::/ { gsub(":", " "); stat[$2] = $3 }
    / ft: / { for (i = 1; i < NF; ++i) if ($i == "ft:") features = $(i + 1) }
    END {
      printf "%-20s %12d executions %8d per second %7d features %6d new inputs  %s\n", name,
        stat["number_of_executed_units"], stat["average_exec_per_sec"], features,
        stat["new_units_added"], status == 0 ? "sound" : "FAILED"
    }' "$log"
  if [ "$status" -ne 0 ]; then
    grep -a -m1 -A20 '^== disagreement' "$log" || tail -30 "$log"
    echo "fuzz: see $log; the input is in $run/$name/failures"
  fi
}

# Keeps few inputs that together reach all that the corpus and the runs have reached.
merge() {
  local name=$1
  rm -rf "$run/$name/merged"
  mkdir -p "$run/$name/found" "$run/$name/merged"
  "$programs/${name}_fuzzer" -set_cover_merge=1 -max_len="$(longest "$name")" "$run/$name/merged" \
    "fuzz/corpus/$name" "$run/$name/found" >"$run/$name/merge.log" 2>&1
  find "fuzz/corpus/$name" -type f -delete
  cp "$run/$name/merged"/* "fuzz/corpus/$name/"
  echo "$name: $(find "fuzz/corpus/$name" -type f | wc -l) inputs"
}

fuzz_and_report() {
  local status=0
  fuzz "$1" || status=$?
  report "$1" "$status"
  return "$status"
}

if [ "$minutes" = --merge ]; then
  for name in "${harnesses[@]}"; do merge "$name"; done
  exit 0
fi
export -f row longest options fuzz report fuzz_and_report
export run programs minutes
printf '%s\n' "${harnesses[@]}" |
  xargs -P "${KESTREL_FUZZ_JOBS:-2}" -I '{}' bash -euo pipefail -c 'fuzz_and_report {}'
