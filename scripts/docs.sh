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
cp -r docs/pictures examples/*/ "$output/html/"  # Doxygen leaves the links to them as they are

# Doxygen lists pages as files too, by a page with nothing on it for each and for each folder.
cd "$output/html"
rm -- *_8md.html
for page in dir_*.html; do
  grep -q 'name="files"' "$page" || { rm "$page" && sed -i "/$page/d" files.html; }
done
if grep -l '_8md\.html' -- *.html; then
  echo "docs: these have links to pages that were taken away" >&2
  exit 1
fi
echo "docs: $output/html/index.html"
