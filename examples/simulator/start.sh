#!/usr/bin/env bash
# Source this file: starts and stops the simulated transmitter at the other end of Wine's port COM1.

PV_SIMULATOR=
PV_SIMULATOR_LOG=$(mktemp)

# start_simulator <program> <options...>
start_simulator() {
  local program=$1 waited=0
  shift
  : >"$PV_SIMULATOR_LOG"
  "$program" --data examples/data --link "$WINEPREFIX/dosdevices/com1" "$@" \
    >"$PV_SIMULATOR_LOG" </dev/null &
  PV_SIMULATOR=$!
  until [ -s "$PV_SIMULATOR_LOG" ]; do  # it prints its end of the line
    waited=$((waited + 1))
    [ "$waited" -lt 100 ] || { echo "the simulated transmitter did not start" >&2; return 1; }
    sleep 0.05
  done
}

stop_simulator() {
  [ -n "$PV_SIMULATOR" ] || return 0
  kill "$PV_SIMULATOR" 2>/dev/null
  wait "$PV_SIMULATOR" 2>/dev/null
  PV_SIMULATOR=
}

forget_simulator() {
  stop_simulator
  rm -f "$PV_SIMULATOR_LOG"
}
