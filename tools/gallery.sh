#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Photographs every dialog in every language, in three resolutions and on a wide screen:
# build/gallery/index.html.
# Needs a started Wine. Usage: tools/gallery.sh [folder with dialogs_tests.exe] [output folder]
set -euo pipefail

programs=${1:-$PWD/build/win32}
gallery=${2:-$PWD/build/gallery}

# shellcheck source=tools/wine_prefix.sh
. "$(dirname "$0")/wine_prefix.sh"

rm -rf "$gallery"
mkdir -p "$gallery"
gallery=$(cd "$gallery" && pwd)
photograph=("$programs/dialogs_tests.exe" --gallery "$(windows_path "$gallery")")

run_wine "${photograph[@]}" usual

# Beside the usual screen, with a desktop of its own size.
photograph_on_wide_screen() (
  PV_SCREEN=3840x2160
  start_display
  trap 'kill "$PV_XVFB"' EXIT
  run_wine explorer "/desktop=wide,$PV_SCREEN" "${photograph[@]}" wide
)
photograph_on_wide_screen

mogrify -format png "$gallery"/*.bmp
rm "$gallery"/*.bmp
grep -o '[^"]*\.png' "$gallery/index.html" | while read -r picture; do
  [ -e "$gallery/$picture" ] || { echo "gallery: no picture $picture" >&2; exit 1; }
done
echo "gallery: $gallery/index.html"
