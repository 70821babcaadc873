#!/usr/bin/env bash
# Puts one small fault after the other into a copy of Kestrel and asks whether the tests notice.
# Each fault is a mutant; one that no test notices has survived, and the score is what was noticed.
#
# usage: scripts/mutation.sh [ROOM...] [--sample N] [--seed S] [--at-least SCORE] [--file PATH]...
#                            [--kind KIND]... [--jobs N] [--again] [--equivalents] [--list]
#                            [--report]
#
#   ROOM              a folder: analyser, plain_c, host/judging... (default: those of the library)
#   --sample N        only N mutants, chosen by the seed S (default: all, or 1)
#   --at-least SCORE  fail below so many percent (default 100)
#   --file PATH       only mutants of this source
#   --kind KIND       only mutants of this kind, which are listed in scripts/mutant_changes.py
#   --jobs N          as many at a time, each in a copy of its own (default 1)
#   --again           try those anew that survived in an earlier run; all others are taken from its
#                     log
#   --equivalents     try those that tests/mutation/equivalent.txt lists instead, and fail when a
#                     test notices one or one does not compile
#   --list            name the mutants and try none
#   --report          tell the score of what the log holds and try none
#
# Debian has no mutation tool for C++ (mull and universalmutator are not packaged), hence our own.
set -euo pipefail
cd "$(dirname "$0")/.."
case " $* " in
  *" --list "* | *" --report "*) ;;
  *) scripts/setup.sh proof ;;
esac
exec python3 -B scripts/mutate.py "$@"
