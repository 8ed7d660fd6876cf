#!/usr/bin/env bash
# Shows hosts at work: one documents a transmitter type; another connects to a simulated transmitter on
# COM1, reads and writes its items under access control and prints the audit file that resulted, in
# English and in Hungarian.
# Usage: examples/demo.sh [option of the simulated transmitter...], such as --drop 20
# Needs the Windows build, and the library registered in a running Wine.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/wine_prefix.sh
. examples/simulator/start.sh

history=$(mktemp -d)
trap 'forget_simulator; rm -rf "$history"' EXIT

title() { printf '\n==== %s\n\n' "$*"; }

# The simulated transmitter is a program of this system, not of Windows.
build_simulator() {
  local log
  log=$(mktemp)
  { cmake --preset native && cmake --build --preset native --target fluxor_simulator; } >"$log" 2>&1 ||
    { cat "$log" >&2; rm -f "$log"; return 1; }
  rm -f "$log"
}

# host <locale> <its OEM code page> <script> <arguments...>: the script host writes in that code page.
host() {
  local locale=$1 code_page=$2 script=$3 output
  shift 3
  output=$(PV_LOCALE=$locale.UTF-8 run_wine cscript //nologo \
    "$(windows_path "examples/hosts/$script")" "$@" | iconv -f "$code_page" -t UTF-8 | tr -d '\r')
  printf '%s\n' "$output"
  [ "${output##*$'\n'}" = DONE ] || { echo "demo: $script did not reach its end" >&2; return 1; }
}

# read_and_write <locale> <code page> <language index> <simulator options...>
read_and_write() {
  local locale=$1 code_page=$2 language=$3
  shift 3
  rm -f "$history"/*
  start_simulator build/native/fluxor_simulator "$@"
  host "$locale" "$code_page" read_write.vbs "$(windows_path examples/data)\\fluxor" \
    "$(windows_path "$history")" "$language"
  stop_simulator
}

build_simulator
register build/win32/fluxor_server.dll

title "document.vbs: the parameters of a Fluxor (first lines)"
host en_US CP437 document.vbs "$(windows_path examples/data)" 2.30 1 | sed -n '1,20p;$p'
title "read_write.vbs: reading and writing a Fluxor on COM1"
read_and_write en_US CP437 1 "$@"
title "read_write.vbs: the same in Hungarian"
read_and_write hu_HU CP852 2 "$@"
