#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Saves with a full disk, over files that others hold, and by programs that are killed. Needs a
# running Wine with the library registered.
# Usage: tests/faults/run.sh [tests, as a filter of Google Test [Windows build folder]]
set -uo pipefail
. tools/wine_prefix.sh
. tests/wanted.sh

tests=${1:-*}
windows=${2:-build/win32}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

run_tests() { run_wanted "$1" "$windows/faults_tests.exe" "${@:2}"; } # <filter> <options...>

# A limit on the size of files stands for the end of a disk: a write gets as far as there is room. The
# output goes through a pipe, because it would end there, too.
with_full_disk() { # <room in KB>
  (
    trap '' XFSZ
    ulimit -f "$1"
    run_tests 'FullDisk*:*/FullDisk*' --room $(($1 * 1024)) 2>&1
  ) | cat
}

# --- Killed programs

# The two files that the helper saves in turn.
save_both() {
  run_wine "$windows/faults_helper.exe" save "$(windows_path "$1")" "$2" >/dev/null
}

# kill_savers <folder> <times> <seed>: a program that saves a file again and again is killed; the file
# is always one of the two, whole. Leaves a line for each kill: what was there, and whether the program
# was in the middle of a save.
kill_savers() {
  local folder=$1 times=$2 file=$1/items.itm found saver output ready
  RANDOM=$3
  for ((i = 0; i < times; i++)); do
    rm -f "$folder"/*
    exec {output}< <(exec "$PV_WINE" "$windows/faults_helper.exe" save "$(windows_path "$folder")\\items.itm" 0 </dev/null 2>&1)
    saver=$!
    read -r -t 20 ready <&"$output" || ready=
    sleep "0.00$((RANDOM % 10))$((RANDOM % 10))"
    kill -KILL "$saver"
    wait "$saver" 2>/dev/null
    exec {output}<&-
    found=damaged
    cmp -s "$file" "$scratch/old" && found=old
    cmp -s "$file" "$scratch/new" && found=new
    [ "${ready%?}" = ready ] || found="not started: $ready"
    echo "$found, $(find "$folder" -name '*.tmp' | wc -l) begun" >>"$scratch/kills-$3"
  done
}

kill_at_random_moments() {
  local kills=200 savers=4 seed
  touch "$scratch/any"
  save_both "$scratch/any" 1 && mv "$scratch/any" "$scratch/old" || return 1
  save_both "$scratch/any" 2 && mv "$scratch/any" "$scratch/new" || return 1
  for ((seed = 1; seed <= savers; seed++)); do
    mkdir "$scratch/$seed"
    kill_savers "$scratch/$seed" $((kills / savers)) "$seed" &
  done
  wait
  cat "$scratch"/kills-* >"$scratch/kills"
  sort "$scratch/kills" | uniq -c
  [ "$(grep -c '^\(old\|new\), ' "$scratch/kills")" -eq "$kills" ] &&
    [ "$(grep -c ', 1 begun$' "$scratch/kills")" -ge $((kills / 10)) ]
}

with_full_disk 16 || failed=1
with_full_disk 100 || failed=1 # so that big tables, which are written in pieces, lose only some
run_tests '-FullDisk*:*/FullDisk*' || failed=1

run_case KilledSaver.LeavesTheOldOrTheNewFileWhole kill_at_random_moments
exit "$failed"
