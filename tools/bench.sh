#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Measures the library against the platform in one run, shows the table and keeps it in
# docs/performance.md; of the 64-bit library, beside the 32-bit one, in docs/performance_64.md.
# Usage: tools/bench.sh [win32 | win64]
set -euo pipefail
cd "$(dirname "$0")/.."

# measure <bits>: writes the table of that library's program.
measure() (
  PV_BITS=$1
  PV_WINEPREFIX=
  # shellcheck source=tools/wine_prefix.sh
  . tools/wine_prefix.sh
  # Where there is a memory file system, the files are there: the disk is nobody's work.
  files=
  trap 'stop_wine; [ -z "$files" ] || rm -rf "$files"' EXIT
  if [ -d /dev/shm ] && files=$(mktemp -d -p /dev/shm); then
    PV_BENCH_FOLDER=$(windows_path "$files")
    export PV_BENCH_FOLDER
  fi
  start_wine && register "build/win$1/pvItems32.dll" || exit 1
  echo "== measuring $1 bits (some minutes)" >&2
  run_wine "build/win$1/bench_tests.exe" | tr -d '\r'
  measure_lines "$1"
)

# measure_lines <bits>: the rows of reading simulated transmitters, without a head.
measure_lines() {
  # shellcheck source=examples/simulator/start.sh
  . examples/simulator/start.sh
  local counts
  counts=$(mktemp -d)
  # shellcheck disable=SC2064
  trap "forget_simulator; stop_wine; rm -rf '$counts' '$files'" EXIT
  register "build/win$1/fluxor_server.dll" && start_many_simulators 16 build/native/fluxor_simulator "$counts" || exit 1
  run_wine "build/win$1/bench_tests.exe" --lines "$(windows_path "$counts")" | tr -d '\r' | tail -n +3
}

# page <compiler> <title and lines of its own...>: the head of a page.
page() {
  local processor memory
  processor=$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | sort | uniq -c | sed 's/^ *\([0-9]*\) /\1 x /')
  memory=$(awk '/^MemTotal/ { printf "%.0f GB", $2 / 1048576 }' /proc/meminfo)
  printf '%s\n' "${@:2}"
  echo
  echo "- Date: $(date -u +%Y-%m-%d)"
  echo "- Processor: $processor, $memory of memory, load $(cut -d' ' -f1 /proc/loadavg) at the end"
  echo "- System: $(. /etc/os-release && echo "$PRETTY_NAME"), $(wine --version)"
  echo "- Compiler: $("$1" --version | head -n 1), release build"
  echo
}

table=$(measure 32) || { printf '%s\n' "$table" >&2; exit 1; }
if [ "${1:-win32}" = win32 ]; then
  page=docs/performance.md
  page i686-w64-mingw32-g++-posix \
    "# Performance" \
    "" \
    "Measured by \`./run bench\`: ratios between the library and the platform's own way, side by side in one run." \
    "Both sides run in alternating short slices on one processor; each figure is the median of the fastest quarter of its slices, and the" \
    "spread is how far that quarter reaches from it. A ratio below 1 means that the library is faster. Times depend on the machine," \
    "ratios much less. [performance_notes.md](performance_notes.md) explains the figures that miss their goal." >"$page"
else
  page=docs/performance_64.md
  wide=$(measure 64) || { printf '%s\n' "$wide" >&2; exit 1; }
  table=$(tools/compare_bits.py <(echo "$table") <(echo "$wide"))
  page x86_64-w64-mingw32-g++-posix \
    "# Performance of the 64-bit library" \
    "" \
    "Measured by \`./run bench win64\`: the times of both libraries in one run, and the ratio of the 64-bit one to the platform's own way." \
    "Its goal is 1.2 times the 32-bit library; [performance.md](performance.md) has that library's goals and says how is measured." >"$page"
fi
printf '%s\n' "$table" | tee -a "$page"
echo "== $page written"
