#!/usr/bin/env bash
# Builds and runs the benchmarks and prints their ratios; options go to the benchmark program.
#
# usage: scripts/bench.sh [--benchmark_filter=REGEX ...]
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh bench
cmake --preset bench >/dev/null
cmake --build --preset bench | { grep -vE '^\[[0-9]+/[0-9]+\]|no work to do' || true; }
build/bench/bench/kestrel_bench "$@"
echo
exec build/bench/bench/kestrel_load_bench
