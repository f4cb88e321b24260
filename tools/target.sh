# Sourced by scripts that run the programs as a user does, on either target:
#   use_target native|windows BIN   choose the target and a fresh machine: own pipe, own user profile
#   start_host [ARGUMENT...]        start the host and wait until it answers
#   stop_host [SIGNAL]              end it in order; its exit status
#   kill_host                       end it as a power cut would
#   host ARGUMENT...                the host in the foreground, for runs that end by themselves
#   ctl ARGUMENT...                 marnockctl
#   program NAME ARGUMENT...        any other program of BIN
#   target_path FILE                FILE's name for the programs of the target
# Afterwards: $machine the folder of this machine, $store the folder of the database files, $log the host's log.
# Everything is stopped and removed when the script ends.

. "$tools/wine-server.sh"

use_target() {
  target=$1
  bin=$(cd "$2" && pwd)
  machine=$(mktemp -d)
  log=$machine/host.log
  host_pid=
  trap leave_target EXIT
  account=$(id -un)
  if [ "$target" = native ]; then
    export MARNOCK_ROOT=$machine
    store=$machine/C/Users/$account/Orvnta/DeviceMgr
    run=() suffix=
  else
    "$tools/new-wine-prefix" "${WINEPREFIX:?}" "$machine/wine"
    export WINEPREFIX=$machine/wine
    export TMPDIR=$machine # where the Wine server makes its folder
    keep_wine_server
    store=$WINEPREFIX/drive_c/users/$account/Orvnta/DeviceMgr
    run=("$tools/wine-run") suffix=.exe
  fi
}

leave_target() {
  if [ -n "$host_pid" ]; then
    kill -9 "$host_pid" 2>/dev/null || true
    wait "$host_pid" 2>/dev/null || true
  fi
  [ "$target" = native ] || end_wine_server
  rm -rf "$machine"
}

start_host() {
  : > "$machine/host.out"
  "${run[@]}" "$bin/marnock-host$suffix" "$@" > "$machine/host.out" 2>> "$log" &
  host_pid=$!
  for _ in $(seq 400); do
    if grep -q '^marnock-host: ready' "$machine/host.out"; then
      return 0
    fi
    if ! kill -0 "$host_pid" 2>/dev/null; then
      break
    fi
    sleep 0.05
  done
  echo "the host did not get ready:" >&2
  cat "$machine/host.out" "$log" >&2
  return 1
}

# Under Wine SIGINT is the one signal that arrives as an event of the console.
stop_host() {
  local signal=${1:-TERM} status=0
  [ "$target" = native ] || signal=INT
  kill -s "$signal" "$host_pid"
  wait "$host_pid" || status=$?
  host_pid=
  return "$status"
}

kill_host() {
  kill -9 "$host_pid"
  wait "$host_pid" 2>/dev/null || true
  host_pid=
}

program() {
  local name=$1
  shift
  "${run[@]}" "$bin/$name$suffix" "$@"
}

host() { timeout 60 "${run[@]}" "$bin/marnock-host$suffix" "$@"; }

ctl() { program marnockctl "$@"; }

target_path() {
  if [ "$target" = native ]; then
    printf '%s\n' "$1"
  else
    sed 's|/|\\|g; s|^|Z:|' <<< "$1"
  fi
}
