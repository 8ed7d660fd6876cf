#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Runs the examples of the guides: the code blocks of a page that are in one language are one program,
# and it writes what the page shows. Languages that have no run-time here are only compiled.
# Needs a running Wine with the library registered, whose header is in the build folder.
# Usage: tests/documents/run.sh [tests, as a filter of Google Test [Windows build folder]]
set -uo pipefail
. tools/wine_prefix.sh
. tests/wanted.sh

tests=${1:-*}
windows=${2:-build/win32}
scratch=$(mktemp -d)
data=$WINEPREFIX/drive_c/data
trap 'rm -rf "$data" "$scratch"' EXIT
failed=0

# An error ends a script silently, so it has to tell that it came to its end.
run_script() { # <code>
  echo 'WScript.Echo("(end)")' >>"$1"
  echo '(end)' >>"$scratch/expected"
  wine_output cscript //nologo "$(windows_path "$1")" | iconv -f CP437 -t UTF-8
}

run_program() { # <code> <compiler and its options...>
  "${@:2}" -Wall -Wextra -Werror -fmax-errors=5 -static -I "$windows/generated" \
    -o "$scratch/program.exe" "$1" -lole32 -loleaut32 -luuid && wine_output "$scratch/program.exe"
}

run_pascal() { # <code>
  tools/fpc32.sh && build/fpc32/fpc -o"$scratch/program.exe" "$1" >&2 && wine_output "$scratch/program.exe"
}

run_code() { # <language> <code>
  case $1 in
    vbscript | jscript) run_script "$2" ;;
    c) run_program "$2" i686-w64-mingw32-gcc-posix ;;
    cpp) run_program "$2" i686-w64-mingw32-g++-posix -std=c++20 ;;
    pascal) run_pascal "$2" ;;
    csharp) mcs -out:"$scratch/program.exe" -r:Microsoft.CSharp "$2" ;;
    python) python3 -c 'import sys; compile(open(sys.argv[1]).read(), sys.argv[1], "exec")' "$2" ;;
  esac
}

# run_page <page> <language> <suffix of its source files>
run_page() {
  local code=$scratch/code.$3
  rm -f "$scratch"/*
  : >"$scratch/expected"
  awk -v language="$2" -v code="$code" -v output="$scratch/expected" -f tests/documents/blocks.awk "$1"
  run_code "$2" "$code" >"$scratch/output" && diff "$scratch/expected" "$scratch/output"
}

# try <page> <language> <suffix of its source files>
try() {
  local page=${1##*/} name
  name=Documents.${page%.md}
  [ "$page" = "$2.md" ] || name+=_$2
  run_case "$name" run_page "$@"
}

# The programs of the general guide are scripts.
pages_in() { # <language>
  local pages=(docs/hosts/*.md)
  [[ $1 != *script ]] || pages+=(docs/using.md)
  grep -l "^\`\`\`$1\$" "${pages[@]}"
}

rm -rf "$data"
cp -r examples/data "$data"
while read -r language suffix; do
  for page in $(pages_in "$language"); do try "$page" "$language" "$suffix"; done
done <<'LANGUAGES'
vbscript vbs
jscript js
c c
cpp cpp
pascal pas
csharp cs
python py
LANGUAGES
exit "$failed"
