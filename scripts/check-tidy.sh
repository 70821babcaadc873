#!/usr/bin/env bash
# Runs clang-tidy over the library and the host; its warnings are errors.
#
# usage: scripts/check-tidy.sh BUILD_FOLDER_WITH_COMPILE_COMMANDS
set -euo pipefail
cd "$(dirname "$0")/.."
files=()
for file in $(find catalogue analyser standards host -name '*.cc' | sort); do
  # Files for another platform are not compiled here, and so cannot be checked.
  if grep -q "/$file\"" "$1/compile_commands.json"; then files+=("$file"); fi
done
printf '%s\n' "${files[@]}" |
  xargs -P "$(nproc)" -n 4 clang-tidy-16 --quiet -p "$1" 2>&1 |
  { grep -vE '^[0-9]+ warnings? (generated|treated)|^Suppressed |^Use -header-filter' || true; }
echo "${#files[@]} files are tidy"
