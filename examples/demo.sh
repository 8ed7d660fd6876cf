#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Shows hosts at work: one documents a transmitter type, with 32 bits, with 64, and with 64 through the
# 32-bit library in a surrogate process; another connects to a simulated transmitter on
# COM1, reads and writes its items under access control and prints the audit file that resulted, in
# English and in Hungarian.
# Usage: examples/demo.sh [option of the simulated transmitter...], such as --drop 20
# Needs both Windows builds, and the 32-bit library registered in a running Wine.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/wine_prefix.sh
. examples/simulator/start.sh

scratch=$(mktemp -d)
history=$scratch/history
mkdir "$history"
trap 'forget_simulator; rm -rf "$scratch"' EXIT

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

document() { host en_US CP437 document.vbs "$(windows_path examples/data)" 2.30 1; }

# with_64_bits <command...>: in a Windows of 64 bits, whose script host has 64 bits, too.
with_64_bits() (
  PV_BITS=64
  PV_WINEPREFIX=
  . tools/wine_prefix.sh
  trap stop_wine EXIT
  start_wine
  "$@"
)

document_with_64_bits() {
  register build/win64/pvItems32.dll
  document
  run_wine regsvr32 /s /u "$(windows_path build/win64/pvItems32.dll)"
}

# The 32-bit tool of a 64-bit Windows registers the 32-bit library.
document_through_surrogate() {
  local tool=('C:\windows\syswow64\regsvr32.exe' /s) library
  library=$(windows_path build/win32/pvItems32.dll)
  run_wine "${tool[@]}" "$library"
  run_wine "${tool[@]}" /n /i:surrogate "$library"
  document
  run_wine "${tool[@]}" /u "$library"
}

# same_document <host> <command...>
same_document() {
  "${@:2}" >"$scratch/other"
  cmp "$scratch/document" "$scratch/other"
  echo "$1: the same, $(wc -l <"$scratch/other") lines"
}

build_simulator
register build/win32/fluxor_server.dll

title "document.vbs: the parameters of a Fluxor (first lines)"
document >"$scratch/document"
sed -n '1,20p;$p' "$scratch/document"
echo
echo "32-bit host: $(wc -l <"$scratch/document") lines"
same_document "64-bit host" with_64_bits document_with_64_bits
same_document "64-bit host, 32-bit library in a surrogate process" with_64_bits document_through_surrogate
title "read_write.vbs: reading and writing a Fluxor on COM1"
read_and_write en_US CP437 1 "$@"
title "read_write.vbs: the same in Hungarian"
read_and_write hu_HU CP852 2 "$@"
