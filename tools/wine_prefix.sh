#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Source this file: sets up the Wine prefix of the build (once), and starts its server and a display.
# Takes PV_BITS, the bitness of the Windows, 32 or 64, and PV_WINEPREFIX, if it is not the usual one.
# Gives: WINEPREFIX, PV_WINE, DISPLAY, PV_LOCALE and the functions below.

export PV_BITS=${PV_BITS:-32}
case $PV_BITS in
  32) export WINEARCH=win32 PV_WINE=wine ;;
  # Where both are installed, "wine" finds the 32-bit programs of a 64-bit Windows.
  64) export WINEARCH=win64 PV_WINE=/usr/lib/wine/wine64 ;;
esac
wine_folder=wine
[ "$PV_BITS" = 32 ] || wine_folder=wine-$PV_BITS
export WINEPREFIX=${PV_WINEPREFIX:-$PWD/build/$wine_folder}
export WINEDEBUG=${WINEDEBUG:--all}
# The dialog tests bring a help viewer of their own.
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=;hhctrl.ocx=n,b"
# US English. Unlike en_US it is there on every machine, which file names beyond ASCII need.
export LC_ALL=C.UTF-8
# The locale of Windows programs. Wine brings its own; the programs of this system need not know it.
export PV_LOCALE=${PV_LOCALE:-C.UTF-8}

run_wine() { env LC_ALL="$PV_LOCALE" "$PV_WINE" "$@" </dev/null; }

# wine_output <program...>: what it writes within a minute, in lines of this system.
wine_output() {
  timeout --kill-after=10 60 env LC_ALL="$PV_LOCALE" "$PV_WINE" "$@" </dev/null | tr -d '\r'
}

# With a debugger before it, such as PV_DEBUGGER="winedbg --gdb", the program is at the terminal.
run_test_program() {
  if [ -z "${PV_DEBUGGER:-}" ]; then run_wine "$@"; else env LC_ALL="$PV_LOCALE" "$PV_WINE" $PV_DEBUGGER "$@"; fi
}

# Shows its last lines, from the start of Wine and of the display.
wine_log=$WINEPREFIX.log
fail_to_start() {
  echo "wine: $1" >&2
  tail -n 20 "$wine_log" >&2
  return 1
}

# As large as PV_SCREEN says. The server takes a free number itself and tells it when it is ready.
start_display() {
  local ready number
  exec {ready}< <(exec Xvfb -displayfd 1 -screen 0 "${PV_SCREEN:-1280x1024}x24" -nolisten tcp </dev/null 2>>"$wine_log")
  PV_XVFB=$!
  read -r -t 30 number <&"$ready" || fail_to_start "the display did not start" || return 1
  exec {ready}<&-
  export DISPLAY=":$number"
}

# Wine's own fonts carry the accents of all six languages; the dialog fonts are mapped to them.
create_prefix() {
  rm -rf "$WINEPREFIX"
  mkdir -p "$WINEPREFIX"
  run_wine wineboot -i >>"$wine_log" 2>&1 || return 1
  wineserver -w
  local fonts=$WINEPREFIX/drive_c/windows/Fonts
  mkdir -p "$fonts"
  ln -sf /usr/share/wine/fonts/* "$fonts"/ 2>/dev/null || true
  ln -sf /usr/share/fonts/truetype/dejavu/* "$fonts"/ 2>/dev/null || true
  cat >"$WINEPREFIX/setup.reg" <<'REG'
REGEDIT4

[HKEY_CURRENT_USER\Software\Wine\Explorer]
"Desktop"="Default"

[HKEY_CURRENT_USER\Software\Wine\Explorer\Desktops]
"Default"="1280x1024"

[HKEY_CURRENT_USER\Control Panel\Desktop]
"FontSmoothing"="2"
"FontSmoothingType"=dword:00000001
"FontSmoothingGamma"=dword:00000578

[HKEY_CURRENT_USER\Software\Wine\Fonts\Replacements]
"MS Shell Dlg"="DejaVu Sans Condensed"
"MS Shell Dlg 2"="DejaVu Sans Condensed"
"Tahoma"="DejaVu Sans Condensed"
"Segoe UI"="DejaVu Sans Condensed"

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes]
"MS Shell Dlg"="DejaVu Sans Condensed"
"MS Shell Dlg 2"="DejaVu Sans Condensed"
REG
  run_wine regedit /S "$WINEPREFIX/setup.reg" >>"$wine_log" 2>&1 || return 1
  wineserver -w
  touch "$WINEPREFIX/.ready"
}

start_wine() {
  mkdir -p "${WINEPREFIX%/*}"
  : >"$wine_log"
  start_display || return 1
  [ -e "$WINEPREFIX/.ready" ] || create_prefix || fail_to_start "the prefix could not be made" || return 1
  # A server and a desktop that stay spare every test program their start.
  { wineserver -p && run_wine wineboot; } </dev/null >>"$wine_log" 2>&1 ||
    fail_to_start "the server did not start"
}

stop_wine() {
  wineserver -k 2>/dev/null || true
  wineserver -w 2>/dev/null || true
  [ -z "${PV_XVFB:-}" ] || kill "$PV_XVFB" 2>/dev/null || true
}

# A path of this system as Windows programs take it.
windows_path() { printf 'Z:%s' "$(realpath "$1")" | tr / '\\'; }

# register <DLL>: what is said about it matters only when it fails.
register() {
  local output
  output=$(run_wine regsvr32 /s "$(windows_path "$1")" 2>&1) && return
  printf '%s\n' "$output" "$1 could not be registered" >&2
  return 1
}
