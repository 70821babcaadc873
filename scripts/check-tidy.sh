#!/usr/bin/env bash
# Runs clang-tidy over the library and the host; its warnings are errors.
#
# usage: scripts/check-tidy.sh BUILD_FOLDER_WITH_COMPILE_COMMANDS
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(find catalogue analyser standards host -name '*.cc' | sort)
printf '%s\n' "${files[@]}" |
  xargs -P "$(nproc)" -n 4 clang-tidy-16 --quiet -p "$1" 2>&1 |
  { grep -vE '^[0-9]+ warnings? (generated|treated)|^Suppressed |^Use -header-filter' || true; }
echo "${#files[@]} files are tidy"
