#!/usr/bin/env bash
# Runs clang-tidy over the library and the host; its warnings are errors. Of the host it reads the
# batches in which the build compiles it: clang-tidy checks every header that a source includes,
# and those of the host's libraries are large.
#
# usage: scripts/check-tidy.sh BUILD_FOLDER_WITH_COMPILE_COMMANDS [FILE...]     all files, or these
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
shift

# Files for another platform are not compiled here, and so cannot be checked.
all_files() {
  find "$build"/host/CMakeFiles -path '*/Unity/*' -name '*.cxx' | sort
  local file
  for file in $(find catalogue analyser standards plain_c host -name '*.cc' | sort); do
    if grep -q "/$file\"" "$build/compile_commands.json"; then echo "$file"; fi
  done
}

if [ $# -gt 0 ]; then files=("$@"); else mapfile -t files < <(all_files); fi
# A batch is made of includes of sources, which is what one check is against.
printf '%s\n' "${files[@]}" |
  xargs -P "$(nproc)" -n 1 clang-tidy-16 --quiet --checks=-bugprone-suspicious-include -p "$build" 2>&1 |
  { grep -vE '^[0-9]+ warnings? (generated|treated)|^Suppressed |^Use -header-filter' || true; }
echo "${#files[@]} files and batches are tidy"
