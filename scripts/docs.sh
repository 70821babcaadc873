#!/usr/bin/env bash
# Builds the documents as a site by Doxygen; fails on a warning, such as a link that leads nowhere.
#
# usage: scripts/docs.sh [FOLDER]      the site is FOLDER/html/index.html; build/docs if not given
set -euo pipefail
output=$(realpath -m "${1:-$(dirname "$0")/../build/docs}")
cd "$(dirname "$0")/.."

# The version and the description stand in project() alone.
field() { sed -nE "/^project\(/,/\)/s/^ *$1 \"?([^\")]*)\"?.*/\1/p" CMakeLists.txt; }

rm -rf "$output/html"
mkdir -p "$output"
sed -e "s|@VERSION@|$(field VERSION)|" -e "s|@DESCRIPTION@|$(field DESCRIPTION)|" \
  -e "s|@OUTPUT@|$output|" docs/Doxyfile.in >"$output/Doxyfile"
doxygen "$output/Doxyfile"
cp -r docs/pictures "$output/html/"  # Doxygen leaves the links to them as they are
echo "docs: $output/html/index.html"
