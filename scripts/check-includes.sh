#!/usr/bin/env bash
# Finds includes of the library that nothing uses; by clang-tidy 19, since older ones have no such
# check. What is included by another header on the way is fine here.
#
# usage: scripts/check-includes.sh      part of scripts/proof.sh
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh proof
cmake --preset release >/dev/null  # for the header that the build makes
mapfile -t files < <(find catalogue analyser standards plain_c -name '*.cc' -o -name '*.h' | sort)
unused=$(printf '%s\n' "${files[@]}" |
  xargs -P "$(nproc)" -I{} clang-tidy-19 --quiet --checks='-*,misc-include-cleaner' {} -- \
    -xc++ -std=c++20 -I. -Ibuild/release/generated 2>/dev/null |
  grep 'is not used directly' || true)
if [ -n "$unused" ]; then
  printf '%s\n' "$unused"
  exit 1
fi
echo "${#files[@]} files include nothing that they do not use"
