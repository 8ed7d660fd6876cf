#!/usr/bin/env bash
# Photographs every dialog in every language and two resolutions: build/gallery/index.html.
# Needs a started Wine. Usage: tools/gallery.sh [folder with dialogs_tests.exe] [output folder]
set -euo pipefail

programs=${1:-$PWD/build/win32}
gallery=${2:-$PWD/build/gallery}

# shellcheck source=tools/wine_prefix.sh
. "$(dirname "$0")/wine_prefix.sh"

rm -rf "$gallery"
mkdir -p "$gallery"
gallery=$(cd "$gallery" && pwd)
run_wine "$programs/dialogs_tests.exe" --gallery "$(windows_path "$gallery")"

mogrify -format png "$gallery"/*.bmp
rm "$gallery"/*.bmp
echo "gallery: $gallery/index.html"
