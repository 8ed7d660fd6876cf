#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Makes a Free Pascal that compiles for 32-bit Windows, in build/fpc32: Debian has the compiler for its own
# system, and the sources of the other. Does nothing when it is there. Afterwards: build/fpc32/fpc host.pas
set -euo pipefail
cd "$(dirname "$0")/.."

version=3.2.2
sources=/usr/share/fpcsrc/$version
messages=$(echo /usr/lib/*/fpc/$version/msg/errore.msg)
folder=$PWD/build/fpc32
# Two suites may want it at once.
mkdir -p build
exec {lock}>"$folder.lock"
flock "$lock"
[ ! -x "$folder/fpc" ] || exit 0

rm -rf "$folder"
mkdir -p "$folder"/{compiler,objects,units}
cp -r "$sources/compiler/." "$folder/compiler/"
cd "$folder/compiler"

# The compiled messages are missing in the sources.
make_messages() {
  fpc -v0 -O2 -FE"$folder" -FU"$folder/objects" utils/msg2inc.pp
  "$folder/msg2inc" "$messages" msg msg
}

make_compiler() {
  fpc -v0 -O2 -Xs -Ur -di386 -dGDB -Fii386 -Fix86 -Fui386 -Fux86 -Fusystems -FU"$folder/objects" \
    -o"$folder/ppcross386" pp.pas
}

# The order of the sources' own makefile, which Debian leaves out.
make_units() {
  local rtl=$sources/rtl unit
  local options=(-n -Twin32 -Pi386 -O2 -v0 -di386 -FE"$folder/units" -FU"$folder/units"
    -Fi"$rtl/win32" -Fi"$rtl/inc" -Fi"$rtl/i386" -Fi"$rtl/win" -Fi"$rtl/win/wininc" -Fi"$rtl/objpas"
    -Fi"$rtl/objpas/sysutils" -Fi"$rtl/objpas/classes" -Fu"$rtl/win32" -Fu"$rtl/inc" -Fu"$rtl/i386"
    -Fu"$rtl/win" -Fu"$rtl/win/wininc" -Fu"$rtl/objpas" -Fu"$rtl/common")
  "$folder/ppcross386" "${options[@]}" -Us -Sg "$rtl/win32/system.pp"
  for unit in inc/heaptrc inc/uuchar objpas/objpas win32/buildrtl inc/lineinfo inc/lnfodwrf; do
    "$folder/ppcross386" "${options[@]}" "$rtl/$unit.pp"
  done
}

# The units above the run-time library are compiled from their sources when a program first uses them.
write_command() {
  local packages=$sources/packages path paths=()
  for path in winunits-base/src rtl-objpas/src/win rtl-objpas/src/inc rtl-objpas/src/common \
    fcl-base/src fcl-base/src/win fcl-registry/src fcl-xml/src; do
    paths+=("-Fu$packages/$path" "-Fi$packages/$path")
  done
  printf '#!/bin/sh\nexec %s "$@"\n' "'$folder/ppcross386' -n -Twin32 -Pi386 -v0e \
'-Fu$folder/units' '-FU$folder/objects' ${paths[*]@Q}" >"$folder/fpc.new"
  chmod +x "$folder/fpc.new"
  mv "$folder/fpc.new" "$folder/fpc"
}

log=$folder/log
{ make_messages && make_compiler && rm -f "$folder"/objects/* && make_units; } >"$log" 2>&1 ||
  { tail -n 20 "$log" >&2; echo "fpc32: Free Pascal for Windows could not be made" >&2; exit 1; }
rm -rf "$folder/compiler" "$folder/msg2inc"
write_command
