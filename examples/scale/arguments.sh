# Read by parallel.sh and slurm.sh: takes LIST, FOLDER and the engine's own options from the
# arguments, as `list`, `folder` and `own`; the options of the scan stay behind as "$@". `here` is
# the folder of these scripts.
#
# shellcheck shell=bash disable=SC2034 # they are for the script that reads this
if [ $# -lt 2 ]; then
  sed -n 's/^# \(usage: .*\)/\1/p' "$0" >&2
  exit 2
fi
list=$1
folder=$(realpath -m -- "$2")
shift 2
own=()
while [ $# -gt 0 ]; do
  word=$1
  shift
  [ "$word" != -- ] || break
  own+=("$word")
done
