#!/bin/bash
# soak.sh native|windows BIN [REQUESTS [CONNECTIONS [PERCENT]]]: requests over many connections at once, which end again
# and again with a frame that costs its sender the connection. Every request gets its one right answer; from the first
# tenth of them on the host's memory grows by no more than PERCENT and its descriptors not at all; at the end it is idle.
# In memory where there is such a folder: not the disk is to be loaded.
[ ! -w /dev/shm ] || export TMPDIR=/dev/shm
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

requests=$((${3:-20000} * scale))
connections=${4:-64} # the service's own among them
percent=${5:-5}
clients=$((connections - 1))
# Freed memory that AddressSanitizer keeps back would look like growth.
export ASAN_OPTIONS=quarantine_size_mb=1:thread_local_quarantine_size_kb=64

resident_kb() { awk '/^VmRSS/ { print $2 }' "/proc/$host_pid/status"; }
most_resident_kb() { awk '/^VmHWM/ { print $2 }' "/proc/$host_pid/status"; }
descriptors() { ls "/proc/$host_pid/fd" | wc -l; }
# Clock ticks (of 10 ms) that the host has used, all its threads together.
ticks() { sed 's/.*) //' "/proc/$host_pid/stat" | awk '{ print $12 + $13 }'; }
bad_frames=0

soak() { # soak REQUESTS
  local status=0 answer
  answer=$(client soak "$clients" "$1" | tr -d '\r') || status=$?
  expect "exit status" 0 "$status"
  expect "answers" "$1 right, 0 faults" "$(sed -E 's/ [0-9]+ bad frames,//' <<< "$answer")"
  bad_frames=$((bad_frames + $(sed -E 's/.* right, ([0-9]+) bad.*/\1/' <<< "$answer")))
  sleep 0.5 # the hub lets go of connections when it hears of their end
}

checking "$requests requests over $connections connections, on a machine with $(nproc) processors"
start_host --log "$(target_path "$machine/soak.log")" # files that are replaced: the lines of so many requests fill a disk
begin=$(microseconds)
soak $((requests / 10))
early_kb=$(resident_kb)
early_descriptors=$(descriptors)
most_kb=$early_kb
readings=()
for tenth in 2 3 4 5 6 7 8 9 10; do
  soak $((requests / 10))
  now_kb=$(resident_kb)
  echo "  after $((requests / 10 * tenth)): $now_kb KB resident, $(descriptors) descriptors"
  [ "$now_kb" -le "$most_kb" ] || most_kb=$now_kb
  readings+=("$now_kb")
  expect "descriptors" "$early_descriptors" "$(descriptors)"
done
seconds=$((($(microseconds) - begin) / 1000000))
echo "  $seconds s, $bad_frames bad frames; resident: $early_kb KB after the first tenth, $most_kb KB at most after that," \
  "$(most_resident_kb) KB at any moment; descriptors: $early_descriptors, $(descriptors)"
[ "$bad_frames" -ge $((requests / 50)) ] || fault "bad frames" "at least $((requests / 50))" "$bad_frames"
expect_at_most "resident KB" $((early_kb * 110 / 100)) "$most_kb"
mean_kb() { echo $((($1 + $2 + $3) / 3)); }
early_mean_kb=$(mean_kb "$early_kb" "${readings[@]:0:2}")
late_mean_kb=$(mean_kb "${readings[@]: -3}")
echo "  mean of the first three readings: $early_mean_kb KB, of the last three: $late_mean_kb KB"
expect_at_most "mean resident KB" $((early_mean_kb * (100 + percent) / 100)) "$late_mean_kb"

checking "what the host counts"
ctl --json status | tr -d '\r' > "$machine/status.json"
expect "connections cut off" "$bad_frames" "$(sed -E 's/.*"cutOff":([0-9]+).*/\1/' "$machine/status.json")"
most=$(sed -E 's/.*"most":([0-9]+).*/\1/' "$machine/status.json")
echo "  connections at one time: $most"
# One that was cut off may still count while its client is back already.
expect_at_most "connections at one time" $((connections * 9 / 8)) "$most"
[ "$most" -ge $((connections * 9 / 10)) ] || fault "connections at one time" "nearly $connections" "$most"
expect_empty "failures in the log besides connections" \
  "$(cat "$machine"/soak*.log | grep -E '^[^ ]+ 4 ' | grep -vE ' (closed|refused): ' | head -n 5)"

checking "3 s of idleness"
before=$(ticks)
sleep 3
expect "ticks of the host" 0 $(($(ticks) - before))
stop_host
for file in "$peers" "$trusted" "$current"; do
  expect "integrity_check of $file" ok "$(rows "$file" 'PRAGMA integrity_check')"
done
finish
