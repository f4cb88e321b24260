#!/bin/bash
# load.sh native|windows BIN: 100,000 requests from 8 clients at once. Each gets exactly one answer, the right one; the
# host's memory and descriptors do not grow, and its log has no failure.
# In memory where there is such a folder: not the disk is to be loaded.
[ ! -w /dev/shm ] || export TMPDIR=/dev/shm
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

requests=$((100000 * scale))
clients=8
# Freed memory that AddressSanitizer keeps back would look like growth.
export ASAN_OPTIONS=quarantine_size_mb=1:thread_local_quarantine_size_kb=64

resident_kb() { awk '/^VmRSS/ {print $2}' "/proc/$host_pid/status"; }
descriptors() { ls "/proc/$host_pid/fd" | wc -l; }

load() { # load REQUESTS
  local status=0 answers
  answers=$(client load 0 "$clients" "$1") || status=$?
  expect "answers" "$1 right, 0 wrong, 0 unanswered, 0 unsent" "$answers"
  expect "exit status" 0 "$status"
}

checking "$requests requests from $clients clients"
start_host
load $((requests / 10))
sleep 0.5 # the hub lets go of connections when it hears of their end
early_kb=$(resident_kb)
early_descriptors=$(descriptors)
load $((requests - requests / 10))
sleep 0.5
late_kb=$(resident_kb)
echo "  resident: $early_kb KB after a tenth, $late_kb KB at the end; descriptors: $early_descriptors, $(descriptors)"
expect "descriptors" "$early_descriptors" "$(descriptors)"
expect_at_most "resident KB" $((early_kb * 105 / 100)) "$late_kb"
expect "requests in the log" "$requests" "$(grep -c 'Received the request event' "$log")"
expect_empty "failures in the log" "$(log_failures)"
stop_host
for file in "$peers" "$trusted" "$current"; do
  expect "integrity_check of $file" ok "$(rows "$file" 'PRAGMA integrity_check')"
done
finish
