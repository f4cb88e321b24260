#!/bin/bash
# idle.sh native|windows BIN: a host and a client with nothing to do use no processor time.
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

# Clock ticks (of 10 ms) that a process has used, all its threads together.
ticks() { sed 's/.*) //' "/proc/$1/stat" | awk '{print $12 + $13}'; }

checking "3 s of a host and a connected client that are left alone"
start_host
ctl peer set u s > "$machine/out"
mkfifo "$machine/input"
"${run[@]}" "$bin/e2e_client$suffix" idle < "$machine/input" > "$machine/idle" &
client_pid=$!
exec 7> "$machine/input"
until grep -q idle "$machine/idle"; do sleep 0.05; done
sleep 1
host_before=$(ticks "$host_pid")
client_before=$(ticks "$client_pid")
sleep $((3 * scale))
expect "ticks of the host" 0 $(($(ticks "$host_pid") - host_before))
expect "ticks of the client" 0 $(($(ticks "$client_pid") - client_before))
expect "answer after that" s "$(ctl peer get u)"
exec 7>&-
wait "$client_pid"
stop_host
finish
