#!/usr/bin/env bash
# Makes the library's present interface the baseline that tests/abi compares with.
#
# usage: scripts/update-abi-baseline.sh
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset release >/dev/null
cmake --build --preset release --target kestrel_abi
tests/abi/describe_abi.sh build/release/tests/abi/libkestrel-dll64.so tests/abi/libkestrel-dll64.abi
git diff --stat -- tests/abi/libkestrel-dll64.abi
