#!/usr/bin/env bash
# Runs examples/scale/slurm.sh on a cluster of one node that it makes for itself out of Debian's
# packages (munged, slurmctld and slurmd as processes of its own in a temporary directory), kills a
# scan half way, has another one moved, and compares with one plain scan. Needs root, like slurmd.
#
# usage: scripts/try-slurm.sh [FILES]      2000 files if not given; builds the host first
set -euo pipefail
cd "$(dirname "$0")/.."
files=${1:-2000}
# shellcheck source=scripts/scale_trial.sh
. scripts/scale_trial.sh

start_cluster() {
  mkdir munge state spool
  dd if=/dev/urandom of=munge/key bs=1024 count=1 2>/dev/null
  chmod 700 munge
  chmod 600 munge/key
  cat >slurm.conf <<CONF
ClusterName=kestrel
SlurmctldHost=$(hostname -s)(127.0.0.1)
SlurmctldPort=16817
SlurmdPort=16818
SlurmUser=root
AuthType=auth/munge
AuthInfo=socket=$here/socket,cred_expire=5
CredType=cred/munge
StateSaveLocation=$here/state
SlurmdSpoolDir=$here/spool
SlurmctldPidFile=$here/slurmctld.pid
SlurmdPidFile=$here/slurmd.pid
SlurmctldLogFile=$here/slurmctld.log
SlurmdLogFile=$here/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
MpiDefault=none
ReturnToService=2
SchedulerParameters=sched_min_interval=0,batch_sched_delay=0
NodeName=$(hostname -s) NodeAddr=127.0.0.1 CPUs=$(nproc) State=UNKNOWN
PartitionName=all Nodes=ALL Default=YES State=UP
CONF
  export SLURM_CONF=$here/slurm.conf
  munged --force --foreground --key-file=munge/key --socket="$here/socket" --pid-file=munge/pid \
    --log-file=munge/log --seed-file=munge/seed 2>munge/out &
  daemons+=($!)
  await test -S socket
  slurmctld -D >slurmctld.out 2>&1 &
  daemons+=($!)
  slurmd -D >slurmd.out 2>&1 &
  daemons+=($!)
  await node_is_idle
}

node_is_idle() { [ "$(sinfo -h -o %t 2>/dev/null)" = idle ]; }

run() { "$scale/slurm.sh" list out; }
ended() { [ -z "$(squeue -h)" ]; }
task_of() { squeue -h -r -n kestrel-scan -o %F_%K | grep "_$1\$"; }
scan_of() { pgrep -f -- "^$KESTREL scan .*$here/out/results/$1.jsonl"; }

start_cluster
make_files
start=$SECONDS
run
await has_lines 0 $((files / 50))
kill -KILL "$(scan_of 0)"  # its task fails, and the merging says so
await has_lines 5 $((files / 50))
scontrol requeue "$(task_of 5)"  # as after the loss of a node: Slurm ends it and starts it again
await ended
cat out/logs/merge.log
if [ -e out/results.jsonl ] || [ -e out/done/0.jsonl ] || [ ! -e out/done/5.jsonl ]; then
  echo "try-slurm: shard 5 should be done, shard 0 and the merging not" >&2
  exit 1
fi
run
await ended
echo "try-slurm: $files files, two runs: $((SECONDS - start)) s"
cat out/logs/merge.log

expect_results_of_one_scan
