#!/usr/bin/env bash
# Packs what a host programmer needs: build/package/pvItems32-<version>.zip (.tar.gz without zip).
# Needs the win32 build. Usage: tools/package.sh [build folder]
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build/win32}
output=build/package
version=$(sed -n 's/^project(pvItems32 VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
name=pvItems32-$version
root=$output/$name

rm -rf "$output"
mkdir -p "$root/typelib"

i686-w64-mingw32-strip -o "$root/pvItems32.dll" "$build/pvItems32.dll"
cp "$build/pvItems32.manifest" "$root/"
cp "$build/generated/pvItems32.tlb" "$build/generated/pvItems32.h" typelib/pvItems32.idl "$root/typelib/"
cp README.md CHANGELOG.md "$root/"
cp -r docs "$root/"
git ls-files examples | while read -r file; do
  mkdir -p "$root/$(dirname "$file")"
  cp "$file" "$root/$file"
done

# Whoever has no Windows tools can still see that nothing but system libraries is needed.
if i686-w64-mingw32-objdump -p "$root/pvItems32.dll" | grep -qE 'DLL Name: lib(gcc|stdc|winpthread)'; then
  echo "package: the library depends on the compiler's run-time DLLs" >&2
  exit 1
fi

cd "$output"
if command -v zip >/dev/null; then
  zip -q -r "$name.zip" "$name"
  archive=$name.zip
else
  tar -czf "$name.tar.gz" "$name"
  archive=$name.tar.gz
fi
echo "== $output/$archive: $(find "$name" -type f | wc -l) files"
