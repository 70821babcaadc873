#!/usr/bin/env bash
# Builds the library and counts the instructions of single calls; with --update it writes them to
# bench/instructions.txt, else it fails when one grew by more than 5 %.
#
# usage: scripts/count-instructions.sh [--update]
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh bench
cmake --preset bench >/dev/null
cmake --build --preset bench --target kestrel_call_driver |
  { grep -vE '^\[[0-9]+/[0-9]+\]|no work to do' || true; }
exec python3 bench/count_instructions.py build/bench/bench/kestrel_call_driver \
  bench/instructions.txt "$@"
