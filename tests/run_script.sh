#!/usr/bin/env bash
# Runs a test script by Wine's script host. Errors end a script silently, so its last line must be
# DONE; anything else is a failure.
script=$(printf 'Z:%s' "$(realpath "$1")" | tr / '\\')
output=$(wine cscript //nologo "$script" </dev/null | tr -d '\r')
printf '%s\n' "$output"
[ "$(printf '%s\n' "$output" | tail -n 1)" = DONE ] || { echo "the script did not reach its end"; exit 1; }
! printf '%s\n' "$output" | grep -q '^\[  FAILED  \]'
