#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Runs hosts of 64 bits that reach the 32-bit library through the platform's surrogate process, in a
# Windows of their own.
# Usage: tests/surrogate/run.sh [tests, as a filter of Google Test [build folder of the hosts]]
set -uo pipefail
export PV_WINEPREFIX=$PWD/build/wine-surrogate PV_BITS=64
. tools/wine_prefix.sh
. tests/wanted.sh
tests=${1:-*}
windows=${2:-build/win64}
dll=$(windows_path build/win32/pvItems32.dll)
failed=0

regsvr32() { run_wine 'C:\windows\syswow64\regsvr32.exe' /s "$@" "$dll"; }

# Every key and value of the classes, for hosts of either kind.
registered() {
  run_wine reg export 'HKLM\Software\Classes' 'C:\classes.reg' /y >/dev/null
  tr -d '\0\r' <"$WINEPREFIX/drive_c/classes.reg"
}

# The registration changes what it says, and undoing it leaves nothing behind.
changes_nothing_when_undone() {
  local before
  regsvr32 /u /n /i:surrogate || return 1 # of an earlier run
  before=$(registered)
  regsvr32 /n /i:surrogate && [ "$(registered)" != "$before" ] || return 1
  regsvr32 /u /n /i:surrogate && [ "$(registered)" = "$before" ]
}

# The application of the surrogate stays as long as the library of either kind needs it.
is_kept_for_the_other_library() {
  local application='HKLM\Software\Classes\AppID\{37D5D503-E0CD-46FB-BB20-CEA6915A50A9}'
  regsvr64() { run_wine 'C:\windows\system32\regsvr32.exe' /s "$@" "$(windows_path build/win64/pvItems32.dll)"; }
  has_application() { run_wine reg query "$application" >/dev/null 2>&1; }
  regsvr64 && regsvr64 /n /i:surrogate && regsvr32 /n /i:surrogate || return 1
  regsvr32 /u /n /i:surrogate && has_application || return 1
  regsvr64 /u /n /i:surrogate && ! has_application || return 1
  regsvr64 /u && regsvr32 # their program identifiers are the same
}

# The host script with a server of its own, which the library in the other process calls.
run_server_of_a_script() {
  local output
  output=$(run_wine 'C:\windows\system32\cscript.exe' //nologo \
    "$(windows_path examples/hosts/mini_server.vbs)" "$(windows_path examples/data)\\fluxor" | tr -d '\r')
  printf '%s\n' "$output"
  grep -q '^Flow damping: 7.5 s$' <<<"$output" && [ "${output##*$'\n'}" = DONE ]
}

trap stop_wine EXIT
start_wine && regsvr32 || { say_failed Surrogate.IsRegistered; exit 1; }
run_case SurrogateRegistration.ChangesNothingWhenUndone changes_nothing_when_undone
run_case SurrogateRegistration.IsKeptForTheOtherLibrary is_kept_for_the_other_library
regsvr32 /n /i:surrogate || { say_failed Surrogate.IsRegistered; exit 1; }
! wanted document.vbs "$tests" || tests/run_script.sh tests/surrogate/document.vbs || failed=1
run_case SurrogateVbs.ServerOfTheScript run_server_of_a_script
run_wanted '*' "$windows/surrogate_tests.exe" || failed=1
exit "$failed"
