#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Source this file: starts and stops simulated transmitters at the other ends of Wine's serial ports.

PV_SIMULATORS=()
PV_SIMULATOR_LOG=$(mktemp)

# add_simulator <number of the port> <program> <options...>
add_simulator() {
  local port=$1 program=$2 waited=0
  shift 2
  : >"$PV_SIMULATOR_LOG"
  "$program" --data examples/data --link "$WINEPREFIX/dosdevices/com$port" "$@" \
    >"$PV_SIMULATOR_LOG" </dev/null &
  PV_SIMULATORS+=($!)
  until [ -s "$PV_SIMULATOR_LOG" ]; do  # it prints its end of the line
    waited=$((waited + 1))
    [ "$waited" -lt 100 ] || { echo "the simulated transmitter did not start" >&2; return 1; }
    sleep 0.05
  done
}

# start_simulator <program> <options...>: on COM1.
start_simulator() { add_simulator 1 "$@"; }

# start_many_simulators <count> <program> <folder> <options...>: on COM1, COM2 and so on without COM9,
# which is the modem, each under the number of its port, timed and at every baud rate. The folder gets
# what each counts, in port<number>: for Windows, no file can be named like a port.
start_many_simulators() {
  local count=$1 program=$2 folder=$3 port
  shift 3
  for port in $(seq 1 $((count + 1)) | grep -vx 9 | head -n "$count"); do
    add_simulator "$port" "$program" --address "$port" --timed --autobaud --counts "$folder/port$port" "$@" ||
      return 1
  done
}

stop_simulator() {
  [ ${#PV_SIMULATORS[@]} -gt 0 ] || return 0
  kill "${PV_SIMULATORS[@]}" 2>/dev/null
  wait "${PV_SIMULATORS[@]}" 2>/dev/null
  PV_SIMULATORS=()
}

forget_simulator() {
  stop_simulator
  rm -f "$PV_SIMULATOR_LOG"
}
