#!/usr/bin/env bash
# Scans the files of a list on many cores or machines by GNU parallel, and merges the results.
#
# The machines must see the media, FOLDER and the program by the same names. The same command goes
# on with what was begun, however it ended, and does nothing again that is done.
#
# usage: parallel.sh LIST FOLDER [PARALLEL_OPTION...] [-- SCAN_OPTION...]
#
#   parallel.sh files.txt out                                       all cores of this machine
#   parallel.sh files.txt out --sshlogin 8/one,8/two -- --code 8b   eight at a time on each of two
#
# KESTREL=/path/to/kestrel: the program, else `kestrel`; KESTREL_SHARD_FILES=1000: see prepare.py.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
# shellcheck source=examples/scale/arguments.sh
. "$here/arguments.sh"

left=$("$here/prepare.py" "$list" "$folder" "$@")
if [ -n "$left" ]; then
  # A shard that fails, or whose machine does, is tried again, on another machine if there is one.
  # What is left then is said by the merging. Which shell a machine's login has must not matter.
  # The folder is an argument like the shards: in the command, parallel would run Perl code that its
  # name holds. Arguments are quoted, but not where the command begins with one. They end with null
  # bytes, since a name may hold newlines.
  tr '\n' '\0' <<<"$left" |
    PARALLEL_SHELL=/bin/sh parallel --null --retries 3 --joblog "+$folder/joblog" "${own[@]}" \
      'bash {1}/scan-shard.sh {1} {2}' ::: "$folder" :::: - || true
fi
exec "$folder/merge.sh" "$folder"
