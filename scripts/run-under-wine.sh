#!/usr/bin/env bash
# Runs a 64-bit Windows program under Wine, with the run-time DLLs of MinGW-w64 on its path and a
# Wine prefix of the project's own.
#
# usage: scripts/run-under-wine.sh --prepare | [--without-run-time] PROGRAM [ARGUMENT...]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
compiler=x86_64-w64-mingw32-g++-posix
runtime=$(dirname "$("$compiler" -print-file-name=libstdc++-6.dll)")

export WINEPREFIX=${KESTREL_WINEPREFIX:-$root/build/wine-prefix}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEARCH=win64
if [ "${1:-}" = --without-run-time ]; then
  shift  # as on a machine without MinGW-w64
else
  export WINEPATH="$runtime;/usr/x86_64-w64-mingw32/lib${WINEPATH:+;$WINEPATH}"
fi
mkdir -p "$(dirname "$WINEPREFIX")"

wine=$(command -v wine64 || command -v wine || echo /usr/lib/wine/wine64)
if [ ! -x "$wine" ]; then
  echo "run-under-wine: Wine is not installed (run scripts/setup.sh)" >&2
  exit 127
fi
if [ "${1:-}" = --prepare ]; then
  exec "$wine" wineboot --init
fi
exec "$wine" "$@"
