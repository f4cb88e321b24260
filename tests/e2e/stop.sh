#!/bin/bash
# stop.sh native|windows BIN: the host is started and told to stop again and again while clients keep it busy. It never
# hangs, saves all three databases, loses nothing that it has answered, and ends within 2 s with status 0.
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

rounds=$((50 * scale))
clients=3
limit_us=2000000

saved='3 [KTData] Save database success.(KT::DbEngine::SaveDbIntoDisk)'
last_lines=$(printf '%s\n%s\n%s\n%s' "$saved" \
  '3 [KTData] Save zentap database into disk.(KT::TrustedZentapDbEngine::SaveZentapDbIntoDisk)' "$saved" "$saved")

check_files() {
  local file
  for file in "$peers" "$trusted" "$current"; do
    expect "round $round: integrity_check of $file" ok "$(rows "$file" 'PRAGMA integrity_check')"
  done
  expect "round $round: files" "$(printf '%s\n' "$current" "$peers" "$trusted" | sort)" "$(ls "$store")"
}

one_round() { # one_round SIGNAL
  local status=0 began took
  : > "$log"
  start_host
  start_client "$machine/counters" count "$clients" $((round * 1000000))
  sleep "0.$((RANDOM % 3))$((RANDOM % 10))"
  # Until every client has had an answer the round would show nothing.
  until [ "$(grep -c 'result:0(KT::Marnock::SetPeerDevice)' "$log")" -ge 10 ]; do sleep 0.01; done
  began=$(microseconds)
  stop_host "$1" || status=$?
  took=$(($(microseconds) - began))
  expect "round $round: exit status after SIG$1" 0 "$status"
  expect_at_most "round $round: microseconds to the end" "$limit_us" "$took"
  [ "$took" -le "$longest" ] || longest=$took
  status=0
  wait "$client_pid" || status=$?
  expect "round $round: the clients' answers" 0 "$status"
  expect "round $round: the log's end" "$last_lines" "$(log_lines | tail -n 4)"
  expect_empty "round $round: failures in the log" "$(log_failures)"
  check_counters "round $round" "$machine/counters"
  check_files
}

checking "$rounds times started and stopped while $clients clients write"
longest=0
for round in $(seq "$rounds"); do
  signal=TERM
  [ $((round % 2)) -eq 0 ] || signal=INT
  one_round "$signal"
done
echo "  the longest stop took $((longest / 1000)) ms"
finish
