#!/usr/bin/env bash
# Source this file: sets up the Wine prefix of the build (once), and starts its server and a display.
# Gives: WINEPREFIX, DISPLAY, and the functions run_wine and stop_wine.

export WINEPREFIX=${PV_WINEPREFIX:-$PWD/build/wine}
export WINEARCH=win32
export WINEDEBUG=${WINEDEBUG:--all}
# The dialog tests bring a help viewer of their own.
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=;hhctrl.ocx=n,b"
# US English. Unlike en_US it is there on every machine, which file names beyond ASCII need.
export LC_ALL=${PV_LOCALE:-C.UTF-8}

run_wine() { wine "$@" </dev/null; }

start_display() {
  local number=90
  while [ -e "/tmp/.X11-unix/X$number" ]; do number=$((number + 1)); done
  Xvfb ":$number" -screen 0 1280x1024x24 -nolisten tcp </dev/null >/dev/null 2>&1 &
  PV_XVFB=$!
  export DISPLAY=":$number"
  local waited=0
  until [ -e "/tmp/.X11-unix/X$number" ]; do
    waited=$((waited + 1))
    [ "$waited" -lt 100 ] || { echo "wine: the display did not start" >&2; return 1; }
    sleep 0.1
  done
}

# Wine's own fonts carry the accents of all six languages; the dialog fonts are mapped to them.
create_prefix() {
  rm -rf "$WINEPREFIX"
  mkdir -p "$WINEPREFIX"
  wine wineboot -i </dev/null >/dev/null 2>&1
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
  wine regedit /S "$WINEPREFIX/setup.reg" </dev/null >/dev/null 2>&1
  wineserver -w
  touch "$WINEPREFIX/.ready"
}

start_wine() {
  start_display || return 1
  if [ ! -e "$WINEPREFIX/.ready" ]; then create_prefix || return 1; fi
  # A server and a desktop that stay spare every test program their start.
  (
    wineserver -p
    wine wineboot
  ) </dev/null >/dev/null 2>&1
}

stop_wine() {
  wineserver -k 2>/dev/null
  wineserver -w 2>/dev/null
  [ -z "${PV_XVFB:-}" ] || kill "$PV_XVFB" 2>/dev/null
}

# A path of this system as Windows programs take it.
windows_path() { printf 'Z:%s' "$(realpath "$1")" | tr / '\\'; }
