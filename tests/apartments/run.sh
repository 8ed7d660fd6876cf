#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Runs the tests of free-threaded hosts, a part in each process: some platforms hang when a process has
# had more than sixty apartments. Needs a running Wine with the library registered.
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

# A platform lets a process have many apartments, or hangs until the test program ends itself with 3.
few=PlatformLimit.AProcessHasFewApartments many=PlatformLimit.AProcessHasManyApartments
if wanted "$few" "$tests" || wanted "$many" "$tests"; then
  run_wine "$windows/apartments_tests.exe" --limit 6 --gtest_also_run_disabled_tests \
    --gtest_filter=PlatformLimit.DISABLED_AProcessHasManyApartments >/dev/null 2>&1
  case $? in
    0) say_passed "$many" ;;
    3) say_passed "$few" ;;
    *) say_failed "$few" ;;
  esac
fi
exit "$failed"
