#!/usr/bin/env bash
# Shows the main job: a script host documents the parameters of a transmitter type.
# Usage: examples/demo.sh [version [language]]; the library must be registered in a running Wine.
set -euo pipefail
cd "$(dirname "$0")/hosts"
version=${1:-2.30}
language=${2:-1}
# The script host writes in the OEM code page.
wine cscript //nologo document.vbs ../data "$version" "$language" </dev/null | iconv -f CP437 -t UTF-8
