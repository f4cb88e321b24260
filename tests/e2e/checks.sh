# Sourced by the tests beside it, which take native|windows and the folder of the programs:
#   checking TEXT                  what is checked next
#   expect WHAT EXPECTED SEEN      a fault unless both are the same text
#   expect_at_most WHAT LIMIT SEEN likewise for whole numbers
#   expect_empty WHAT SEEN
#   finish                         ends the test: exit status 1 if there was a fault
# and the commands of tools/target.sh. MARNOCK_E2E_SCALE (default 1) multiplies rounds and numbers of requests.
set -euo pipefail
tools=$(cd "$(dirname "${BASH_SOURCE[0]}")/../../tools" && pwd)
. "$tools/target.sh"
use_target "$1" "$2"
scale=${MARNOCK_E2E_SCALE:-1}
faults=0

peers=PeerDeviceInfo1G12NJ9DS39D.db
trusted=TrustedZentapDeviceInfo2G12NJ9DS39D.db
current=CurrentZentapDeviceInfo1G12NJ9DS39D.db
guard=G12NJ9DS39D.db

checking() { printf -- '- %s\n' "$1"; }

fault() { # fault WHAT EXPECTED SEEN
  printf '  WRONG %s\n    expected: %s\n    seen:     %s\n' "$1" "$2" "$3"
  faults=$((faults + 1))
}

expect() { [ "$2" = "$3" ] || fault "$@"; }
expect_at_most() { [ "$3" -le "$2" ] || fault "$1" "at most $2" "$3"; }
expect_empty() { [ -z "$2" ] || fault "$1" nothing "$2"; }

finish() {
  if [ "$faults" -ne 0 ]; then
    echo "$faults faults"
    exit 1
  fi
  echo "everything as expected"
}

client() { program e2e_client "$@"; }

# Starts the client, writing to the file OUT, and sets client_pid.
start_client() { # start_client OUT ARGUMENT...
  local out=$1
  shift
  "${run[@]}" "$bin/e2e_client$suffix" "$@" > "$out" &
  client_pid=$!
}

# The log without its times; of the lines from number $1 on where that is given.
log_lines() { tail -n "+${1:-1}" "$log" | sed -E 's/^[0-9-]{10}T[0-9:.]{12}Z //'; }
log_failures() { log_lines "$@" | grep '^4 ' || true; }
next_log_line() { echo $(($(wc -l < "$log") + 1)); }

# rows FILE SQL: what the sqlite3 tool reads from a database file of the host.
rows() { sqlite3 "$store/$1" "$2"; }

# The numbers that `e2e_client count` stored lie between the last one answered and the last one sent. Each call of it
# starts with numbers above those of the call before.
check_counters() { # check_counters WHEN FILE
  local name answered sent stored
  while read -r name answered sent; do
    stored=$(rows "$peers" "SELECT sumId FROM PEER_DEVICE WHERE udId = '$name'")
    if [ "${stored:-0}" -lt "$answered" ] || [ "${stored:-0}" -gt "$sent" ]; then
      fault "$1: $name in the file" "$answered to $sent" "${stored:-no row}"
    fi
  done < "$2"
}

microseconds() { echo "${EPOCHREALTIME//[.,]/}"; }
