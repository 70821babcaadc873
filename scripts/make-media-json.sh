#!/usr/bin/env bash
# Writes what mediainfo says about each test media file, as JSON, for tests where no libmediainfo is.
#
# usage: scripts/make-media-json.sh MEDIA_DIRECTORY OUTPUT_DIRECTORY
set -euo pipefail
media=$1
output=$2
mkdir -p "$output"
cd "$media"
for file in *; do
  case $file in
    *.md | *.py | mxf_reader_never_returns.mxf) continue ;;
  esac
  mediainfo --Output=JSON -f "$file" >"$output/$file.json"
done
