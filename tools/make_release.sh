#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Makes of the folder that tools/package.sh packs, beside it: the installers, the bill of materials, drafts
# of manifests for package managers, and SHA256SUMS. Signs installers when there is a certificate
# (tools/sign.sh). PV_DOWNLOAD_URL is where the drafts say that the files are.
set -euo pipefail
cd "$(dirname "$0")/.."

# shellcheck source=tools/version.sh
. tools/version.sh
output=$package_output name=$package_name root=$package_root
time=$(stat -c %Y "$root/x86/pvItems32.dll")

sha256() { sha256sum "$1" | cut -d ' ' -f 1; }
product_code() { msiinfo export "$output/$name.msi" Property | tr -d '\r' | sed -n 's/^ProductCode\t//p'; }
csharp_file() {
  local file=bindings/pvItems32.cs
  [ ! -e "$root/$file" ] || echo "    <file src=\"$file\" target=\"contentFiles/cs/any\" />"
}

# drafts: fills what is known only now into copies of the manifests
drafts() {
  local setup_sum msi_sum
  setup_sum=$(sha256 "$output/$name-setup.exe")
  msi_sum=$(sha256 "$output/$name.msi")
  rm -rf "$output/winget" "$output/nuget"
  cp -r installer/winget installer/nuget "$output"
  sed -i -e "s/@VERSION@/$version/" -e "s/@DATE@/$(date -u -d "@$time" +%F)/" \
    -e "s/@SETUP_SHA256@/${setup_sum^^}/" -e "s/@MSI_SHA256@/${msi_sum^^}/" \
    -e "s/@PRODUCT_CODE@/$(product_code)/" -e "s|@CSHARP@|$(csharp_file)|" \
    -e "s|@URL@|${PV_DOWNLOAD_URL:-https://example.invalid/pvItems32}|" \
    "$output"/winget/*.yaml "$output"/nuget/*.nuspec
}

tools/make_installers.sh "$root" "$version" "$output"
tools/sign.sh "$output/$name-setup.exe" "$output/$name.msi"
tools/make_sbom.py "$root" "$version" "$time" "$output/$name.spdx.json"
drafts
(cd "$output" && sha256sum "$name.zip" "$name-setup.exe" "$name.msi" "$name.spdx.json" >SHA256SUMS)
echo "== $output: $(cut -d ' ' -f 3 "$output/SHA256SUMS" | tr '\n' ' ')"
