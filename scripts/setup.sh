#!/usr/bin/env bash
# Installs what the project needs from Debian's packages, if it is missing; says what it does.
#
# usage: scripts/setup.sh demo|test|bench|fuzz|proof
set -euo pipefail

for_demo=(g++ cmake ninja-build pkg-config python3 libmediainfo-dev libcli11-dev libfmt-dev
  nlohmann-json3-dev libuv1-dev libseccomp-dev libkainjow-mustache-dev)
for_test=("${for_demo[@]}" libgtest-dev googletest clang-format-14 clang-16 clang-tidy-16
  g++-mingw-w64-x86-64-posix python3-pip python3-venv
  wine wine64 ffmpeg mediainfo python3-jsonschema binutils chromium zsh mandoc man-db
  dpkg-dev file abigail-tools doxygen valgrind jq mono-mcs parallel shellcheck)
for_fuzz=("${for_demo[@]}" clang-16 libclang-rt-16-dev)
for_proof=("${for_test[@]}" clang-19 clang-tidy-19 llvm-19 libclang-rt-19-dev libclang-rt-16-dev libc6-dbg
  slurm-wlm munge jq procps openssh-client openssh-server tcsh)

case "${1:-}" in
  demo) wanted=("${for_demo[@]}") ;;
  bench) wanted=(g++ cmake ninja-build pkg-config python3 libbenchmark-dev libavutil-dev mediainfo
    valgrind strace ffmpeg gzip zstd) ;;
  test) wanted=("${for_test[@]}") ;;
  proof) wanted=("${for_proof[@]}") ;;
  fuzz) wanted=("${for_fuzz[@]}") ;;
  *)
    echo "usage: scripts/setup.sh demo|test|bench|fuzz|proof" >&2
    exit 2
    ;;
esac

installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

missing=()
for package in "${wanted[@]}"; do
  installed "$package" || missing+=("$package")
done
if [ ${#missing[@]} -eq 0 ]; then
  echo "setup: all packages are here"
  exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then as_root=(sudo); fi
echo "setup: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
