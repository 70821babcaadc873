#!/usr/bin/env bash
# Scans the files of a list on a Slurm cluster: a job array over the shards, and a job that merges
# the results behind it. The nodes must see the media, FOLDER and the program by the same names. The
# same command goes on with what was begun.
#
# usage: slurm.sh LIST FOLDER [SBATCH_OPTION...] [-- SCAN_OPTION...]
#
#   slurm.sh files.txt out --cpus-per-task=4 --time=2:00:00 -- --code 8b
#
# Prints the number of the merging job. An array has at most MaxArraySize tasks (1001 if the cluster
# does not say): KESTREL_SHARD_FILES, see prepare.py, makes shards larger and fewer.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
# shellcheck source=examples/scale/arguments.sh
. "$here/arguments.sh"

left=$("$here/prepare.py" "$list" "$folder" "$@")
mkdir -p "$folder/logs"
logs=${folder//%/%%}/logs # sbatch reads %a and the like
after=()
if [ -n "$left" ]; then
  array=$(sbatch --parsable --requeue --open-mode=append --job-name=kestrel-scan \
    --output="$logs/%a.log" --array="$(paste -s -d, <<<"$left")" "${own[@]}" \
    "$folder/scan-shard.sh" "$folder")
  # Also after a failure, so that the merging says what is left.
  after=(--dependency="afterany:${array%%;*}")
fi
exec sbatch --parsable --requeue --job-name=kestrel-merge --output="$logs/merge.log" \
  "${own[@]}" "${after[@]}" "$folder/merge.sh" "$folder"
