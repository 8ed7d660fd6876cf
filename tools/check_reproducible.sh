#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Builds the committed sources twice, in two folders, and compares what is packed of the results byte by
# byte. Takes minutes. Usage: tools/check_reproducible.sh [presets, such as win32 win64]
set -euo pipefail
cd "$(dirname "$0")/.."

presets=("$@")
[ $# -ne 0 ] || presets=(win32)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH
# The second build is not to be taken from the first one's cache.
unset CMAKE_C_COMPILER_LAUNCHER CMAKE_CXX_COMPILER_LAUNCHER

# build <folder> <preset>: leaves what would be packed in <folder>/packed
build() {
  local source=$scratch/$1/source packed=$scratch/$1/packed processor=i686
  [ "$2" = win32 ] || processor=x86_64
  mkdir -p "$source" "$packed"
  git archive HEAD | tar -x -C "$source"
  (cd "$source" && cmake --preset "$2" && cmake --build --preset "$2" --target pvItems32) >"$scratch/log" 2>&1 ||
    { tail -n 30 "$scratch/log" >&2; return 1; }
  "$processor-w64-mingw32-strip" -o "$packed/pvItems32.dll" "$source/build/$2/pvItems32.dll"
  cp "$source/build/$2"/{pvItems32.manifest,generated/pvItems32.{tlb,h},generated/pvItems32_i.c} "$packed"
}

for preset in "${presets[@]}"; do
  rm -rf "$scratch"/*
  build one "$preset"
  build two/deeper "$preset"
  diff -r "$scratch/one/packed" "$scratch/two/deeper/packed"
  if grep -a -q -F "$scratch" "$scratch/one/packed/pvItems32.dll"; then
    echo "$preset: pvItems32.dll names the folder of its build" >&2
    exit 1
  fi
  (cd "$scratch/one/packed" && sha256sum -- *)
  echo "== $preset: two builds are the same"
done
