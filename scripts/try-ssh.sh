#!/usr/bin/env bash
# Runs examples/scale/parallel.sh over two ssh hosts that it makes for itself (sshd twice, as processes
# of its own on ports of this machine, with keys for this run; the second one's login shell is csh).
# One host is lost half way, then GNU parallel itself; compares with one plain scan.
#
# usage: scripts/try-ssh.sh [FILES]      2000 files if not given; builds the host first
set -euo pipefail
cd "$(dirname "$0")/.."
files=${1:-2000}
# shellcheck source=scripts/scale_trial.sh
. scripts/scale_trial.sh

# start_host NAME PORT [SSHD_OPTION...]: its process stands in daemon_of[NAME].
declare -A daemon_of
start_host() {
  local name=$1 port=$2
  shift 2
  /usr/sbin/sshd -D -f /dev/null -p "$port" -h "$here/host_key" -o ListenAddress=127.0.0.1 \
    -o AuthorizedKeysFile="$here/key.pub" -o StrictModes=no -o UsePAM=yes -o PidFile=none \
    -o AuthenticationMethods=publickey -E "$here/$name.log" "$@" &
  daemon_of[$name]=$!
  daemons+=($!)
  await ssh -F ssh_config "$name" true 2>"$name.out"
}

# A login shell other than bash: sshd would set it and run the command by it like this.
start_two() {
  # shellcheck disable=SC2016 # for the shell there
  start_host two 16823 -o SetEnv=SHELL=/bin/csh \
    -o 'ForceCommand=exec /bin/csh -c "$SSH_ORIGINAL_COMMAND"'
}

# As when the machine falls off the network: no more connections, and those that were are cut.
lose_host() {
  local sessions
  sessions=$(pgrep -P "${daemon_of[$1]}")
  # shellcheck disable=SC2086 # several numbers
  kill -KILL "${daemon_of[$1]}" $sessions
  wait "${daemon_of[$1]}" 2>/dev/null || true
}

make_hosts() {
  [ "$(id -u)" -ne 0 ] || mkdir -p /run/sshd
  ssh-keygen -q -t ed25519 -N '' -f host_key
  ssh-keygen -q -t ed25519 -N '' -f key
  cat >ssh_config <<CONF
Host one
Port 16822
Host two
Port 16823
Host *
HostName 127.0.0.1
User $(id -un)
IdentityFile $here/key
IdentitiesOnly yes
StrictHostKeyChecking no
UserKnownHostsFile $here/known_hosts
LogLevel ERROR
CONF
  start_host one 16822
  start_two
}

run() {
  PARALLEL_SSH="ssh -F $here/ssh_config" PARALLEL_HOME=$here/parallel \
    "$scale/parallel.sh" list out --sshlogin 1/one,1/two
}
hosts_in_log() { awk 'NR > 1 { print $2 }' out/joblog | sort -u | paste -s -d' '; }
done_half() { [ "$(find out/done -type f | wc -l)" -ge 5 ]; }

make_hosts
make_files
start=$SECONDS
run >first.out 2>&1 &
first=$!
await has_lines 0 $((files / 50))
await has_lines 1 $((files / 50))  # one shard on each host
lose_host two
if [ -e out/done/0.jsonl ] || [ -e out/done/1.jsonl ]; then
  echo "$trial: a host should have been lost at its first shard" >&2
  exit 1
fi
await done_half
pkill -KILL -f -- "--joblog [+]$here/out/joblog"
wait $first || true
if [ "$(hosts_in_log)" != one ] || ! grep 'merge: not done' first.out; then
  echo "$trial: host one should have done some shards, and nobody all" >&2
  exit 1
fi

start_two
run
echo "$trial: $files files, two runs: $((SECONDS - start)) s"
[ "$(hosts_in_log)" = "one two" ]
expect_results_of_one_scan
