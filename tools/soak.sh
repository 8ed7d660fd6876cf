#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Writes and reads a simulated transmitter for many rounds, over a line that loses telegrams. Needs a
# running Wine with the library registered.
# Usage: tools/soak.sh [rounds [native build folder [Windows build folder]]]
set -uo pipefail
cd "$(dirname "$0")/.."
. tools/wine_prefix.sh
. examples/simulator/start.sh

rounds=${1:-200000}
native=${2:-build/native}
windows=${3:-build/win32}
faults=$(mktemp)
trap 'forget_simulator; rm -f "$faults"' EXIT

register "$windows/fluxor_server.dll" || exit 1
start_simulator "$native/fluxor_simulator" --faults "$faults" --store 0 || exit 1
# The limit leaves 0.2 s for a round, which takes a tenth of that on a quiet machine.
OANOCACHE=1 run_test_program "$windows/serial_tests.exe" --gtest_filter='Soak.*' --faults "$(windows_path "$faults")" \
  --rounds "$rounds" --progress $((rounds > 40 ? rounds / 20 : rounds)) \
  --limit $((120 + rounds / 5))
