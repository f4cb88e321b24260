#!/bin/bash
# crash.sh native|windows BIN: the host is killed in the middle of its saves, again and again. Each next start mends the
# files, and every change that was answered is there.
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

rounds=$((15 * scale))

# Waits until the host has stored something; a fault when it has not after a minute.
await_first_save() {
  for _ in $(seq 6000); do
    if grep -q 'result:0(KT::Marnock::SetPeerDevice)' "$log"; then
      return
    fi
    sleep 0.01
  done
  fault "saves in round $1" "at least one in a minute" none
}

checking "$rounds times killed while 3 clients write"
start_host
ctl peer set first 1 > "$machine/out" # before the very first save there is nothing to mend
: > "$log"
for round in $(seq "$rounds"); do
  start_client "$machine/counters" count 3 $((round * 1000000))
  await_first_save "$round"
  sleep "0.$((RANDOM % 4))$((RANDOM % 10))"
  kill_host
  # Clients that were not answered at all fail; that is no matter here.
  wait "$client_pid" || true
  mv "$log" "$machine/before.log"
  : > "$log"
  start_host
  check_counters "round $round" "$machine/counters"
  expect "round $round: integrity_check" ok "$(rows "$peers" 'PRAGMA integrity_check')"
  expect_empty "round $round: failures in the log" "$(log_failures)"
  expect_empty "round $round: files beside the database" "$(ls "$store" | grep -vxF "$peers" || true)"
  log_lines | grep 'Recovery of the peer store' >> "$machine/mended" || true
done
stop_host
echo "  $rounds rounds, lines about mending: $(wc -l < "$machine/mended")"
[ -s "$machine/mended" ] || fault "lines about mending" "some, in so many rounds" none
finish
