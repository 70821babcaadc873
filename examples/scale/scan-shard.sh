#!/usr/bin/env bash
# Examines the files of one shard, in a folder that prepare.py made.
#
# It may be killed at any time and started again, here or on another machine: what stands in the
# shard's results is kept. Whoever comes while the shard is still at work elsewhere waits; all
# processes of the work hold the lock, so a scan that outlives its script still has it.
#
# What could not be examined is tried a second time, since a reader may have been killed. The shard
# is done when each of its files has a result; where one lacks it, `kestrel report` writes nothing.
#
# usage: scan-shard.sh FOLDER [SHARD]      SHARD is the index in a Slurm job array if not given
set -euo pipefail
folder=$1
shard=${2:-${SLURM_ARRAY_TASK_ID:?no shard}}
list=$folder/lists/$shard
results=$folder/results/$shard.jsonl
merged=$folder/done/$shard.jsonl
program=$(<"$folder/program")
mapfile -d '' -t options <"$folder/options"

exec 9>>"$folder/locks/$shard"
flock 9
[ ! -e "$merged" ] || exit 0

for _ in once again; do
  code=0
  "$program" scan --files-from "$list" -0 -o "$results" --resume -q \
    --jobs "${SLURM_CPUS_PER_TASK:-1}" "${options[@]}" || code=$?
  [ "$code" -eq 2 ] || break
done
exec "$program" report "$results" --files-from "$list" -0 --format jsonl -o "$merged"
