#!/usr/bin/env bash
# Runs every suite and ends with the sum of their cases. Needs a built tree and a running Wine.
# A suite prints a line "[       OK ] name" or "[  FAILED  ] name" for each case.
set -uo pipefail

root=$PWD
logs=$root/build/test-logs
mkdir -p "$logs"
passed=0
failed=0

# run_suite <name> <seconds> <command...>: a suite that ends badly without a failed case counts as one.
run_suite() {
  local name=$1 limit=$2 status ok bad
  shift 2
  local log=$logs/$name.log
  timeout --kill-after=10 "$limit" "$@" >"$log" 2>&1 </dev/null
  status=$?
  ok=$(grep -a -c '^\[       OK \]' "$log")
  bad=$(grep -a '^\[  FAILED  \] [^ ]*\.[^ ]*.* (' "$log" | sort -u | wc -l)
  if [ "$status" -ne 0 ] && [ "$bad" -eq 0 ]; then bad=1; fi
  if [ "$ok" -eq 0 ]; then bad=$((bad + 1)); fi
  passed=$((passed + ok))
  failed=$((failed + bad))
  printf '%-28s %5d passed, %d failed\n' "$name" "$ok" "$bad"
  if [ "$bad" -ne 0 ]; then
    echo "--- end of $log (exit status $status)"
    grep -a -v '^\[ *\(OK\|RUN\) *\]' "$log" | tail -n 60
  fi
}

# Windows programs run with the BSTR cache off, so that the allocation spy sees every text.
run_windows_suite() {
  local name=$1 limit=$2 program=$3
  shift 3
  [ -e "$root/build/win32/$program.exe" ] || return 0
  run_suite "$name" "$limit" env OANOCACHE=1 wine "$root/build/win32/$program.exe" "$@"
}

in_locale() { # <locale> <command...>
  local LC_ALL=$1
  export LC_ALL
  shift
  "$@"
}

# Forms need the focus, so their suites have a Windows with a display of their own, beside the others.
run_dialog_suites() {
  passed=0
  failed=0
  PV_WINEPREFIX=$root/build/wine-dialogs
  . tools/wine_prefix.sh
  trap stop_wine EXIT
  if start_wine && run_wine regsvr32 /s "$(windows_path build/win32/pvItems32.dll)"; then
    run_windows_suite dialogs 900 dialogs_tests
    for locale in de_DE hu_HU; do
      in_locale "$locale.UTF-8" run_windows_suite "dialogs-$locale" 300 dialogs_tests \
        '--gtest_filter=InputBox.*'
    done
  else
    echo "dialogs: Wine did not start"
    failed=1
  fi
  printf '%d %d\n' "$passed" "$failed" >"$logs/dialogs.sum"
}

wait_for_dialog_suites() {
  local ok=0 bad=1
  wait "$dialogs"
  cat "$logs/dialogs.out"
  read -r ok bad <"$logs/dialogs.sum"
  passed=$((passed + ok))
  failed=$((failed + bad))
}

rm -f "$logs/dialogs.sum"
(run_dialog_suites) >"$logs/dialogs.out" 2>&1 &
dialogs=$!

run_suite unit-gcc 300 build/native/unit_tests
run_suite unit-clang 300 build/native-clang/unit_tests

run_windows_suite abi 300 abi_tests
run_windows_suite automation 300 automation_tests

# Number and file texts depend on the locale, which Wine takes at the start of its server.
for locale in de_DE hu_HU; do
  [ -e build/win32/automation_tests.exe ] || break
  in_locale "$locale.UTF-8" run_windows_suite "automation-$locale" 300 automation_tests
done

run_windows_suite hostile 300 hostile_tests
run_windows_suite memory 120 memory_tests

run_suite faults 300 tests/faults/run.sh

for script in tests/scripts/*.vbs tests/scripts/*.js; do
  [ -e "$script" ] || continue
  run_suite "script-$(basename "$script")" 60 tests/run_script.sh "$script"
done

wait_for_dialog_suites

# Counts the milliseconds between telegrams: nothing runs beside it.
run_suite serial 600 tests/serial/run.sh

printf '%d passed, %d failed\n' "$passed" "$failed"
[ "$failed" -eq 0 ]
