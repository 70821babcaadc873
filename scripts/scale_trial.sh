# Read by try-slurm.sh and try-ssh.sh, which give `files` their number and start in the root of the
# tree: builds the host, makes a temporary directory of media files with their list, waits, and
# compares what came of the work with one plain scan.
#
# shellcheck shell=bash disable=SC2034,SC2154 # they are from and for the script that reads this
scripts/setup.sh proof
cmake --preset release >/dev/null
cmake --build --preset release --target kestrel_host >/dev/null
export KESTREL=$PWD/build/release/host/kestrel KESTREL_SHARD_FILES=$((files / 10))
media=$PWD/tests/media
scale=$PWD/examples/scale
trial=$(basename "$0" .sh)

here=$(mktemp -d)
chmod 755 "$here"
daemons=()
end() {
  [ ${#daemons[@]} -eq 0 ] || kill "${daemons[@]}" 2>/dev/null || true
  wait
  rm -rf "$here"
}
trap end EXIT
cd "$here" || exit

await() {
  local limit=$((SECONDS + 120))
  until "$@"; do
    if [ $SECONDS -gt $limit ]; then
      echo "$trial: waited in vain: $*" >&2
      tail -n 5 ./*.log ./*.out >&2
      exit 1
    fi
    sleep 0.1
  done
}

make_files() {
  mkdir in
  local sources=("$media"/{rf64_stereo.wav,wav_mono.wav,mov_mixed_depths.mov,mxf_no_audio.mxf})
  for ((n = 0; n < files; n++)); do
    ln -s "${sources[n % 4]}" "in/$n.mxf"
  done
  printf '%s\n' "$here"/in/*.mxf >list
}

has_lines() { [ -e "out/results/$1.jsonl" ] && [ "$(wc -l <"out/results/$1.jsonl")" -ge "$2" ]; }

expect_results_of_one_scan() {
  "$KESTREL" scan --files-from list -q -o plain.jsonl || true
  cmp <(LC_ALL=C sort plain.jsonl) <(LC_ALL=C sort out/results.jsonl)
  "$KESTREL" report plain.jsonl --format text | cmp - out/totals.txt
  local doubled
  doubled=$(cat out/results/*.jsonl | jq -r 'select(.error == null).file' | sort | uniq -d)
  [ -z "$doubled" ]
  echo "$trial: as by one scan, nothing examined twice"
}
