#!/usr/bin/env bash
# Writes what a program that was built against the library relies on, as XML: the exported functions
# with their parameters, the records with their sizes and offsets, the libraries that are needed.
#
# usage: tests/abi/describe_abi.sh LIBRARY_WITH_DEBUG_INFORMATION OUTPUT
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
exec abidw --suppressions "$root/tests/abi/abi.suppressions" --headers-dir "$root/api" \
  --exported-interfaces-only --drop-private-types --no-corpus-path --no-comp-dir-path \
  --no-show-locs --type-id-style hash --out-file "$2" "$1"
