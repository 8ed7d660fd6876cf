#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Runs the test scripts. Needs a running Wine with the library registered.
# Usage: tests/scripts/run.sh [names, such as 'items.*:tools.vbs']
set -uo pipefail
. tests/wanted.sh

failed=0
for script in tests/scripts/*.vbs tests/scripts/*.js; do
  wanted "${script##*/}" "${1:-*}" || continue
  echo "$script"
  tests/run_script.sh "$script" || failed=1
done
exit "$failed"
