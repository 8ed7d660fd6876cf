#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Packs and makes the setup program and the MSI package, and those of an older version; installs, upgrades,
# repairs and removes with each, and compares the registry with what regsvr32 writes, and registry and
# folders with what they were. Does so with the scripts for use by hand, too. Needs both Windows builds. Runs
# in a Windows of its own, which does not activate what is installed for one user: that is compared alone.
# Usage: tests/installer/run.sh [ways, such as 'Installer.Msi' or '-Installer.Setup:Installer.Scripts']
set -uo pipefail
PV_WINEPREFIX=$PWD/build/wine-installer PV_BITS=64
. tools/wine_prefix.sh
. tests/wanted.sh

tests=${1:-*}
. tools/version.sh
older=0.9.0
root=$PWD/$package_root
scratch=$(mktemp -d)
trap 'stop_wine; rm -rf "$scratch"' EXIT
USER=${USER:-$(id -un)}
. tests/installer/state.sh
failed=0

# try <name> <command...>
try() { run_step "Installer.$1" "${@:2}"; }

# ---- the two installers: install <version> <machine | user | chosen>, repair, remove <where>

setup() { windows "$(windows_path "$scratch/pvItems32-$1-setup.exe")" /S "${@:2}"; }
setup_install() {
  case $2 in
    machine) setup "$1" ;;
    user) setup "$1" /CurrentUser ;;
    # Last and unquoted, as the program wants its folder: in two words here.
    chosen)
      # shellcheck disable=SC2086
      setup "$1" /NoExamples /D=${windows_folder[chosen]}
      ;;
  esac
}
setup_repair() { setup "$version"; }
setup_remove() {
  local scope=/AllUsers
  [ "$1" != user ] || scope=/CurrentUser
  # Unquoted, as the program wants its folder: in two words here.
  # shellcheck disable=SC2086
  windows "${windows_folder[$1]}\\Uninstall.exe" /S $scope _?=${windows_folder[$1]} || return 1
  # Run in its own place, so that it can be waited for, the program cannot delete itself.
  rm "$(on_drive "${windows_folder[$1]}")/Uninstall.exe"
  rmdir "$(on_drive "${windows_folder[$1]}")"
}

msi() { windows msiexec "$1" "$(windows_path "$scratch/pvItems32-$2.msi")" /qn "${@:3}"; }
msi_install() {
  case $2 in
    machine) msi /i "$1" ;;
    user) msi /i "$1" ALLUSERS= ;;
    chosen) msi /i "$1" ADDLOCAL=Library "INSTALLDIR=${windows_folder[chosen]}" ;;
  esac
}
# What "msiexec /fa" stands for; the test platform has no such option.
msi_repair() { msi /i "$version" REINSTALL=ALL REINSTALLMODE=amus; }
# The test platform does not remember for whom a product was installed.
msi_remove() {
  if [ "$1" = user ]; then msi /x "$version" ALLUSERS=; else msi /x "$version"; fi
}

# ---- what is expected

# reference <where> <options of regsvr32...>: leaves what is registered there as <where>.expected
reference() {
  local where=$1 folder=${windows_folder[$1]} bits
  shift
  mkdir -p "$(on_drive "$folder")" && cp -r "$root/x86" "$root/x64" "$(on_drive "$folder")" || return 1
  for bits in 32 64; do regsvr $bits "$folder" "$@" || return 1; done
  classes regsvr && added regsvr >"$scratch/$where.expected"
  for bits in 32 64; do regsvr $bits "$folder" /u "$@" || return 1; done
  rm -r "$(on_drive "$folder")"
  # Each class has a name, and an entry for each kind of program or one for both.
  [ "$(wc -l <"$scratch/$where.expected")" -gt $(($(class_names | wc -l) * 20)) ]
}

# is_complete <where>: every file of the package, and the entries of regsvr32, no more and no less
is_complete() {
  has_files "${windows_folder[$1]}" "$(packed_files)" && classes installed &&
    added installed >"$scratch/installed.added" && same installed.added "$1.expected"
}

# Windows Installer writes a user's entries itself. Here a user has one view for programs of both kinds,
# so which of the two libraries an entry names is left open.
one_view() { sed -E 's/wow6432node\\//; s/\\x(86|64)/\\x??/' "$1" | LC_ALL=C sort -u; }
as_of_user() {
  local machine=${windows_folder[machine]//\\/\\\\} user=${windows_folder[user]//\\/\\\\}
  one_view <(sed -e 's/^hklm/hkcu/' -e "s/$machine/$user/" "$1")
}
has_entries_of_user() {
  has_files "${windows_folder[user]}" "$(packed_files)" && classes installed &&
    diff <(as_of_user "$scratch/machine.expected") \
      <(added installed | one_view /dev/stdin)
}

is_as_before() { state after && same before.registry after.registry && same before.folders after.folders; }

# ---- the tests

class_names() { sed -n 's/.*coclass \([A-Za-z]*\).*/\1/p' typelib/pvItems32.idl; }

# activates <bits> <what the script host says of itself>: every class comes into being
activates() {
  local said
  # shellcheck disable=SC2046 # a word for each class
  said=$(tool "$1" cscript //nologo "$(windows_path tests/installer/activate.vbs)" $(class_names) | tr -d '\r')
  [ "$said" = "$2" ] || { echo "said: $said"; return 1; }
}

# Object browsers look for the help file where the type library's entry says.
finds_help() {
  local folder found=0
  while read -r folder; do
    [ -s "$(on_drive "$folder")/pvItems32.chm" ] || { echo "no help file in $folder"; return 1; }
    found=1
  done < <(sed -n 's/.*\\helpdir|=//p' "$scratch/installed.added")
  [ "$found" -eq 1 ]
}

older_is_there() {
  "$1_install" "$older" machine && [ -e "$(on_drive "${windows_folder[machine]}")/only_older.txt" ]
}

upgrades() { "$1_install" "$version" machine && is_complete machine; }

repairs() {
  local folder
  folder=$(on_drive "${windows_folder[machine]}")
  rm "$folder/x64/pvItems32.dll" "$folder/docs/using.md"
  windows reg delete 'HKLM\Software\Classes\pvItems32.CItem' /f >/dev/null || return 1
  "$1_repair" && is_complete machine
}

# While a program has the library, setup does nothing.
refuses_in_use() {
  local host result held
  held=$(on_drive 'C:\held')
  windows "$(windows_path "$scratch/hold_file.exe")" "${windows_folder[machine]}\\x64\\pvItems32.dll" \
    'C:\held' &
  host=$!
  until [ -e "$held" ] || ! kill -0 "$host"; do sleep 0.1; done
  setup "$version"
  result=$?
  rm "$held"
  wait "$host"
  [ "$result" -eq 4 ] || { echo "exit status $result, expected 4"; return 1; }
  is_complete machine
}

removes() { "$1_remove" "$2" && is_as_before; }

chosen_folder() {
  "$1_install" "$version" chosen && has_files "${windows_folder[chosen]}" "$(library_files)" &&
    activates 32 x86 && "$1_remove" chosen && [ ! -e "$(on_drive "${windows_folder[chosen]}")" ]
}

run_lane() { # <setup | msi> <name>
  wanted "Installer.$2" "$tests" || return 0
  try "$2.Older" older_is_there "$1"
  try "$2.Upgrade" upgrades "$1"
  try "$2.Help" finds_help
  try "$2.Activate32" activates 32 x86
  try "$2.Activate64" activates 64 AMD64
  [ "$1" = msi ] || try "$2.InUse" refuses_in_use
  try "$2.Repair" repairs "$1"
  try "$2.Remove" removes "$1" machine
  try "$2.ChosenFolder" chosen_folder "$1"
  try "$2.User" user_installs "$1"
  try "$2.RemoveOfUser" removes "$1" user
}

user_installs() {
  "$1_install" "$version" user || return 1
  if [ "$1" = msi ]; then has_entries_of_user; else is_complete user; fi
}

# script <bits of the shell> <name> <arguments...>: one that is in the unpacked package
script() { tool "$1" cmd /c "${windows_folder[machine]}\\$2.cmd" "${@:3}" | tr -d '\r'; }

unpack() { cp -r "$root" "$(on_drive "${windows_folder[machine]}")"; }

# registers <bits of the shell> <where> <arguments...>: as regsvr32 does, and takes it back
registers() {
  local bits=$1 where=$2 both='x86\pvItems32.dll: done
x64\pvItems32.dll: done'
  shift 2
  [ "$(script "$bits" Register "$@")" = "$both" ] && classes registered &&
    added registered >"$scratch/registered.added" && same registered.added "$where.expected" &&
    [ "$(script "$bits" Unregister "$@")" = "$both" ] && state after &&
    same before.registry after.registry
}

# Nothing is done about the other bitness when one fails.
tells_failure() {
  mv "$(on_drive "${windows_folder[machine]}")/x86/pvItems32.dll" "$scratch"
  [[ $(script 64 Register; echo "exit ${PIPESTATUS[0]}") == 'x86\pvItems32.dll: failed with error '* ]]
}

run_scripts() {
  wanted Installer.Scripts "$tests" || return 0
  unpack
  try Scripts.Shell64 registers 64 machine
  try Scripts.Shell32 registers 32 machine
  try Scripts.User registers 64 unpacked_user user
  try Scripts.Failure tells_failure
  rm -r "$(on_drive "${windows_folder[machine]}")"
}

# Packed by another suite of the same run, and nothing that it is made of has changed since.
is_packed() {
  local zip=build/package/pvItems32-$version.zip
  [ -e "$zip" ] && ! { git ls-files; ls build/win{32,64}/{pvItems32,fluxor_server}.dll; } |
    tr '\n' '\0' | xargs -0 sh -c 'find "$@" -newer "$0"' "$zip" | grep -q .
}

# An older version is smaller, and has a file that the newer one has not.
make_all() {
  { is_packed || tools/package.sh; } && tools/make_release.sh && cp build/package/*.{exe,msi} "$scratch" || return 1
  mkdir "$scratch/older" && cp -r "$root"/{x86,x64,typelib} "$scratch/older" &&
    date >"$scratch/older/only_older.txt" &&
    tools/make_installers.sh "$scratch/older" "$older" "$scratch"
}

release_is_consistent() {
  tests/installer/check_release.py build/package "$version" && (cd build/package && sha256sum -c SHA256SUMS)
}

# With a certificate of its own: what is signed says so, and a changed byte is told.
signs() {
  local key=$scratch/key.pem certificate=$scratch/certificate.pem file
  local signed=("$scratch/pvItems32-$version-setup.exe" "$scratch/pvItems32-$version.msi" "$scratch/signed.dll")
  cp "$root/x64/pvItems32.dll" "$scratch/signed.dll"
  openssl req -x509 -newkey rsa:2048 -nodes -keyout "$key" -out "$certificate" -days 2 -subj /CN=test \
    -addext extendedKeyUsage=codeSigning &&
    openssl pkcs12 -export -inkey "$key" -in "$certificate" -out "$scratch/test.p12" -passout pass:secret &&
    PV_CERTIFICATE=$scratch/test.p12 PV_CERTIFICATE_PASSWORD=secret tools/sign.sh "${signed[@]}" || return 1
  for file in "${signed[@]}"; do
    osslsigncode verify -CAfile "$certificate" -in "$file" || return 1
  done
  printf 'x' | dd of="$scratch/signed.dll" bs=1 seek=4096 conv=notrunc status=none
  ! osslsigncode verify -CAfile "$certificate" -in "$scratch/signed.dll"
}

# A run that came to no end leaves a system with something installed, so each starts from what was saved.
start_clean() {
  local saved=$WINEPREFIX/saved where
  if [ ! -d "$saved" ]; then
    start_wine && wineserver -k && wineserver -w && mkdir "$saved" && cp "$WINEPREFIX"/*.reg "$saved" || return 1
  else
    cp "$saved"/*.reg "$WINEPREFIX"
  fi
  for where in machine user chosen; do rm -rf "$(on_drive "${windows_folder[$where]}")"; done
  start_wine
}

# Folders and keys that every system in use has. Whoever is the first creates them, and they stay.
common_places() {
  mkdir -p "$drive/windows/Installer" "$(dirname "$(on_drive "${windows_folder[user]}")")"
  local key
  for key in 'HKCU\Software\Classes\'{CLSID,Interface,TypeLib} \
    'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall'; do
    windows reg add "$key" /f >/dev/null || return 1
  done
}

# The script host's own type library is registered anew by its first use.
use_script_hosts() {
  local bits
  for bits in 32 64; do tool $bits cscript //nologo "$(windows_path tests/installer/activate.vbs)" || return 1; done
}

make_tool() { # <name>
  x86_64-w64-mingw32-g++-posix -Wall -Wextra -Werror -O1 -municode -static "tests/installer/$1.cpp" \
    -o "$scratch/$1.exe"
}

prepare() {
  make_tool dump_registry && make_tool hold_file && start_clean && common_places &&
    use_script_hosts && state before && reference machine && reference user /n /i:user &&
    sed "s/${windows_folder[user]//\\/\\\\}/${windows_folder[machine]//\\/\\\\}/" \
      "$scratch/user.expected" >"$scratch/unpacked_user.expected"
}

try Make make_all
[ "$failed" -eq 0 ] || exit 1
try Release release_is_consistent
try Signed signs
try Prepare prepare
run_scripts
run_lane setup Setup
run_lane msi Msi
exit "$failed"
