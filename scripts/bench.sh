#!/usr/bin/env bash
# Builds and runs the benchmarks and prints their ratios and whether the aims are met; options go to
# the benchmark program.
#
# usage: scripts/bench.sh [--benchmark_filter=REGEX ...]
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh bench
cmake --preset bench >/dev/null
cmake --build --preset bench | { grep -vE '^\[[0-9]+/[0-9]+\]|no work to do' || true; }
build/bench/bench/kestrel_bench --benchmark_repetitions=15 --benchmark_min_time=0.1 \
  --benchmark_enable_random_interleaving=true "$@"
echo
build/bench/bench/kestrel_load_bench
echo
exec python3 bench/count_instructions.py build/bench/bench/kestrel_call_driver bench/instructions.txt
