#!/usr/bin/env bash
# Sets up what is missing, builds, and shows the service map of a media file.
#
# usage: scripts/demo.sh [MEDIA_FILE [LAYOUT]]
set -euo pipefail
cd "$(dirname "$0")/.."
file=${1:-tests/media/mxf_8mono_mca.mxf}
layout=${2:-T8=5.1 Mix,Stereo;T4=Stereo,Stereo;T2=Stereo;T1=Mono}

scripts/setup.sh demo
if [ ! -e build/demo/build.ninja ]; then
  echo "demo: configuring"
  cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DKESTREL_BUILD_TESTS=OFF >/dev/null
fi
echo "demo: building"
cmake --build build/demo | { grep -vE '^\[[0-9]+/[0-9]+\]|no work to do' || true; }

program=build/demo/host/kestrel
printf 'demo: %q inspect %q --layout %q\n\n' "$program" "$file" "$layout"
exec "$program" inspect "$file" --layout "$layout"
