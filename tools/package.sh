#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Packs what a host programmer needs: build/package/pvItems32-<version>.zip. Its folders x86 and x64 hold
# what is made for one kind of processor: the library with its manifest, type library and help file, the
# example server and the example host; bindings has the contract in other languages. Needs both Windows
# builds.
set -euo pipefail
cd "$(dirname "$0")/.."

# shellcheck source=tools/version.sh
. tools/version.sh
output=$package_output name=$package_name root=$package_root
# The time of everything that is packed: that of the last change.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH

# Whoever has no Windows tools can still see that nothing but system libraries is needed.
needs_windows_alone() { # <processor> <program>
  ! "$1-w64-mingw32-objdump" -p "$2" | grep -qE 'DLL Name: lib(gcc|stdc|winpthread)' ||
    { echo "package: ${2##*/} depends on the compiler's run-time DLLs" >&2; return 1; }
}

# pack_programs <folder> <build folder> <processor>
pack_programs() {
  local folder=$root/$1 build=$2 processor=$3 program
  mkdir -p "$folder"
  for program in pvItems32.dll fluxor_server.dll read_write.exe; do
    "$processor-w64-mingw32-strip" -o "$folder/$program" "$build/$program"
    needs_windows_alone "$processor" "$folder/$program"
  done
  tools/sign.sh "$folder"/*.dll "$folder"/*.exe
  cp "$build/pvItems32.manifest" "$build/generated/pvItems32.tlb" "$folder/"
}

# The header and the C file with the identifiers are the same for both kinds of processor.
pack_contract() {
  local file
  mkdir -p "$root/typelib"
  for file in pvItems32.h pvItems32_i.c; do
    cmp build/win32/generated/"$file" build/win64/generated/"$file"
    cp build/win32/generated/"$file" "$root/typelib/"
  done
  cp typelib/pvItems32.idl typelib/help_topics.txt "$root/typelib/"
  cp -r build/win32/bindings "$root/"
}

pack_sources() {
  git ls-files README.md CHANGELOG.md LICENSE SECURITY.md LICENSES 'docs/*.md' ':!docs/site' examples | while read -r file; do
    mkdir -p "$root/$(dirname "$file")"
    cp "$file" "$root/$file"
  done
}

# The reference, to be read without the sources. The help file is beside the libraries: registration tells
# object browsers that it is there.
pack_site() {
  tools/docs.sh
  cp -r build/docs/html "$root/docs/html"
  cp build/docs/pvItems32.chm "$root/x86/"
  cp build/docs/pvItems32.chm "$root/x64/"
}

# The same files make the same archive, whoever packs them.
make_archive() {
  chmod -R u=rwX,go=rX "$root"
  find "$root" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
  (cd "$output" && find "$name" | LC_ALL=C sort | TZ=UTC zip -q -X -@ "$name.zip")
}

rm -rf "$output"
pack_programs x86 build/win32 i686
pack_programs x64 build/win64 x86_64
pack_contract
pack_sources
pack_site
cp installer/*.cmd "$root"
make_archive
echo "== $output/$name.zip: $(find "$root" -type f | wc -l) files"
