#!/bin/bash
# host.sh native|windows BIN: the host's command line, one host at a time, and the import that happens once.
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

# run_host STATUS ERROR ARGUMENT...: a run that ends by itself: its exit status and what it says on standard error.
run_host() {
  local status=0 error
  error=$(host "${@:3}" 2>&1 > "$machine/host.out") || status=$?
  expect "exit status of marnock-host ${*:3}" "$1" "$status"
  expect "standard error of marnock-host ${*:3}" "$2" "$error"
  expect_empty "standard output of marnock-host ${*:3}" "$(cat "$machine/host.out")"
}

expect_nothing_started() {
  [ ! -e "$store" ] || fault "database folder" "not made" "$(ls "$store")"
  if [ "$target" = native ]; then
    [ ! -e "$machine/pipe" ] || fault "pipe folder" "not made" "$(ls "$machine/pipe")"
  fi
}

wrong_import() { # wrong_import JSON ERROR
  printf '%s' "$1" > "$machine/wrong.json"
  run_host 2 "marnock-host: $wrong: $2" --import "$wrong"
}

checking "a wrong import file: exit status 2, the place is named, nothing is started"
wrong=$(target_path "$machine/wrong.json")
run_host 2 "marnock-host: cannot read $wrong: No such file or directory" --import "$wrong"
wrong_import '{"trusted": [{"summary": "a"}, {"devTyp": 1}]}' 'trusted[1]: unknown field "devTyp"'
wrong_import '{"paired": {"devType": "1"}}' \
  'paired.devType: expected an integer from -2147483648 to 2147483647, found "1"'
wrong_import '{"trusted": {}}' 'trusted: expected an array of devices or null'
wrong_import '{"paires": null}' 'unknown member "paires"; "paired" and "trusted" are known'
wrong_import '[]' 'expected an object with "paired" and "trusted"'
printf '{"paired": {"devName": "a",\n"devName": "b"}}' > "$machine/wrong.json"
run_host 2 "marnock-host: $wrong: the member \"devName\" stands twice in one object" --import "$wrong"
printf '{\n  "paired": x\n}' > "$machine/wrong.json"
status=0
error=$(host --import "$wrong" 2>&1) || status=$?
expect "exit status for what is not JSON" 2 "$status"
case $error in
  "marnock-host: $wrong: not JSON: "*"line 2, column 13: "*) ;;
  *) fault "message for what is not JSON" "the file, line 2 and column 13" "$error" ;;
esac
expect_nothing_started

checking "a wrong command line: exit status 2"
for arguments in --nonsense 'surplus' '--log' '--import'; do
  status=0
  host $arguments > "$machine/host.out" 2>&1 || status=$?
  expect "exit status of marnock-host $arguments" 2 "$status"
done
expect_nothing_started

checking "a log file that cannot be opened: exit status 1"
folder=$(target_path "$machine")
status=0
error=$(host --log "$folder" 2>&1) || status=$?
expect "exit status" 1 "$status"
case $error in
  "marnock-host: cannot open the log file $folder: "*) ;;
  *) fault "message" "the log file's name" "$error" ;;
esac
expect_nothing_started

checking "the import: once, then the guard file keeps it away"
printf '{"paired": {"devName": "P"}, "trusted": [{"devName": "T1"}, {"devName": "T2"}]}' > "$machine/import.json"
import=$(target_path "$machine/import.json")
begun='3 [KTData] Get zentap devices from registry.(KT::Marnock::GetDeviceFromRegistry)'
present='3 [KTData] Zentap device database is exist.(KT::Marnock::GetDeviceFromRegistry)'
start_host --import "$import"
stop_host
expect "the import in the log" "$begun" "$(log_lines | grep GetDeviceFromRegistry)"
expect "size of the guard file" 0 "$(stat -c %s "$store/$guard")"
start_host --import "$import"
expect "the import in the log" "$(printf '%s\n' "$begun" "$begun" "$present")" \
  "$(log_lines | grep GetDeviceFromRegistry)"
stop_host
expect "trusted devices" "$(printf 'T1\nT2')" "$(rows "$trusted" 'SELECT devName FROM trustedZentapDeviceInfo')"
expect "current devices" P "$(rows "$current" 'SELECT devName FROM currZentapDeviceInfo')"
rm "$store/$guard"
mkdir "$store/$guard"
start_host --import "$import"
stop_host
expect "the import beside a folder of the guard's name" "$begun" "$(log_lines | grep GetDeviceFromRegistry | tail -n 1)"
rmdir "$store/$guard"

checking "--log FILE: the log is there and nowhere else"
: > "$log"
start_host --log "$(target_path "$machine/file.log")"
ctl peer set u s > "$machine/out"
stop_host
expect_empty "the log on standard error" "$(cat "$log")"
expect "result lines in the file" 1 "$(grep -c 'udId:u, result:0(KT::Marnock::SetPeerDevice)$' "$machine/file.log")"
expect_empty "carriage returns in the file" "$(grep "$(printf '\r')" "$machine/file.log" || true)"

checking "a second host: exit status 1, and the first one's files are left alone"
start_host
ctl peer set first 1 > "$machine/out"
before=$(stat -c '%n %i %s %y' "$store"/*)
run_host 1 'marnock-host: another host is running on \\.\Pipe\iLumoraAssistant'
expect "files" "$before" "$(stat -c '%n %i %s %y' "$store"/*)"
expect "answer of the first host" 1 "$(ctl peer get first)"

if [ "$target" = native ]; then
  checking "the socket of a host that was killed is replaced"
  kill_host
  [ -S "$machine/pipe/iLumoraAssistant" ] || fault "socket" "left behind" "$(ls "$machine/pipe")"
  start_host
  expect "mode of the pipe folder" 700 "$(stat -c %a "$machine/pipe")"
  expect "mode of the socket" 600 "$(stat -c %a "$machine/pipe/iLumoraAssistant")"
else
  checking "after a host that was killed the next one starts"
  kill_host
  start_host
fi
expect "answer of the next host" 1 "$(ctl peer get first)"
stop_host

if [ "$target" = native ]; then
  checking "a path that is too long for a socket: exit status 1, the path is named"
  long=$machine/$(printf '%0100d' 0)
  status=0
  error=$(MARNOCK_ROOT=$long host 2>&1 > "$machine/host.out") || status=$?
  expect "exit status" 1 "$status"
  case $error in
    "marnock-host: "*"$long/pipe/iLumoraAssistant"*) ;;
    *) fault "message" "the path" "$error" ;;
  esac
fi
finish
