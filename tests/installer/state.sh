#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Source this file behind tools/wine_prefix.sh: what is installed on the test platform, to be compared.
# Needs: scratch (a folder), root (the package's folder).

drive=$WINEPREFIX/drive_c
declare -A windows_folder=([machine]='C:\Program Files\pvItems32'
  [user]="C:\\users\\$USER\\AppData\\Local\\Programs\\pvItems32" [chosen]='C:\chosen folder')
declare -A tools_folder=([32]=syswow64 [64]=system32) bits_folder=([32]=x86 [64]=x64)

on_drive() { local path=${1#C:}; printf '%s%s\n' "$drive" "${path//\\//}"; } # <Windows path>

windows() { timeout --kill-after=5 60 env LC_ALL="$PV_LOCALE" "$PV_WINE" "$@" </dev/null; }
tool() { windows "C:\\windows\\${tools_folder[$1]}\\$2.exe" "${@:3}"; } # <bits> <program> <arguments...>

# regsvr <bits> <folder> <options...>
regsvr() { tool "$1" regsvr32 /s "${@:3}" "$2\\${bits_folder[$1]}\\pvItems32.dll"; }

# registry <name> <keys...>: the state of these keys and what is below them
registry() {
  windows "$(windows_path "$scratch/dump_registry.exe")" "${@:2}" | tr -d '\r' | LC_ALL=C sort >"$scratch/$1.registry"
  [ -s "$scratch/$1.registry" ]
}

# Caches that any program fills are not the installers' doing.
folders() { # <name>
  (cd "$drive" && find . -not -path './users/*/Temp/*' -not -path './windows/Fonts/*' | LC_ALL=C sort) \
    >"$scratch/$1.folders"
}

# Lists that Windows Installer makes for the first product; they stay when they are empty.
empty_lists='(classes|microsoft|windows\\currentversion)\\installer(\\(userdata|s-1-5-[-0-9]+|components|features|products|upgradecodes))*\|$'

state() { # <name>
  registry "$1" 'HKLM\Software' 'HKCU\Software' && folders "$1" &&
    sed -i -E "/$empty_lists/d" "$scratch/$1.registry"
}

classes() { registry "$1" 'HKLM\Software\Classes' 'HKCU\Software\Classes'; } # <name>

same() { diff "$scratch/$1" "$scratch/$2" | head -n 30; [ "${PIPESTATUS[0]}" -eq 0 ]; } # <file> <file>

# added <name>: the entries of classes that are more than before, but those that Windows Installer keeps
# its lists in; a changed or lost one fails.
added() {
  local lost
  local -r below='^hk..\\software\\classes\\'
  lost=$(LC_ALL=C comm -23 <(grep "$below" "$scratch/before.registry") "$scratch/$1.registry")
  [ -z "$lost" ] || { printf 'lost: %s\n' "$lost" >&2; return 1; }
  LC_ALL=C comm -13 "$scratch/before.registry" "$scratch/$1.registry" | grep "$below" |
    grep -v -E '\\classes\\installer(\\|\|)'
}

# The files that are installed, relative to the folder.
installed_files() { (cd "$(on_drive "$1")" && find . -type f | grep -v '/Uninstall.exe$' | LC_ALL=C sort); }
packed_files() { (cd "$root" && find . -type f ! -iname '*register.cmd' | LC_ALL=C sort); }
library_files() { packed_files | grep -v -E '^./examples/|/(fluxor_server\.dll|read_write\.exe)$'; }

# Every byte as it was packed.
has_files() { # <folder> <names, one a line>
  diff <(installed_files "$1") <(printf '%s\n' "$2") &&
    (cd "$root" && while read -r file; do cmp "$file" "$(on_drive "$1")/$file" || exit 1; done <<<"$2")
}
