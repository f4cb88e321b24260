#!/bin/bash
# status.sh native|windows BIN: what marnockctl status shows, what it warns of, and who may read what the host makes.
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

# The number at a place of the status document, for example: number .saves.peer.saved
status_json() { ctl --json status 2> "$machine/status.err"; }
counts_of() { grep -o "\"name\":\"$1\",\"received\":[^}]*},\"unanswered\":[0-9]*" "$machine/status.json" | cut -d, -f2-; }
saves_of() { grep -o "\"$1\":{\"saved\":[0-9]*,\"failedSinceLastSaved\":[0-9]*}" "$machine/status.json"; }

umask 000
start_host
umask 022

checking "a fresh host"
status_json > "$machine/status.json"
expect "saves" '"peer":{"saved":0,"failedSinceLastSaved":0}' "$(saves_of peer)"
expect "requests" '"received":0,"results":{"0":0,"-4996":0,"-4999":0},"unanswered":0' "$(counts_of SetPeerDevice)"
# The service and the asker.
expect "connections" '"connections":{"now":2,"most":2,"refused":0,"cutOff":0}' \
  "$(grep -o '"connections":{[^}]*}' "$machine/status.json")"
expect_empty "warnings" "$(cat "$machine/status.err")"

checking "requests, results and saves"
ctl peer set u s > "$machine/out"
ctl peer set v s > "$machine/out"
ctl trusted delete nobody > "$machine/out"
ctl peer get u > "$machine/out"
status_json > "$machine/status.json"
expect "peer set" '"received":2,"results":{"0":2,"-4996":0,"-4999":0},"unanswered":0' "$(counts_of SetPeerDevice)"
expect "peer get" '"received":1,"results":{"0":1,"-4996":0,"-4999":0},"unanswered":0' "$(counts_of GetPeerDevice)"
expect "saves of the peers" '"peer":{"saved":2,"failedSinceLastSaved":0}' "$(saves_of peer)"
expect "saves of the trusted devices" '"trusted":{"saved":1,"failedSinceLastSaved":0}' "$(saves_of trusted)"
expect "frames, a request and its answer each" '"framesRouted":8' "$(grep -o '"framesRouted":[0-9]*' "$machine/status.json")"

checking "a change that is not on the disk"
mv "$store/$peers" "$machine/peers.db"
mkdir "$store/$peers"
expect "answer" done "$(ctl peer set w s)"
expect "the host's warning" \
  '4 A change of the peer table is answered with 0 and is not on the disk; saves failed since the last good one: 1(KT::WarnOfUnsavedChange)' \
  "$(log_lines | grep WarnOfUnsavedChange)"
status_json > "$machine/status.json"
expect "saves of the peers" '"peer":{"saved":2,"failedSinceLastSaved":1}' "$(saves_of peer)"
expect "the tool's warning" \
  "marnockctl: changes of the peer table may not be on the disk: its last save failed; the host's log says why" \
  "$(tr -d '\r' < "$machine/status.err")"
rmdir "$store/$peers"
ctl peer set x s > "$machine/out"
status_json > "$machine/status.json"
expect "saves of the peers" '"peer":{"saved":3,"failedSinceLastSaved":0}' "$(saves_of peer)"
expect_empty "warnings" "$(cat "$machine/status.err")"
expect "peers on the disk" "$(printf 'u\nv\nw\nx')" "$(rows "$peers" 'SELECT udId FROM PEER_DEVICE ORDER BY udId')"

checking "the table"
ctl status > "$machine/table"
expect "lines" 21 "$(grep -c '' < "$machine/table")"
expect "line of a request" 'SetPeerDevice 4 4 0 0 0' "$(grep '^SetPeerDevice ' "$machine/table" | tr -d '\r' | tr -s ' ')"

if [ "$target" = native ]; then
  checking "what the host makes is its owner's alone, although it was started with umask 000"
  expect "modes of the folders" "$(printf '700 C\n700 C/Users\n700 C/Users/%s\n700 C/Users/%s/Orvnta\n704 C/Users/%s/Orvnta/DeviceMgr' \
    "$account" "$account" "$account")" "$(cd "$machine" && find C -type d -printf '%m %p\n' | sort -k 2)"
  expect "modes of the files" 600 "$(stat -c %a "$store"/* "$machine/pipe"/* | sort -u)"
  expect "new privileges" 1 "$(awk '/^NoNewPrivs/ { print $2 }' "/proc/$host_pid/status")"
fi
stop_host

checking "no host"
status=0
ctl status > "$machine/out" 2> "$machine/status.err" || status=$?
expect "exit status" 3 "$status"
expect_empty "answer" "$(cat "$machine/out")"
finish
