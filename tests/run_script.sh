#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Runs a test script behind its checks by Wine's script host. Errors end a script silently, so its
# last line must be DONE; anything else is a failure.
set -uo pipefail
. tools/wine_prefix.sh

name=${1##*/}
whole=$(mktemp --suffix ".${name##*.}")
trap 'rm -f "$whole"' EXIT
cat "tests/scripts/lib/checks.${name##*.}" "$1" >"$whole"

host=(cscript //nologo "$(windows_path "$whole")" "$(windows_path examples/data)")
if [ -n "${PV_DEBUGGER:-}" ]; then
  run_test_program "${host[@]}"
  exit
fi
output=$(wine_output "${host[@]}")
printf '%s\n' "$output"
if [ "${output##*$'\n'}" != DONE ]; then
  echo "[  FAILED  ] $name.ReachesItsEnd (0 ms)"
  exit 1
fi
! grep -q '^\[  FAILED  \]' <<<"$output"
