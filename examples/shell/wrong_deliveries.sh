#!/usr/bin/env bash
# Takes the names of delivered files, one to a line, and writes the wrong ones as CSV.
#
# usage: wrong_deliveries.sh CODE RESULTS.jsonl <names      CODE: of EBU R 123, such as 8b
#
# RESULTS.jsonl is written anew, with everything that was found, and RESULTS.html is a page of it.
# The exit code is that of kestrel scan: 0 all conform, 1 some do not, 2 some could not be examined.
set -euo pipefail
code=$1 results=$2

status=0
kestrel scan --quiet --code "$code" --files-from - >"$results" || status=$?
[ -s "$results" ] || exit "$status"
kestrel report "$results" -o "${results%.jsonl}.html"

# An error tells why a file was not examined, else a finding does.
jq --slurp --raw-output '
  map(select(.verdict.exitCode != 0)) | sort_by(.file)[]
  | (.error // (.findings | map(select(.severity == "error"))[0])) as $reason
  | (.findings | map(select(.id == "looks-like").sentence)[0]) as $instead
  | [.file, .verdict.result, .trackTotal, $reason.id, $reason.sentence, $instead] | @csv' "$results"
exit "$status"
