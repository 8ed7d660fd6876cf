#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Registers the builds of 32 and of 64 bits on one system: neither breaks the other, in either order, and
# nothing is left of both. Needs a running 64-bit Wine; leaves the 64-bit build registered.
# Usage: tests/registration/run.sh [tests, as a filter of Google Test [64-bit build folder [32-bit one]]]
set -uo pipefail
. tools/wine_prefix.sh
. tests/wanted.sh

tests=${1:-*}
declare -A library=([64]=${2:-build/win64}/pvItems32.dll [32]=${3:-build/win32}/pvItems32.dll)
declare -A programs=([64]=system32 [32]=syswow64)
declare -A other=([64]=32 [32]=64)
scratch=$(mktemp -d)
trap 'regsvr 64 >/dev/null; rm -rf "$scratch"' EXIT
failed=0

in_idl() { sed -n "s/$1/\1/p" typelib/pvItems32.idl; } # <pattern with one group>
class_names() { in_idl '.*coclass \([A-Za-z]*\).*'; }
type_library="TypeLib\\{$(in_idl '^\[uuid(\(.*\)), version.*')}\\1.0"
a_class="CLSID\\{$(in_idl '.*uuid(\([^)]*\)).* coclass CItem .*')}"
an_interface="Interface\\{$(in_idl '.*uuid(\([^)]*\)), dual.*One parameter of a transmitter.*')}"

# program <bits> <name> <arguments...>: one of the system's own
program() { "$PV_WINE" "C:\\windows\\${programs[$1]}\\$2.exe" "${@:3}" </dev/null 2>&1 | tr -d '\r'; }

regsvr() { program "$1" regsvr32 /s "${@:2}" "$(windows_path "${library[$1]}")"; } # <bits> <options...>

# has <bits> <key>: in the view of these programs
has() { program 64 reg query "$root\\Software\\Classes\\$2" "/reg:$1" >/dev/null; }

# serves <bits>: every class comes into being, out of the build of these bits, and its types are found.
serves() {
  # shellcheck disable=SC2046 # a word for each class
  [[ $(program "$1" cscript //nologo "$(windows_path tests/registration/client.vbs)" $(class_names)) == *" $1 bit|" ]] &&
    has "$1" "$type_library\\0\\win$1" && has "$1" "$an_interface\\TypeLib"
}

# All of the registry that is about classes, of both views.
classes() { program 64 reg query "$root\\Software\\Classes" /s | sort; }

# one_goes <bits registered first> <bits unregistered first>
one_goes() {
  regsvr "$1"
  regsvr "${other[$1]}"
  serves 32 && serves 64 || { echo "not both serve"; return 1; }
  regsvr "$2" /u
  serves "${other[$2]}" || { echo "the other does not serve"; return 1; }
  ! serves "$2" || { echo "$2 bits still serve"; return 1; }
  ! has "$2" "$type_library\\0\\win$2" || { echo "the type library of $2 bits stays"; return 1; }
  regsvr "${other[$2]}" /u
}

# Where a user's classes are in one view for all programs, as Wine has them, the last one to come is alone.
one_of_a_user_goes() {
  local user=(/n /i:user) server=$a_class\\InprocServer32
  regsvr 32 "${user[@]}"
  has 32 "$server" || { echo "nothing was written"; return 1; }
  if has 64 "$server"; then
    echo "one view of a user's classes"
    regsvr 64 "${user[@]}"
    regsvr 32 /u "${user[@]}"
  else
    regsvr 64 "${user[@]}"
    regsvr 32 /u "${user[@]}"
    has 64 "$server" && has 64 pvItems32.CItem || { echo "the other is gone"; return 1; }
  fi
  regsvr 64 /u "${user[@]}"
}

# try <name> <command...>: nothing of the library is left behind.
try() {
  local name=Registration.$1
  wanted "$name" "$tests" || return 0
  regsvr 32 /u
  regsvr 64 /u
  classes >"$scratch/before"
  if "${@:2}" && classes | diff "$scratch/before" -; then say_passed "$name"; else say_failed "$name"; fi
}

# The platform's script hosts register their own type library when they first run.
for bits in 32 64; do
  program $bits cscript //nologo "$(windows_path tests/registration/client.vbs)" >/dev/null
done

root=HKLM
try Of64BitsStaysWhen32BitsGo one_goes 32 32
try Of32BitsStaysWhen64BitsGo one_goes 64 64
root=HKCU
program 64 reg add 'HKCU\Software\Classes\CLSID' /f >/dev/null # of all programs: it stays
try OfAUserIsTakenAwayCompletely one_of_a_user_goes
exit "$failed"
