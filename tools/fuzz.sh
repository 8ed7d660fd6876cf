#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Fuzzes every text that comes from outside, two targets at a time, and fails on a finding. What was
# learned stays in build/fuzz/corpus for the next run. Needs the build of the preset "fuzz".
# Usage: tools/fuzz.sh [seconds for each target [target...]]
set -uo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-600}
shift || true
work=build/fuzz
program=$work/fuzz_targets
# For each input: seconds that it may take, megabytes of one allocation and of all together.
limits=(-timeout=20 -malloc_limit_mb=256 -rss_limit_mb=2048)

mkdir -p "$work/findings" "$work/logs"
tests/fuzz/make_seeds.py "$work/seeds" || exit 1
if [ $# -gt 0 ]; then targets=("$@"); else mapfile -t targets < <(ls "$work/seeds"); fi

# Both read what libFuzzer says at its end.
stat_of() { sed -n "s/^stat::$2: *//p" "$1"; }
new_finding() { sed -n 's/^.*Test unit written to //p' "$1"; }

fuzz() { # <target>
  local target=$1 log=$work/logs/$1.log begin=$SECONDS status finding
  mkdir -p "$work/corpus/$target"
  "$program" --target="$target" -max_total_time="$seconds" -print_final_stats=1 -verbosity=0 \
    "${limits[@]}" -dict=tests/fuzz/words.dict -artifact_prefix="$work/findings/$target-" \
    "$work/corpus/$target" "$work/seeds/$target" "tests/fuzz/cases/$target" >"$log" 2>&1 </dev/null
  status=$?
  printf '%-18s %5d s %10s inputs  %s\n' "$target" $((SECONDS - begin)) \
    "$(stat_of "$log" number_of_executed_units)" "$([ $status -eq 0 ] && echo passed || echo FAILED)"
  [ $status -eq 0 ] && return 0
  grep -m 1 -E '^broken promise|^SUMMARY|^==[0-9]+== ?ERROR' "$log" || tail -n 5 "$log"
  finding=$(new_finding "$log")
  [ -z "$finding" ] || echo "  keep it: cp $finding tests/fuzz/cases/$target/"
  return 1
}

failed=0
running=0
for target in "${targets[@]}"; do
  if [ "$running" -eq 2 ]; then
    wait -n || failed=1
    running=$((running - 1))
  fi
  fuzz "$target" &
  running=$((running + 1))
done
while [ "$running" -gt 0 ]; do
  wait -n || failed=1
  running=$((running - 1))
done
[ "$failed" -eq 0 ] && echo "no findings"
exit "$failed"
