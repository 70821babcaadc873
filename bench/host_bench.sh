#!/usr/bin/env bash
# Builds the host's benchmarks and runs them: its own time per file, then a scan of many files
# beside mediainfo. Options go to the second part: --files N, --many N, --repeat N.
#
# usage: bench/host_bench.sh [--files N] [--many N] [--repeat N]
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh demo
scripts/setup.sh bench
build=build/host-bench
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DKESTREL_BUILD_TESTS=OFF \
  -DKESTREL_BUILD_BENCH=ON -DKESTREL_BUILD_HOST=ON >/dev/null
cmake --build "$build" --target kestrel_host kestrel_host_bench |
  { grep -vE '^\[[0-9]+/[0-9]+\]|no work to do' || true; }
echo "The host's own time per file, without its reading; the goal is below 1000 us"
"$build/bench/kestrel_host_bench" --benchmark_min_time=0.05 2>/dev/null
exec python3 bench/host_scan_bench.py "$build/host/kestrel" tests/media "$@"
