#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Builds the committed sources once more, in another folder, packs them, and compares everything that is
# handed out with what lies in build/package/, byte by byte. Takes some minutes.
set -euo pipefail
cd "$(dirname "$0")/.."

if ! git diff --quiet HEAD; then
  echo "== not built twice: there are changes that are not committed"
  exit 0
fi
packed=$PWD/build/package
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
other=$scratch/a/deeper/folder
# The second build is not to be taken from the first one's cache. Signatures hold the time.
unset CMAKE_C_COMPILER_LAUNCHER CMAKE_CXX_COMPILER_LAUNCHER PV_CERTIFICATE

build() { # <preset>
  cmake --preset "$1" && cmake --build --preset "$1" --target pvItems32 fluxor_server read_write contract
}

make_release() { build win32 && build win64 && tools/package.sh && tools/make_release.sh; }

git clone -q . "$other"
(cd "$other" && make_release) >"$scratch/log" 2>&1 || { tail -n 30 "$scratch/log" >&2; exit 1; }
diff -r "$packed" "$other/build/package"
for library in "$packed"/*/x{86,64}/*.dll; do
  ! grep -a -q -F "$PWD" "$library" || { echo "$library names the folder of its build" >&2; exit 1; }
done
echo "== $packed: two builds in two folders are the same"
