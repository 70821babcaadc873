#!/usr/bin/env bash
# Sets up what is missing, builds, and shows the service map of a media file.
#
# usage: scripts/demo.sh [MEDIA_FILE [LAYOUT]]
#
# Without a layout description the file's own declaration, where it has one, is checked, and the
# layouts that it could carry are named.
set -euo pipefail
cd "$(dirname "$0")/.."
here=$OLDPWD

case "${1:-}" in
  '') arguments=(tests/media/mxf_8mono_mca.mxf --layout 'T8=5.1 Mix,Stereo;T4=Stereo,Stereo') ;;
  /*) arguments=("$1") ;;
  *) arguments=("$here/$1") ;;  # as seen from where the script was started
esac
if [ -n "${2:-}" ]; then arguments+=(--layout "$2"); fi

scripts/setup.sh demo
if [ ! -e build/demo/build.ninja ]; then
  echo "demo: configuring"
  cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DKESTREL_BUILD_TESTS=OFF >/dev/null
fi
echo "demo: building"
cmake --build build/demo | { grep -vE '^\[[0-9]+/[0-9]+\]|no work to do' || true; }

program=build/demo/host/kestrel
printf 'demo: kestrel inspect'
printf ' %q' "${arguments[@]}"
printf '\n\n'
exec "$program" inspect "${arguments[@]}"
