#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Makes the reference site and the help file, checks them against the contract, and runs the examples of
# every class, in VBScript and in C++. Needs a running Wine with the library registered, whose header is
# in the build folder.
# Usage: tests/site/run.sh [tests, as a filter of Google Test [Windows build folder]]
set -uo pipefail
. tools/wine_prefix.sh
. tests/wanted.sh

tests=${1:-*}
windows=${2:-build/win32}
scratch=$(mktemp -d)
site=$scratch/site
programs=$scratch/programs
data=$WINEPREFIX/drive_c/data
trap 'rm -rf "$data" "$scratch"' EXIT
failed=0

# try <name> <command...>
try() { run_case "Site.$1" "${@:2}"; }

# Not one site for each test: only the first that needs it waits.
check() { # <case>
  [ -e "$site/html/index.html" ] || tools/docs.sh "$site" || return 1
  tests/site/check_site.py "$1" "$site"
}

run_script() { # <class>
  diff "$programs/$1.vbscript" <(wine_output cscript //nologo "$(windows_path "$programs/$1.vbs")" |
    iconv -f CP437 -t UTF-8)
}

# The C++ examples of all classes are one program, compiled once.
compile_cpp() {
  i686-w64-mingw32-g++-posix -std=c++20 -Wall -Wextra -Werror -fmax-errors=5 -static -I "$windows/generated" \
    -I docs/examples -I examples/fluxor_server -o "$programs/examples.exe" "$programs/examples.cpp" \
    examples/fluxor_server/library.cpp -lole32 -loleaut32 -luuid &&
    wine_output "$programs/examples.exe" >"$programs/output"
}

run_cpp() { # <class>
  [ -e "$programs/output" ] || compile_cpp || return 1
  diff "$programs/$1.cpp" \
    <(awk -v class="== $1" '/^== / { wanted = $0 == class; next } wanted' "$programs/output")
}

rm -rf "$data"
cp -r examples/data "$data"
mkdir "$programs"
tests/site/programs.py "$programs" || exit 1
for case in Members Links Search Resources HelpFile Examples; do try "$case" check "$case"; done
for script in "$programs"/*.vbs; do
  class=$(basename "$script" .vbs)
  try "VBScript.$class" run_script "$class"
  try "Cpp.$class" run_cpp "$class"
done
exit "$failed"
