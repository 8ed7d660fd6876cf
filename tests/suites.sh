#!/usr/bin/env bash
# Source this file behind tools/wine_prefix.sh: the table of the suites, and what runs each of them.

# For each suite: the seconds that it may take, the tests that it runs unless others are asked for, and
# what it is built of, as <build folder>/<target>, the test program first. A locale in the name is that
# of its Windows programs, which number and file texts depend on; "traps" stands for a host whose
# floating-point unit traps.
suites='
unit              300  *           native/unit_tests
unit-clang        300  *           native-clang/unit_tests
abi               300  *           win32/abi_tests
automation        300  *           win32/automation_tests
automation-de_DE  300  *           win32/automation_tests
automation-hu_HU  300  *           win32/automation_tests
automation-traps  300  *           win32/automation_tests
hostile           300  *           win32/hostile_tests
memory            120  *           win32/memory_tests
faults            300  *           win32/faults_tests
scripts           300  *           win32/pvItems32
dialogs          1800  *           win32/dialogs_tests
dialogs-de_DE     300  InputBox.*  win32/dialogs_tests
dialogs-hu_HU     300  InputBox.*  win32/dialogs_tests
serial            600  *           win32/serial_tests win32/read_write native/fluxor_simulator
'

suite_names() { awk 'NF { print $1 }' <<<"$suites"; }

# load_suite <name> [tests]: sets suite, seconds, tests, targets and locale; ends the shell when there is
# no such suite.
load_suite() {
  suite=${1:-}
  if ! read -r _ seconds tests targets < <(awk -v name="$suite" 'NF && $1 == name' <<<"$suites"); then
    echo "no suite '$suite'; there are:" $(suite_names) >&2
    exit 2
  fi
  tests=${2:-$tests}
  case $suite in
    *-??_??) locale=${suite##*-}.UTF-8 ;;
    *) locale=$PV_LOCALE ;;
  esac
}

is_native() { [[ $targets == native* ]]; }

# suite_command [debug]: sets command to what runs the loaded suite, or its program in a debugger. That
# is the program, or a script where more than a program is needed. The BSTR cache is off, so that the
# allocation spy sees every text.
suite_command() {
  local program=build/${targets%% *} script=tests/${suite%%-*}/run.sh
  local windows=("WINEPREFIX=$WINEPREFIX" OANOCACHE=1)
  [ "$suite" != automation-traps ] || windows+=(PV_FLOATING_POINT=traps)
  if is_native; then
    command=(env ${1:+ASAN_OPTIONS=detect_leaks=0 gdb --args} "$program" "--gtest_filter=$tests")
  elif [ -e "$script" ]; then
    command=(env "${windows[@]}" "PV_LOCALE=$locale" ${1:+"PV_DEBUGGER=winedbg --gdb"} "$script"
      "$tests" "${program%/*}")
  else
    command=(env "${windows[@]}" "LC_ALL=$locale" wine ${1:+winedbg --gdb} "$program.exe"
      "--gtest_filter=$tests")
  fi
}
