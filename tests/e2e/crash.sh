#!/bin/bash
# crash.sh native|windows BIN: the host is killed in the middle of its saves, again and again. Each next start mends the
# files, and every change that was answered is there.
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

rounds=$((15 * scale))

checking "$rounds times killed while 3 clients write"
start_host
ctl peer set first 1 > "$machine/out" # before the very first save there is nothing to mend
for round in $(seq "$rounds"); do
  start_client "$machine/counters" count 3 $((round * 1000000))
  sleep "0.$((RANDOM % 4))$((RANDOM % 10))"
  until grep -q 'result:0(KT::Marnock::SetPeerDevice)' "$log"; do sleep 0.01; done
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
echo "  lines about mending: $(wc -l < "$machine/mended")"
[ -s "$machine/mended" ] || fault "lines about mending" "some, in so many rounds" none
finish
