#!/usr/bin/env bash
# Puts one small fault after the other into a copy of the library and asks whether the tests notice.
# Each fault is a mutant; one that no test notices has survived, and the score is what was noticed.
#
# usage: scripts/mutation.sh [--sample N] [--seed S] [--file PATH]... [--jobs N] [--again]
#                            [--list] [--report]
#
#   --sample N   only N mutants, chosen by the seed S (default: all, or 1)
#   --file PATH  only mutants of this source
#   --jobs N     as many at a time, each in a copy of its own (default 1)
#   --again      try those anew that survived in an earlier run; all others are taken from its log
#   --list       name the mutants and try none
#   --report     tell the score of what the log holds and try none
#
# Debian has no mutation tool for C++ (mull and universalmutator are not packaged), hence our own.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh proof
exec python3 -B scripts/mutate.py "$@"
