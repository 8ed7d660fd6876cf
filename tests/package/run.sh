#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Makes the package, unpacks it, and builds and runs hosts of nothing but what is in it: the clients of
# this folder in every standard of C and C++, and what the guide shows. Needs both Windows builds. Runs
# in a Windows of its own, in which the library is registered for the scripts alone.
# Usage: tests/package/run.sh [tests, such as 'Package.C89.*:*.Bits64']
set -uo pipefail
PV_WINEPREFIX=$PWD/build/wine-package PV_BITS=64
. tools/wine_prefix.sh
. tests/wanted.sh
. tests/package/guide.sh

tests=${1:-*}
root=$PWD
sources=$root/tests/package
scratch=$(mktemp -d)
trap 'stop_wine; rm -rf "$scratch"' EXIT
PATH=$root/build/fpc32:$PATH
failed=0

# ---- the kind of processor: each lane of tests has its own

# set_lane <bits>
set_lane() {
  bits=$1
  case $bits in
    32) folder=x86 target=i686-w64-mingw32 processor=x86 loader=wine ;;
    64) folder=x64 target=x86_64-w64-mingw32 processor=amd64 loader=/usr/lib/wine/wine64 ;;
  esac
}

run_windows() { timeout --kill-after=5 30 env LC_ALL="$PV_LOCALE" "$loader" "$@" </dev/null | tr -d '\r'; }

# ends_with <line> <program...>: the program ends well, and its last line is this one.
ends_with() {
  local expected=$1 output status
  shift
  output=$(run_windows "$@")
  status=$?
  printf '%s\n' "$output"
  [ "$status" -eq 0 ] && [ "${output##*$'\n'}" = "$expected" ] && return
  echo "exit status $status, expected the last line '$expected'"
  return 1
}

# try <name> <command...>
try() { run_case "Package.$1.Bits$bits" "${@:2}"; }

# place_manifest <program>: the one of the guide, with which the library is found without registration.
place_manifest() {
  snippet xml "Without registration" | sed "s/\"x86\"/\"$processor\"/" >"$1.manifest"
}

# ---- the tests

# client <compiler> <standard> <source>
client() {
  local program=$folder/client_$2.exe
  "$target-$1-posix" -std="$2" -Wall -Wextra -pedantic -Werror -static -I typelib "$sources/$3" \
    typelib/pvItems32_i.c -o "$program" -lole32 -loleaut32 -luuid &&
    place_manifest "$program" && ends_with "$bits bits: DONE" "$program"
}

# guide_program <source> <last line of its output>
guide_program() {
  local program=$folder/host.exe command
  rm -f "$program"
  command=$(command_for "$1" "$folder") && echo "$command" && eval "$command" &&
    place_manifest "$program" && ends_with "$2" "$program"
}

client_pascal() {
  local program=$folder/client_pascal.exe
  "$root/tools/fpc32.sh" && fpc -Fubindings -FU"$folder" -o"$program" "$sources/client.pas" &&
    place_manifest "$program" && ends_with "$bits bits: DONE" "$program"
}

guide_pascal() { "$root/tools/fpc32.sh" && guide_program host.pas 'Volume flow'; }

# Compiled alone: there is no run-time here that has automation.
guide_csharp() {
  local command
  command=$(command_for host.cs "$folder") && echo "$command" && eval "mcs -warnaserror ${command#csc}"
}

# Without arguments it tells its usage; its way with a transmitter is tested with the serial line.
example_host() {
  local command
  command=$(command_for 'examples/hosts/*.cpp' "$folder") && echo "$command" && eval "$command" &&
    [[ $(run_windows "$folder/host.exe") == 'Usage: read_write.exe '* ]]
}

example_server() {
  local command
  command=$(command_for examples/fluxor_server/fluxor_server.def "$folder") && echo "$command" &&
    eval "$command" && "$target-objdump" -p "$folder/server.dll" | grep -w DllGetClassObject
}

# guide_script <file>: the script of the guide, and a line that tells the kind of the script host.
guide_script() {
  local script=$folder/$1 architecture=${processor^^}
  local shell='CreateObject("WScript.Shell")'
  [ "$bits" = 64 ] || architecture=x86
  [[ $1 == *.vbs ]] || shell='new ActiveXObject("WScript.Shell")'
  { cat "$1"; echo "WScript.Echo($shell.ExpandEnvironmentStrings(\"%PROCESSOR_ARCHITECTURE%\"))"; } \
    >"$script"
  ends_with "$architecture" cscript //nologo "$script" | tee /dev/stderr | grep '^Volume flow'
}

run_lane() {
  local standard
  set_lane "$1"
  for standard in 89 90 99 11 17; do try "C$standard" client gcc "c$standard" client.c; done
  for standard in 98 11 14 17 20; do try "Cpp$standard" client g++ "c++$standard" client.cpp; done
  try GuideC guide_program host.c '66 items'
  try GuideCpp guide_program host.cpp 'Volume flow'
  [ "$bits" = 64 ] || try Pascal client_pascal
  [ "$bits" = 64 ] || try GuidePascal guide_pascal
  try GuideCSharp guide_csharp
  try ExampleHost example_host
  [ "$bits" = 64 ] || try ExampleServer example_server
  return "$failed"
}

# Scripts have no manifest of their own: the library is registered for them.
run_scripts() {
  set_lane "$1"
  try IsRegistered run_windows regsvr32 /s "$folder\\pvItems32.dll"
  try GuideVbScript guide_script host.vbs
  try GuideJScript guide_script host.js
  try IsUnregistered run_windows regsvr32 /s /u "$folder\\pvItems32.dll"
}

unpack() {
  tools/package.sh && python3 -m zipfile -e build/package/*.zip "$scratch" && start_wine
}

if unpack; then say_passed Package.IsMade; else say_failed Package.IsMade; exit 1; fi
cd "$scratch"/* || exit 1
ln -sfn "$PWD/examples/data" "$WINEPREFIX/drive_c/data"
snippet csharp 'C#' >host.cs
snippet c C >host.c
snippet cpp C++ >host.cpp
snippet pascal Pascal >host.pas
snippet vbscript 'Quick start' >host.vbs
snippet jscript JScript >host.js

run_lane 32 &
lanes=$!
run_lane 64 || failed=1
wait "$lanes" || failed=1
run_scripts 32
run_scripts 64
exit "$failed"
