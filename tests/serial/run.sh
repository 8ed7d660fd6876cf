#!/usr/bin/env bash
# Runs the serial tests against simulated transmitters on COM1. Needs a running Wine with the library
# registered. Usage: tests/serial/run.sh [native build folder [Windows build folder]]
set -uo pipefail

native=${1:-build/native}
windows=${2:-build/win32}
port=$WINEPREFIX/dosdevices/com1
faults=$(mktemp)
ready=$(mktemp)
simulator=

stop_simulator() {
  [ -n "$simulator" ] || return 0
  kill "$simulator" 2>/dev/null
  wait "$simulator" 2>/dev/null
  simulator=
}
trap 'stop_simulator; rm -f "$faults" "$ready"' EXIT

windows_path() { printf 'Z:%s' "$(realpath "$1")" | tr / '\\'; }

# run <test filter> <simulator options...>
run() {
  local filter=$1 status
  shift
  : >"$faults"
  : >"$ready"
  "$native/fluxor_simulator" --data examples/data --link "$port" --faults "$faults" --store 0 "$@" \
    >"$ready" </dev/null &
  simulator=$!
  local waited=0
  until [ -s "$ready" ]; do  # it prints its end of the line
    waited=$((waited + 1))
    if [ "$waited" -gt 100 ]; then
      echo "[  FAILED  ] Simulator.Starts (0 ms)"
      return 1
    fi
    sleep 0.05
  done
  OANOCACHE=1 wine "$windows/serial_tests.exe" --gtest_filter="$filter" \
    --faults "$(windows_path "$faults")" </dev/null
  status=$?
  stop_simulator
  return "$status"
}

wine regsvr32 /s "$(windows_path "$windows/fluxor_server.dll")" </dev/null ||
  { echo "[  FAILED  ] Server.IsRegistered (0 ms)"; exit 1; }

failed=0
run '-HangUp.*:OldSoftware.*' || failed=1
run 'HangUp.*' --hang-up 5 || failed=1
run 'OldSoftware.*' --software 1.10 || failed=1
exit "$failed"
