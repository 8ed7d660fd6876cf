#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Tells how many lines of src/core the unit tests execute, and how many of the class files the
# contract sweep, the automation tests and the scripts, and fails below the limits. The lists of lines
# that none of them executes stay in build/coverage/*.txt. Needs the builds of the presets "coverage" and
# "coverage-win32" and a running Wine in which that library is registered.
set -uo pipefail
cd "$(dirname "$0")/.."

core_limit=95
class_limit=90
windows=build/coverage-win32
logs=build/coverage
failed=0

# check <name> <limit> <files> <builds> [gcovr options]
check() {
  local name=$1 limit=$2 files=$3 builds=$4 percent
  shift 4
  gcovr --root . --filter "$files" --txt "$logs/$name.txt" "$@" "$builds" >"$logs/$name.log" 2>&1 ||
    { tail -n 5 "$logs/$name.log"; failed=1; return; }
  percent=$(awk '$1 == "TOTAL" { print 100 * $3 / $2 }' "$logs/$name.txt")
  printf '%-12s %5.1f %% of the lines, at least %d %%\n' "$name" "$percent" "$limit"
  awk -v percent="$percent" -v limit="$limit" 'BEGIN { exit !(percent >= limit) }' || failed=1
}

# Tests that fail still count lines; that they pass is another command's matter.
run_quietly() { timeout --kill-after=10 900 "$@" </dev/null >>"$logs/tests.log" 2>&1; }

find build/coverage "$windows" -name '*.gcda' -delete
: >"$logs/tests.log"
run_quietly build/coverage/unit_tests
# Counts go to the path of the object file, which is on this drive.
export GCOV_PREFIX=Z:
for suite in abi automation; do
  run_quietly "$PV_WINE" "$windows/${suite}_tests.exe"
done
for script in tests/scripts/*.vbs tests/scripts/*.js; do run_quietly tests/run_script.sh "$script"; done
unset GCOV_PREFIX

check core "$core_limit" 'src/core/.*\.cpp$' build/coverage
check classes "$class_limit" 'src/classes/.*\.cpp$' "$windows" \
  --gcov-executable i686-w64-mingw32-gcov-posix
exit "$failed"
