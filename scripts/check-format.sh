#!/usr/bin/env bash
# Fails when a C++ file is not formatted as .clang-format says; --fix formats instead.
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(find api catalogue analyser standards plain_c host bindings tests bench fuzz \
  examples -name '*.h' -o -name '*.cc' -o -name '*.c' | sort)
if [ "${1:-}" = --fix ]; then
  clang-format-14 -i "${files[@]}"
else
  clang-format-14 --dry-run -Werror "${files[@]}"
  echo "${#files[@]} files are formatted"
fi
