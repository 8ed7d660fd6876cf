#!/usr/bin/env bash
# Measures the library against the platform in one run, shows the table and keeps it in
# docs/performance.md. Needs a started Wine. Usage: tools/bench.sh [folder with bench_tests.exe]
set -euo pipefail
cd "$(dirname "$0")/.."

programs=${1:-$PWD/build/win32}
page=docs/performance.md

# shellcheck source=tools/wine_prefix.sh
. tools/wine_prefix.sh

echo "== measuring (some minutes)"
table=$(run_wine "$programs/bench_tests.exe" | tr -d '\r') || { echo "$table" >&2; exit 1; }
printf '%s\n' "$table"

processor=$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | sort | uniq -c | sed 's/^ *\([0-9]*\) /\1 x /')
memory=$(awk '/^MemTotal/ { printf "%.0f GB", $2 / 1048576 }' /proc/meminfo)
{
  echo "# Performance"
  echo
  echo "Measured by \`./run bench\`: ratios between the library and the platform's own way, side by side in one run."
  echo "Each figure is the median of fifteen to two hundred alternating rounds. A ratio below 1 means that the library is faster. Times"
  echo "depend on the machine, ratios much less. docs/performance_notes.md explains the figures that miss their goal."
  echo
  echo "- Date: $(date -u +%Y-%m-%d)"
  echo "- Processor: $processor, $memory of memory, load $(cut -d' ' -f1 /proc/loadavg) at the end"
  echo "- System: $(. /etc/os-release && echo "$PRETTY_NAME"), $(wine --version)"
  echo "- Compiler: $(i686-w64-mingw32-g++-posix --version | head -n 1), release build"
  echo
  printf '%s\n' "$table"
} >"$page"
echo "== $page written"
