#!/bin/bash
# session.sh native|windows BIN: one session with all eleven requests and their failures: each answer, and the host's
# whole log line by line, with levels, in order.
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

logged=0

# step STATUS ANSWER COMMAND... : standard input is what the command adds to the log.
step() {
  local expected_status=$1 expected_answer=$2 expected_log expected_count status=0 answer
  expected_log=$(cat)
  expected_count=$(grep -c '' <<< "$expected_log")
  shift 2
  "$@" > "$machine/answer" 2>&1 < /dev/null || status=$?
  answer=$(cat "$machine/answer")
  expect "exit status of $*" "$expected_status" "$status"
  expect "answer to $*" "$expected_answer" "$answer"
  # A request's last line can come after its answer.
  for _ in $(seq 200); do
    [ "$(wc -l < "$log")" -lt $((logged + expected_count)) ] || break
    sleep 0.02
  done
  expect "log of $*" "$expected_log" "$(log_lines $((logged + 1)))"
  logged=$(wc -l < "$log")
}

# Values as a payload has them, in hexadecimal digits. ASCII only.
str() {
  printf '%02x%02x' $((${#1} & 255)) $((${#1} >> 8))
  printf '%s' "$1" | od -An -v -tx1 | tr -d ' \n'
}
int32() { printf '%02x%02x%02x%02x' $(($1 & 255)) $(($1 >> 8 & 255)) $(($1 >> 16 & 255)) $(($1 >> 24 & 255)); }

read_failed=$(int32 -4996)
change_failed=$(int32 -4999)
empty=$(str '')
int64_zero=$(int32 0)$(int32 0)
# A record of default values in the 24 fields that both kinds of device have, without the last one.
default_fields=$(int32 0)$(int32 0)$empty$empty$empty$empty$empty$empty$int64_zero
default_fields+=$(int32 0)$(int32 1)$(int32 1)$(int32 1)$(int32 0)$empty$empty$(int32 0)$(int32 0)
default_fields+=$(int32 2)$(int32 -1)$(int32 -1)$(int32 0)$empty
default_trusted=$default_fields$(int32 0)
default_current=$default_fields$(int32 0)$(int32 0)$(int32 0)$(int32 0)$(int32 0)$(int32 0)$(int32 0)$empty

. "$(dirname "${BASH_SOURCE[0]}")/session-steps.sh"
finish
