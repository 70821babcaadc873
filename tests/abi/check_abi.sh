#!/usr/bin/env bash
# Fails when the library differs from the baseline in anything that a program built against it
# relies on, also by an addition: the baseline is then made anew by scripts/update-abi-baseline.sh,
# and its diff is the review of the change.
#
# usage: tests/abi/check_abi.sh LIBRARY_WITH_DEBUG_INFORMATION BASELINE
set -euo pipefail
described=$(mktemp)
trap 'rm -f "$described"' EXIT
"$(dirname "$0")/describe_abi.sh" "$1" "$described"
functions=$(grep -c '<function-decl name=.*elf-symbol-id=' "$described")
[ "$functions" -gt 0 ] || { echo "check_abi: the description holds no function" >&2; exit 1; }
abidiff "$2" "$described"
echo "$functions functions and their records are those of the baseline"
