#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Source this file: the table of the suites, and what runs each of them.

# For each suite: the lane that it runs in, the seconds that it may take, the tests that it runs unless
# others are asked for, and what it is built of, as <build folder>/<target>, the test program first.
#
# The suites of a lane run one after another, in a Windows and on a display of their own; lanes run beside
# each other. Forms need the focus, so their lane has no other suites.
# In a name stand the locale of the Windows programs, which number and file texts depend on, "traps" for
# a host whose floating-point unit traps, and at its end 64 for the bits of programs and Windows.
suites='
serial               serial     600  *           win32/serial_tests win32/read_write native/fluxor_simulator
serial-64            serial-64  600  *           win64/serial_tests win64/read_write native/fluxor_simulator
dialogs              forms     1800  *           win32/dialogs_tests
dialogs-de_DE        forms      300  InputBox.*  win32/dialogs_tests
dialogs-hu_HU        forms      300  InputBox.*  win32/dialogs_tests
dialogs-64           forms-64  1800  *           win64/dialogs_tests
abi                  calls      600  *           win32/abi_tests
automation           calls      300  *           win32/automation_tests
automation-de_DE     calls      300  *           win32/automation_tests
automation-hu_HU     calls      300  *           win32/automation_tests
automation-traps     calls      300  *           win32/automation_tests
hostile              calls      300  *           win32/hostile_tests
memory               calls      120  *           win32/memory_tests
faults               calls      600  *           win32/faults_tests
scripts              calls      300  *           win32/pvItems32
script_host          calls      300  *           win32/script_host_tests
apartments           calls      300  *           win32/apartments_tests
site                 calls      300  *           win32/pvItems32
documents            calls      300  *           win32/pvItems32
abi-64               calls-64   600  *           win64/abi_tests
automation-64        calls-64   300  *           win64/automation_tests
automation-de_DE-64  calls-64   300  *           win64/automation_tests
automation-hu_HU-64  calls-64   300  *           win64/automation_tests
automation-traps-64  calls-64   300  *           win64/automation_tests
hostile-64           calls-64   300  *           win64/hostile_tests
memory-64            calls-64   120  *           win64/memory_tests
faults-64            calls-64   600  *           win64/faults_tests
scripts-64           calls-64   300  *           win64/pvItems32
script_host-64       calls-64   300  *           win64/script_host_tests
apartments-64        calls-64   300  *           win64/apartments_tests
registration         calls-64   300  *           win64/pvItems32 win32/pvItems32
surrogate            own        600  *           win64/surrogate_tests win32/pvItems32
package              own        900  *           win64/pvItems32 win64/read_write win64/fluxor_server win32/pvItems32 win32/read_write win32/fluxor_server
installer            own        900  *           win64/pvItems32 win64/read_write win64/fluxor_server win32/pvItems32 win32/read_write win32/fluxor_server
bindings             plain      120  *           win32/contract
unit                 plain      300  *           native/unit_tests
unit-clang           plain      300  *           native-clang/unit_tests
'

# suite_names [lane]
suite_names() { awk -v lane="${1:-}" 'NF && (lane == "" || $2 == lane) { print $1 }' <<<"$suites"; }

# load_suite <name> [tests]: sets suite, lane, seconds, tests, targets and locale; ends the shell when
# there is no such suite.
load_suite() {
  suite=${1:-}
  if ! read -r _ lane seconds tests targets < <(awk -v name="$suite" 'NF && $1 == name' <<<"$suites"); then
    echo "no suite '$suite'; there are:" $(suite_names) >&2
    exit 2
  fi
  tests=${2:-$tests}
  case $suite in
    *-??_??*) locale=$(sed -E 's/.*-(.._..).*/\1.UTF-8/' <<<"$suite") ;;
    *) locale=${PV_LOCALE:-C.UTF-8} ;;
  esac
}

is_native() { [[ $targets == native* ]]; }

# start_lane <name>: starts the lane's Windows, of 64 bits when its name ends so; the library is
# registered there. The suites of the lane "own" make a Windows of their own, which begins without it.
start_lane() {
  case $1 in
    plain | own) return ;;
  esac
  export PV_WINEPREFIX=$PWD/build/wine-$1 PV_BITS=32
  [[ $1 != *-64 ]] || PV_BITS=64
  # shellcheck source=tools/wine_prefix.sh
  . tools/wine_prefix.sh
  trap stop_wine EXIT
  start_wine && register "build/win$PV_BITS/pvItems32.dll"
}

# suite_command [debug]: sets command to what runs the loaded suite, or its program in a debugger. That
# is the program, or a script where more than a program is needed. The BSTR cache is off, so that the
# allocation spy sees every text.
suite_command() {
  local program=build/${targets%% *} script=tests/${suite%%-*}/run.sh windows
  if is_native; then
    command=(env ${1:+ASAN_OPTIONS=detect_leaks=0 gdb --args} "$program" "--gtest_filter=$tests")
    return
  fi
  windows=(OANOCACHE=1)
  [[ $suite != *-traps* ]] || windows+=(PV_FLOATING_POINT=traps)
  if [ -e "$script" ]; then
    command=(env "${windows[@]}" "PV_WINEPREFIX=${WINEPREFIX:-}" "PV_LOCALE=$locale"
      ${1:+"PV_DEBUGGER=winedbg --gdb"} "$script" "$tests" "${program%/*}")
  else
    command=(env "${windows[@]}" "WINEPREFIX=$WINEPREFIX" "LC_ALL=$locale" "$PV_WINE" ${1:+winedbg --gdb}
      "$program.exe" "--gtest_filter=$tests")
  fi
}
