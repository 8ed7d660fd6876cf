#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Checks the form of all sources, the order of the rooms, the library with clang-tidy, everything with
# cppcheck, the YAML of the public forge, that the reference is current, and that every file has its
# licence. Silent when all is well.
set -uo pipefail
cd "$(dirname "$0")/.."

failed=0
check() { # <what> <command...>
  local what=$1 log
  shift
  log=$(mktemp)
  echo "== $what"
  if ! "$@" >"$log" 2>&1; then
    cat "$log"
    failed=1
  fi
  rm -f "$log"
}

mapfile -t sources < <(git ls-files '*.cpp' '*.h')

mapfile -t core < <(git ls-files 'src/core/*.cpp')
mapfile -t windows < <(git ls-files 'src/*.cpp' ':!src/core')

# clang-tidy asks for the commands of a clang build without sanitizers' run-time options and without
# precompiled headers, which nobody has built.
configure_native() {
  cmake -S . -B build/lint -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON
}

# The commands of the cross-compiler, whose precompiled header clang cannot read, and the header that
# comes out of the contract.
configure_windows() {
  cmake --preset win32 -B build/lint-win32 -DCMAKE_EXPORT_COMPILE_COMMANDS=ON \
    -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON &&
    cmake --build build/lint-win32 --target contract
}

# tidy <options> -- <files>: what clang counts of the platform's headers is not worth a line.
tidy() {
  local options=()
  while [ "$1" != -- ]; do
    options+=("$1")
    shift
  done
  shift
  printf '%s\n' "$@" | xargs -P 2 -n 1 clang-tidy --quiet "${options[@]}" 2>&1 |
    { grep -v -E '^[0-9]+ warnings?( and [0-9]+ errors?)? generated\.$' || true; }
}

tidy_core() { tidy -p build/lint -- "${core[@]}"; }

# clang finds neither the headers of the cross-compiler nor those of its library by itself. The
# compiler's own headers stay away: clang has its own.
tidy_windows() {
  local folder options=(--extra-arg=--target=i686-w64-windows-gnu
    --extra-arg=-Wno-unknown-warning-option)
  while read -r folder; do
    options+=("--extra-arg=-isystem$folder")
  done < <(i686-w64-mingw32-g++-posix -E -v -x c++ /dev/null 2>&1 |
    sed -n '/^#include <...>/,/^End/s/^ //p' | xargs realpath | grep -v -E '/gcc/.*/include(-fixed)?$')
  tidy -p build/lint-win32 --config-file=tools/lint/windows.clang-tidy "${options[@]}" -- \
    "${windows[@]}"
}

# The bodies of members are lambdas whose errors end at the boundary (src/com/boundary.h); cppcheck takes
# what they throw for an exception of the member.
analyse() {
  cppcheck --quiet --error-exitcode=1 --std=c++20 --language=c++ -j 2 --inline-suppr \
    --library=windows --library=googletest --enable=warning,performance,portability \
    --suppress=missingIncludeSystem --suppress=throwInNoexceptFunction \
    -I src -I . $(git ls-files '*.cpp')
}

# The newest release of the change log is the version that is built.
has_release() {
  local version package_output package_name package_root
  . tools/version.sh
  [ "$(sed -n 's/^## \[\([0-9.]*\)\].*/\1/p' CHANGELOG.md | head -n 1)" = "$version" ]
}

check "configuring the native commands" configure_native
check "configuring the Windows commands" configure_windows
check "order of the rooms" tools/lint/rooms.py
check "clang-format" clang-format --dry-run -Werror "${sources[@]}"
check "clang-tidy, core" tidy_core
check "clang-tidy, the other rooms" tidy_windows
check "cppcheck" analyse
check "release in the change log" has_release
check "YAML" yamllint --strict -c tools/lint/yamllint.yaml $(git ls-files '*.yml')
check "reference" docs/make_reference.py --check
check "licences" reuse lint
[ "$failed" -eq 0 ] && echo "== lint passed"
exit "$failed"
