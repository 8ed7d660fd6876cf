#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Runs suites, whose programs must have been built; each leaves its log and the numbers of its passed and
# failed cases in build/test-logs.
# A suite prints a line "[       OK ] name" or "[  FAILED  ] name" for each case.
# Usage: tests/run_suites.sh lane <name>             the suites of a lane
#        tests/run_suites.sh suite <name> [tests]    one suite, or some of its tests (a filter of Google Test)
#        tests/run_suites.sh sum                     tells what the suites came to
set -uo pipefail
. tests/suites.sh

logs=$PWD/build/test-logs
mkdir -p "$logs"

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
  local command log=$logs/$1.log status ok bad begun=$SECONDS
  load_suite "$@"
  rm -f "$logs/$1.sum"
  suite_command
  timeout --kill-after=10 "$seconds" "${command[@]}" >"$log" 2>&1 </dev/null &
  wait $!
  status=$?
  ok=$(grep -a -c '^\[       OK \]' "$log")
  bad=$(grep -a -E '^\[  FAILED  \] [^ ]+\..* \([0-9]+ ms\)' "$log" | sort -u | wc -l)
  if [ "$bad" -eq 0 ] && { [ "$status" -ne 0 ] || [ "$ok" -eq 0 ]; }; then bad=1; fi
  echo "$ok $bad" >"$logs/$1.sum"
  printf '%-28s %5d passed, %d failed %6d s\n' "$suite" "$ok" "$bad" $((SECONDS - begun))
  [ "$bad" -ne 0 ] || return 0
  echo "--- end of $log (exit status $status)"
  without_passed "$log" | tail -n 60
  [ "$ok" -ne 0 ] || echo "--- none of the tests '$tests' passed"
}

run_lane() { # <name>
  local name
  trap 'kill $!; exit 143' TERM
  start_lane "$1" || return
  for name in $(suite_names "$1"); do run_suite "$name"; done
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

# sum <suite...>: a suite that did not come to run counts as one failed case.
sum() {
  local name ok bad passed=0 failed=0
  for name in "$@"; do
    read -r ok bad 2>/dev/null <"$logs/$name.sum" || { echo "$name did not run"; ok=0 bad=1; }
    ((passed += ok, failed += bad))
  done
  printf '%d passed, %d failed\n' "$passed" "$failed"
  [ "$failed" -eq 0 ]
}

case $1 in
  lane) run_lane "$2" ;;
  suite)
    load_suite "${@:2}"
    start_lane "$lane" || exit 1
    run_suite "${@:2}"
    say_how_to_debug
    sum "$2"
    ;;
  sum) sum $(suite_names) ;;
esac
