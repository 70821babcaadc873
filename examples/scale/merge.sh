#!/usr/bin/env bash
# Makes results.jsonl (each file once), totals.txt and, of not too many files, report.html of shards
# that are done; fails when one is not, or when a file of the list has no result.
#
# usage: merge.sh FOLDER      KESTREL_PAGE_FILES=N: no page of more files (10000)
set -euo pipefail
export LC_ALL=C
cd "$1"
program=$(<program)

left=()
for list in lists/*; do
  [ -e "done/${list#lists/}.jsonl" ] || left+=("${list#lists/}")
done
if [ ${#left[@]} -gt 0 ]; then
  echo "merge: not done: shards ${left[*]}; the same command again goes on" >&2
  exit 1
fi

find ./done -name '*.jsonl' -print0 | sort -z | xargs -0 cat >results.jsonl.new
"$program" report results.jsonl.new --files-from files -0 --format text -o totals.txt
mv results.jsonl.new results.jsonl
cat totals.txt
if [ "$(wc -l <results.jsonl)" -le "${KESTREL_PAGE_FILES:-10000}" ]; then
  "$program" report results.jsonl -o report.html
fi
