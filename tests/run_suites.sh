#!/usr/bin/env bash
# Runs every suite, or one, and ends with the sum of their cases. Needs their programs and, but for a
# native suite, a running Wine with the library registered.
# A suite prints a line "[       OK ] name" or "[  FAILED  ] name" for each case.
# Usage: tests/run_suites.sh [suite [tests, as a filter of Google Test]]
set -uo pipefail
. tools/wine_prefix.sh
. tests/suites.sh

logs=$PWD/build/test-logs
sums=$logs/sums
mkdir -p "$logs"
: >"$sums"

# What a log tells beside its passed cases; ends in the case that did not come to its end.
without_passed() {
  awk '{ sub(/\r$/, "") }
    /^\[ RUN / { begun = $0; next }
    /^\[       OK \]/ { begun = ""; next }
    /^\[-+\]/ || NF == 0 { next }
    { if (begun) print begun; begun = ""; print }
    END { if (begun) print begun }' "$1"
}

# run_suite <name> [tests]: a suite that ends badly without a failed case counts as one, and so does one
# without any case.
run_suite() {
  local command log=$logs/$1.log status ok bad
  load_suite "$@"
  suite_command
  timeout --kill-after=10 "$seconds" "${command[@]}" >"$log" 2>&1 </dev/null
  status=$?
  ok=$(grep -a -c '^\[       OK \]' "$log")
  bad=$(grep -a -E '^\[  FAILED  \] [^ ]+\..* \([0-9]+ ms\)' "$log" | sort -u | wc -l)
  if [ "$bad" -eq 0 ] && { [ "$status" -ne 0 ] || [ "$ok" -eq 0 ]; }; then bad=1; fi
  echo "$ok $bad" >>"$sums"
  printf '%-28s %5d passed, %d failed\n' "$suite" "$ok" "$bad"
  [ "$bad" -ne 0 ] || return 0
  echo "--- end of $log (exit status $status)"
  without_passed "$log" | tail -n 60
  [ "$ok" -ne 0 ] || echo "--- none of the tests '$tests' passed"
}

# run_suites <options of grep that choose the names>
run_suites() {
  local name
  for name in $(suite_names | grep "$@"); do run_suite "$name"; done
}

# Forms need the focus, so their suites have a Windows with a display of their own, beside the others.
run_dialog_suites() {
  PV_WINEPREFIX=$PWD/build/wine-dialogs
  . tools/wine_prefix.sh
  trap stop_wine EXIT
  start_wine && register build/win32/pvItems32.dll && run_suites '^dialogs'
}

run_all() {
  run_dialog_suites >"$logs/dialogs.out" 2>&1 &
  run_suites -v '^\(dialogs\|serial\)'
  wait $!
  cat "$logs/dialogs.out"
  # Counts the milliseconds between telegrams: nothing runs beside it.
  run_suites '^serial'
}

# What to do about a test that is looked at by itself.
say_how_to_debug() {
  local command
  suite_command debug
  echo "log       build/test-logs/$suite.log"
  echo "debugger  ./run debug $suite ${tests@Q}, which runs"
  printf '         '
  printf ' %q' "${command[@]}"
  printf '\n'
  is_native || echo "trace     WINEDEBUG=+seh,+ole ./run test $suite ${tests@Q}"
}

if [ $# -eq 0 ]; then
  expected=$(suite_names | wc -l)
  run_all
else
  expected=1
  run_suite "$@"
  say_how_to_debug
fi
# A suite that did not come to run has no line.
read -r passed failed < <(awk -v expected="$expected" \
  '{ passed += $1; failed += $2 } END { print passed + 0, failed + expected - NR }' "$sums")
printf '%d passed, %d failed\n' "$passed" "$failed"
[ "$failed" -eq 0 ]
