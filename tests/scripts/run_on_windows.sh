#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Runs the test scripts on Windows itself, by the bash that comes with git. Needs the library registered.
# Usage: tests/scripts/run_on_windows.sh [folder of the script host]
set -uo pipefail

host=${1:-/c/Windows/SysWOW64}/cscript.exe
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

for script in tests/scripts/*.vbs tests/scripts/*.js; do
  whole=$scratch/${script##*/}
  cat "tests/scripts/lib/checks.${script##*.}" "$script" >"$whole"
  output=$("$host" //nologo "$(cygpath -w "$whole")" "$(cygpath -w examples/data)" | tr -d '\r')
  printf '%s\n%s\n' "$script" "$output"
  # Errors end a script silently, so its last line must be DONE.
  if [ "${output##*$'\n'}" != DONE ] || grep -q '^\[  FAILED  \]' <<<"$output"; then failed=1; fi
done
exit "$failed"
