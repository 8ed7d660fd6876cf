#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Source this file behind tools/wine_prefix.sh, in a suite that is more than one program. Picks tests by
# filters as Google Test has them, such as 'FullDisk*:*/FullDisk*' or '-HangUp.*'.

# wanted <name> <filter>
wanted() {
  local taken=${2%%-*} left_out=
  [[ $2 != *-* ]] || left_out=${2#*-}
  taken=${taken:-*}
  [[ $1 == @(${taken//:/|}) && $1 != @(${left_out//:/|}) ]]
}

# narrowed <filter>: reads a list of tests from Google Test and writes the wanted ones as a filter.
narrowed() {
  local line suite=
  while read -r line; do
    line=${line%% *}
    case $line in
      *.) suite=$line ;;
      *) ! wanted "$suite$line" "$1" || printf '%s:' "$suite$line" ;;
    esac
  done < <(tr -d '\r')
}

# run_wanted <filter> <program> <options...>: of the filter's tests, runs those that $tests wants, too.
run_wanted() {
  local part=$1 program=$2
  if [ "$tests" != '*' ]; then
    part=$(run_wine "$program" --gtest_list_tests --gtest_filter="$part" | narrowed "$tests")
    [ -n "$part" ] || return 0
  fi
  run_test_program "$program" --gtest_filter="$part" "${@:3}"
}

# Cases that are no test of a program, with the milliseconds that they took.
say_passed() { echo "[       OK ] $1 (${2:-0} ms)"; }
say_failed() { echo "[  FAILED  ] $1 (${2:-0} ms)"; failed=1; }

# run_case <name> <command...>: shows what the command writes when it fails. It runs in a shell of its own.
run_case() { ! wanted "$1" "$tests" || run_step "$@"; }

# run_step <name> <command...>: a case that others need, whichever are wanted. What it writes goes to a
# file: the end of a pipe would be waited for as long as a process that it has started is there.
run_step() {
  local name=$1 begun log
  shift
  begun=$(date +%s%3N)
  log=$(mktemp)
  if ("$@") >"$log" 2>&1 </dev/null; then
    say_passed "$name" $(($(date +%s%3N) - begun))
  else
    cat "$log"
    say_failed "$name" $(($(date +%s%3N) - begun))
  fi
  rm -f "$log"
}
