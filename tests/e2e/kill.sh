#!/bin/bash
# kill.sh native|windows BIN: clients die in the middle of their requests; the others notice nothing and the host stays.
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

rounds=$((10 * scale))

checking "$rounds clients are killed while 2 others wait for their answers"
start_host
start_client "$machine/living" load 0 2 $((6000 * scale))
living_pid=$client_pid
for _ in $(seq "$rounds"); do
  start_client "$machine/victim" load 100 2 1000000
  sleep "0.$((RANDOM % 2 + 2))$((RANDOM % 10))"
  kill -9 "$client_pid"
  wait "$client_pid" 2> "$machine/out" || true
done
status=0
wait "$living_pid" || status=$?
expect "the others' answers" 0 "$status"
expect "the others' answers" "$((6000 * scale)) right, 0 wrong, 0 unanswered, 0 unsent" "$(cat "$machine/living")"
served=$(log_lines | grep -c 'pkgName:load, sumId:c10[01]-.*result:0' || true)
[ "$served" -ge "$rounds" ] || fault "requests of killed clients served" "at least $rounds" "$served"
expect_empty "failures in the log" "$(log_failures | grep -v 'closed: it ended inside a frame' || true)"
expect "answer after all that" done "$(ctl peer set still there)"
stop_host
finish
