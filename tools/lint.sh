#!/usr/bin/env bash
# Checks the form of all sources, the plain files with clang-tidy, everything with cppcheck, and that
# the reference is current. Silent when all is well.
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
mapfile -t plain < <(git ls-files 'util/*.cpp' 'items/*.cpp' 'txm/*.cpp' 'access/*.cpp' |
  grep -E '/[a-z0-9_]+\.cpp$')
plain+=(com/automation_error.cpp com/key_fold.cpp)

# clang-tidy asks for the commands of a clang build without sanitizers' run-time options.
commands=build/lint
configure() {
  cmake -S . -B "$commands" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_EXPORT_COMPILE_COMMANDS=ON
}

tidy() {
  printf '%s\n' "${plain[@]}" | xargs -P 2 -n 4 clang-tidy --quiet -p "$commands"
}

# The templates and macros of the automation layer are beyond cppcheck without the platform's headers,
# so unknown macros and missing includes are no findings; nor are functions that only COM calls.
analyse() {
  cppcheck --quiet --error-exitcode=1 --std=c++20 --language=c++ -j 2 --inline-suppr \
    --enable=warning,performance,portability \
    --suppress=missingIncludeSystem --suppress=unknownMacro \
    -I . "${plain[@]}" com/*.cpp platform/*.cpp dialogs/*.cpp examples/simulator/*.cpp
}

check "configuring the native commands" configure
check "clang-format" clang-format --dry-run -Werror "${sources[@]}"
check "clang-tidy" tidy
check "cppcheck" analyse
check "reference" docs/make_reference.py --check
[ "$failed" -eq 0 ] && echo "== lint passed"
exit "$failed"
