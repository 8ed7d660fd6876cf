#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Runs the tests of free-threaded hosts, a part in each process: this platform hangs when a process has
# had more than some sixty apartments. Needs a running Wine with the library registered.
# Usage: tests/apartments/run.sh [tests, as a filter of Google Test [Windows build folder]]
set -uo pipefail
. tools/wine_prefix.sh
. tests/wanted.sh

tests=${1:-*}
windows=${2:-build/win32}
failed=0

# A debugger is for one process.
parts=8
[ -z "${PV_DEBUGGER:-}" ] || parts=1
for ((part = 0; part < parts; part++)); do
  GTEST_TOTAL_SHARDS=$parts GTEST_SHARD_INDEX=$part \
    run_test_program "$windows/apartments_tests.exe" "--gtest_filter=$tests" || failed=1
done

name=PlatformLimit.AProcessHasFewApartments
if wanted "$name" "$tests"; then
  run_wine "$windows/apartments_tests.exe" --limit 6 --gtest_also_run_disabled_tests \
    --gtest_filter=PlatformLimit.DISABLED_AProcessHasManyApartments >/dev/null 2>&1
  # So does the test program end itself when a test hangs.
  if [ $? -eq 3 ]; then say_passed "$name"; else say_failed "$name"; fi
fi
exit "$failed"
