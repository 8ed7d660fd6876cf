#!/usr/bin/env bash
# Runs a test script behind its checks by Wine's script host. Errors end a script silently, so its
# last line must be DONE; anything else is a failure.
set -u
extension=${1##*.}
whole=$(mktemp --suffix ".$extension")
trap 'rm -f "$whole"' EXIT
cat "$(dirname "$1")/lib/checks.$extension" "$1" >"$whole"

windows_path() { printf 'Z:%s' "$(realpath "$1")" | tr / '\\'; }
output=$(wine cscript //nologo "$(windows_path "$whole")" "$(windows_path examples/data)" \
  </dev/null | tr -d '\r')
printf '%s\n' "$output"
[ "$(printf '%s\n' "$output" | tail -n 1)" = DONE ] || { echo "the script did not reach its end"; exit 1; }
! printf '%s\n' "$output" | grep -q '^\[  FAILED  \]'
