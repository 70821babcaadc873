#!/usr/bin/env bash
# Installs the Python package into a fresh environment, without a network, and runs its example there.
#
# usage: check_python_install.sh LIBRARY ENVIRONMENT_FOLDER
set -euo pipefail
package=$(cd "$(dirname "$0")/../../bindings/python" && pwd)
rm -rf "$2"
/usr/bin/python3 -m venv --system-site-packages "$2"
source=$(mktemp -d)
trap 'rm -rf "$source"' EXIT
# The build writes beside its sources; the checkout stays clean. The version is read from the top.
mkdir -p "$source/bindings"
cp -r "$package" "$source/bindings/python"
cp "$package/../../CMakeLists.txt" "$source/"
"$2/bin/pip" install --quiet --no-index --no-build-isolation --no-deps "$source/bindings/python"
cd /
KESTREL_LIBRARY=$1 "$2/bin/python" "$package/example.py" | diff - "$package/example.out"
echo "installed, and the example prints what it should"
