#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Compares the bindings of other languages with the type library: C# as the runtime sees it compiled,
# Pascal and Basic as they are written, Python as it is imported and as its calls come out.
# Needs the bindings in the build folder, no Windows.
# Usage: tests/bindings/run.sh [tests, such as 'Bindings.CSharp' [Windows build folder]]
set -uo pipefail
. tests/wanted.sh

tests=${1:-*}
bindings=${2:-build/win32}/bindings
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export PYTHONDONTWRITEBYTECODE=1
failed=0

compare() { python3 tests/bindings/compare.py "$@"; }

compare_csharp() {
  mcs -target:library -warnaserror -out:"$scratch/bindings.dll" "$bindings/pvItems32.cs" &&
    mcs -warnaserror -out:"$scratch/dump.exe" tests/bindings/dump.cs &&
    mono "$scratch/dump.exe" "$scratch/bindings.dll" >"$scratch/dump" && compare csharp "$scratch/dump"
}

# try <name> <command...>
try() { run_case "Bindings.$1" "${@:2}"; }

try CSharp compare_csharp
try Pascal compare pascal "$bindings/pvItems32_TLB.pas"
try Python compare python "$bindings/pvItems32.py"
try PythonCalls compare python-calls "$bindings/pvItems32.py"
try Basic compare basic "$bindings/pvItems32.bas"
exit "$failed"
