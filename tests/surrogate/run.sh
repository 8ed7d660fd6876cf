#!/usr/bin/env bash
# Runs hosts that reach the 32-bit library through the platform's surrogate process, in a Windows of 64
# bits of their own: hosts of 64 bits, and of 32 bits where the 64-bit build is not there.
# Usage: tests/surrogate/run.sh [tests, as a filter of Google Test [Windows build folder]]
set -uo pipefail
export PV_WINEPREFIX=$PWD/build/wine-surrogate
. tools/wine_prefix.sh
. tests/wanted.sh
export WINEARCH=win64
tests=${1:-*}
windows=${2:-build/win32}
loader=/usr/lib/wine/wine64
dll=$(windows_path "$windows/pvItems32.dll")
failed=0

# This loader alone starts programs of either kind under their names.
run_wine() { env LC_ALL="$PV_LOCALE" "$loader" "$@" </dev/null; }

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

# A script of tests/, behind its checks, by the script host of 64 bits.
run_script() { # <script>
  local whole output
  whole=$(mktemp --suffix .vbs)
  cat tests/scripts/lib/checks.vbs "$1" >"$whole"
  output=$(run_wine 'C:\windows\system32\cscript.exe' //nologo "$(windows_path "$whole")" \
    "$(windows_path examples/data)" | tr -d '\r')
  rm -f "$whole"
  printf '%s\n' "$output"
  [ "${output##*$'\n'}" = DONE ] && ! grep -q '^\[  FAILED  \]' <<<"$output"
}

# The host script with a server of its own, which the library in the other process calls.
run_server_of_a_script() {
  local output
  output=$(run_wine 'C:\windows\system32\cscript.exe' //nologo \
    "$(windows_path examples/hosts/mini_server.vbs)" "$(windows_path examples/data)\\fluxor" | tr -d '\r')
  printf '%s\n' "$output"
  grep -q '^Flow damping: 7.5 s$' <<<"$output" && [ "${output##*$'\n'}" = DONE ]
}

run_case() { # <name> <command...>
  wanted "$1" "$tests" || return 0
  if "${@:2}"; then say_passed "$1"; else say_failed "$1"; fi
}

[ -x "$loader" ] || { echo "there is no $loader"; say_failed Surrogate.HasA64BitWindows; exit 1; }
trap stop_wine EXIT
start_wine && regsvr32 || { say_failed Surrogate.IsRegistered; exit 1; }
run_case SurrogateRegistration.ChangesNothingWhenUndone changes_nothing_when_undone
regsvr32 /n /i:surrogate || { say_failed Surrogate.IsRegistered; exit 1; }
run_case SurrogateVbs.ReachesItsEnd run_script tests/surrogate/document.vbs
run_case SurrogateVbs.ServerOfTheScript run_server_of_a_script
client=build/win64/surrogate_tests.exe
[ -e "$client" ] || client=$windows/surrogate_tests.exe
run_wanted '*' "$client" || failed=1
exit "$failed"
