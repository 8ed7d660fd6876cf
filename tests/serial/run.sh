#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Runs the serial tests and the example hosts against simulated transmitters on COM1, and on many ports
# at once. Needs a running Wine with the library registered.
# Usage: tests/serial/run.sh [tests, as a filter of Google Test [Windows build folder]]
set -uo pipefail
. tools/wine_prefix.sh
. examples/simulator/start.sh
. tests/wanted.sh

tests=${1:-*}
windows=${2:-build/win32}
native=build/native
faults=$(mktemp)
scratch=$(mktemp -d)
trap 'forget_simulator; rm -rf "$faults" "$scratch"' EXIT
failed=0

# run_tests <filter> <simulator options...>
run_tests() {
  local filter=$1
  shift
  : >"$faults"
  start_simulator "$native/fluxor_simulator" --faults "$faults" --store 0 "$@" || return 1
  run_wanted "$filter" "$windows/serial_tests.exe" --faults "$(windows_path "$faults")" \
    --line "$(windows_path "$WINEPREFIX/dosdevices/com1")" || failed=1
  stop_simulator
}

run_many_lines() {
  mkdir "$scratch/counts"
  start_many_simulators 16 "$native/fluxor_simulator" "$scratch/counts" || return 1
  run_wanted 'ManyLines.*' "$windows/serial_tests.exe" --counts "$(windows_path "$scratch/counts")" || failed=1
  stop_simulator
}

# run_host <name> <locale> <program and arguments...>: a round on a line that loses one telegram in five
# has to reach its end, and to change, be refused and record what it is meant to.
run_host() {
  local name=$1 locale=$2 output=$scratch/output history=$scratch/history
  shift 2
  wanted "$name" "$tests" || return 0
  rm -rf "$history"
  mkdir "$history"
  start_simulator "$native/fluxor_simulator" --drop 20 || return 1
  PV_LOCALE=$locale.UTF-8 run_wine "$@" "$(windows_path examples/data)\\fluxor" \
    "$(windows_path "$history")" "${language:-1}" | tr -d '\r' >"$output"
  stop_simulator
  if [ "$(tail -n 1 "$output")" = DONE ] &&
    grep -aq '^110, .*: FT-1203 COOLING -> FT-1203 NORTH$' "$output" &&
    grep -aq '^Refused writes: \([12]\), intended: \1 ' "$output" &&
    grep -aq ',30,Full scale flow,25,m3/h,Commissioning' "$history/Historian.csv"; then
    say_passed "$name"
  else
    cat "$output"
    say_failed "$name"
  fi
}

script() { windows_path "examples/hosts/$1"; }

register "$windows/fluxor_server.dll" ||
  { say_failed Server.IsRegistered; exit 1; }

run_tests '-HangUp.*:OldSoftware.*:ManyLines.*:Soak.*' || exit 1
for test in EndsInTimeAndSaysWhy BetweenTwoExchangesIsNoticedByTheNextOne; do
  run_tests "HangUp.$test" --hang-up 5 || exit 1
done
run_tests 'OldSoftware.*' --software 1.10 || exit 1
run_many_lines || exit 1

if wanted Soak.MemoryHandlesAndHistoriesStayExact "$tests"; then
  tools/soak.sh 2000 "$native" "$windows" || failed=1
fi

run_host Hosts.VbScript en_US cscript //nologo "$(script read_write.vbs)"
language=2 run_host Hosts.VbScriptInHungarian hu_HU cscript //nologo "$(script read_write.vbs)"
run_host Hosts.JScript en_US cscript //nologo "$(script read_write.js)"
run_host Hosts.EarlyBound en_US "$windows/read_write.exe"

name=Hosts.ServerAsScriptClass
if ! wanted "$name" "$tests"; then
  :
elif run_wine cscript //nologo "$(script mini_server.vbs)" "$(windows_path examples/data)\\fluxor" |
  tr -d '\r' | grep -q '^Flow damping: 7.5 s$'; then
  say_passed "$name"
else
  say_failed "$name"
fi
exit "$failed"
