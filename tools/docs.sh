#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Makes the reference as a site, build/docs/html/index.html, and as a help file, build/docs/pvItems32.chm,
# of the contract, the examples of docs/examples and the guides. Both can be read from their folder.
# Usage: tools/docs.sh [folder]
set -euo pipefail
cd "$(dirname "$0")/.."

output=${1:-build/docs}
# The index of the search keeps the order of Python's sets, which differs from run to run otherwise.
export PYTHONHASHSEED=0
sources=$output/sources

# sphinx <builder> <folder> <options...>: warnings, such as broken references, are errors.
sphinx() {
  sphinx-build -q -W --keep-going -j 2 -b "$1" -d "$output/doctrees" "${@:3}" "$sources" "$2"
}

# The compiler leaves the help file in the folder of the project, and says more than anybody wants to know.
# It writes the name of that folder into the file, so that is the same one wherever it is.
make_help_file() {
  local log=$output/chmcmd.log folder=/proc/self/cwd
  docs/site/help_file.py "$output/htmlhelp"
  (cd "$output/htmlhelp" && chmcmd "$folder/pvItems32.hhp") >"$log" 2>&1 || { tail "$log" >&2; return 1; }
  docs/site/finish_help_file.py "$output/htmlhelp/pvItems32.chm" "$folder"
  mv "$output/htmlhelp/pvItems32.chm" "$output/"
}

rm -rf "$output"
docs/site/pages.py "$sources"
sphinx html "$output/html"
sphinx htmlhelp "$output/htmlhelp" -t chm
make_help_file
rm -rf "$output/html/.buildinfo" "$output/doctrees"
echo "== $output/html/index.html, $output/pvItems32.chm"
