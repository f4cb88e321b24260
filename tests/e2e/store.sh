#!/bin/bash
# store.sh native|windows BIN: marnockctl's store commands on the files of a real host: beside it, after it was killed
# and on files that were damaged.
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

# store_command STATUS ARGUMENT...: runs the command, with its output in $machine/out and $machine/err.
store_command() {
  local status=0
  ctl store "${@:2}" > "$machine/out.raw" 2> "$machine/err.raw" || status=$?
  tr -d '\r' < "$machine/out.raw" > "$machine/out"
  tr -d '\r' < "$machine/err.raw" > "$machine/err"
  expect "exit status of store ${*:2}" "$1" "$status"
}
conditions() { awk '$1 == "condition" { print $2 }' "$machine/out" | paste -sd' '; }
row_counts() { awk '$1 == "rows" { print $2 }' "$machine/out" | paste -sd' '; }
last_line() { tail -n 1 "$machine/out"; }

folder="C:\\Users\\$account\\Orvnta\\DeviceMgr\\"
sound='every file is whole, or was never written'
refusal='marnockctl: a host is running on \\.\Pipe\iLumoraAssistant: it would overwrite what is repaired. Stop it first; at its next start it repairs by itself'

checking "before anything was saved"
store_command 0 check
expect "conditions" "absent absent absent" "$(conditions)"
expect "summary" "$sound" "$(last_line)"
store_command 4 show peer
expect "complaint" "marnockctl: there is no file peer" "$(cat "$machine/err")"

checking "beside a running host"
start_host
for number in 1 2 3; do ctl peer set "u$number" "s$number" > "$machine/answer"; done
ctl trusted set laptop-1 --field devName=Laptop > "$machine/answer"
store_command 0 check
expect "conditions" "whole absent whole" "$(conditions)"
expect "rows" "3 1" "$(row_counts)"
store_command 3 repair
expect "refusal" "$refusal" "$(cat "$machine/err")"
store_command 3 repair --dry-run
store_command 0 show peer
expect "peers" "$(printf 'id  udId  sumId\n 1  u1    s1\n 2  u2    s2\n 3  u3    s3\n3 rows')" "$(cat "$machine/out")"

checking "$((8 * scale)) looks while the host saves one change after the other"
# Wine gives a deleted file's name free only when its last reader has closed it, which a host that pauses nowhere notices.
if [ "$target" = native ]; then
  start_client "$machine/counters" count 2 1
else
  : > "$machine/counters"
  (while ctl peer set busy host; do :; done > "$machine/answers" 2>&1) &
  client_pid=$!
fi
for _ in $(seq $((8 * scale))); do
  store_command 0 check
  case "$(last_line)" in
    "$sound" | 'nothing is wrong; a host is saving at this moment') ;;
    *) fault "summary" "$sound" "$(last_line)" ;;
  esac
  store_command 0 show "$peers"
done
expect_empty "complaints" "$(cat "$machine/err")"
expect_empty "failures in the log" "$(log_failures)"
kill_host
wait "$client_pid" || true

checking "what a killed host leaves is repaired as the host would"
store_command 0 repair # whatever moment it was killed at: nothing is lost
store_command 0 check
check_counters "after the repair" "$machine/counters"
before=$(rows "$peers" 'SELECT * FROM PEER_DEVICE')
mv "$store/$peers" "$store/$peers.tmp"
head -c 5000 "$store/$peers.tmp" > "$store/$peers"
store_command 1 check
expect "conditions" "repairable absent whole" "$(conditions)"
store_command 1 repair --dry-run
expect "steps" "$(printf 'peer store: would %s: the file is not whole, its older copy is\n' \
  "set aside $folder$peers" "restore the file from $folder$peers.tmp")" "$(cat "$machine/out")"
expect "files after a dry run" "$(printf '%s\n' "$peers" "$peers.tmp" "$trusted")" "$(ls "$store")"
store_command 0 repair
expect "actions" 2 "$(wc -l < "$machine/out")"
expect "peers" "$before" "$(rows "$peers" 'SELECT * FROM PEER_DEVICE')"
store_command 0 repair
expect "actions" "nothing to repair" "$(cat "$machine/out")"

checking "a damaged file: its rows are shown, and set aside it is lost to the service"
printf '%0100d' 0 | dd of="$store/$trusted" conv=notrunc status=none
store_command 2 check
expect "conditions" "whole absent lost" "$(conditions)"
store_command 1 show trusted
expect "rows" "$(printf 'id  sumId     devName\n 1  laptop-1  Laptop\n1 row')" "$(cat "$machine/out")"
store_command 2 repair
store_command 0 check
bad=$(cd "$store" && echo "$trusted".bad-*)
expect "what was set aside" "set aside $bad" "$(grep "^set aside .*$trusted" "$machine/out" | tr -s ' ')"
store_command 1 show "$bad"

checking "a device from the damaged file is given back to the service"
ctl --json store show "$bad" 2> "$machine/err.raw" | tr -d '\r' |
  sed -E 's/.*"device":(\{[^{}]*\}).*/\1/' > "$machine/device.json" || true
: > "$log"
start_host
ctl trusted set laptop-1 - < "$machine/device.json" > "$machine/answer"
expect "the device" Laptop "$(ctl trusted get laptop-1 | tr -d '\r' | awk '$1 == "devName" { print $2 }')"
expect_empty "failures in the log" "$(log_failures)"
stop_host
store_command 0 check
expect "conditions" "whole whole whole" "$(conditions)"
finish
