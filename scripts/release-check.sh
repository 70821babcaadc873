#!/usr/bin/env bash
# Goes through what must hold before a version is given away and prints a table, a line for each
# thing: done, failed, open (nobody has decided it yet), left out, or to be done by hand. Ends with
# 1 when something failed or is open.
#
# usage: scripts/release-check.sh [--quick] [--allow-open]
#
#   --quick       leaves out what builds or runs anything; the whole takes some two hours
#   --allow-open  what is open does not count as failed
#
# The checks themselves are in scripts/release_check.py; the logs are in build/release-check.
set -euo pipefail
cd "$(dirname "$0")/.."
case " $* " in
  *" --quick "* | *" --help "* | *" -h "*) ;;
  *) scripts/setup.sh test ;;
esac
exec python3 -B scripts/release_check.py "$@"
