#!/bin/bash
# crowd.sh native|windows BIN: more connections at once than the hub admits (256, the service's own among them). Those
# turned away try again until there is room, and each client gets its one answer.
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

checking "300 connections at once"
start_host
status=0
answer=$(client crowd 300 255) || status=$?
expect "answers" "300 of 300 answered" "$answer"
expect "exit status" 0 "$status"
refused=$(log_failures | grep -c 'refused: as many connections as are allowed are open' || true)
[ "$refused" -ge 45 ] || fault "connections turned away" "at least 45" "$refused"
expect_empty "other failures in the log" "$(log_failures | grep -v 'refused: as many connections' || true)"
expect "answer after the crowd" done "$(ctl peer set still there)"
stop_host
finish
