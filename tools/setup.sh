#!/usr/bin/env bash
# Installs every build and test tool from Debian packages; does nothing when they are all there.
set -euo pipefail

packages=(
  build-essential cmake ninja-build git python3 imagemagick
  googletest clang libclang-rt-14-dev clang-format clang-tidy cppcheck gcovr
  g++-mingw-w64-i686-posix mingw-w64-tools
  wine wine32:i386 libwine:i386 xvfb socat
  fonts-wine fonts-dejavu-core fonts-dejavu-extra
)

installed() {
  local package
  for package in "${packages[@]}"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || return 1
  done
}

if installed; then exit 0; fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "setup: run as root or install sudo" >&2; exit 1; }
  as_root=(sudo)
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
log=$work/log

apt() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q "$@" >>"$log" 2>&1; }
install_all() { apt "$@" install -y --no-install-recommends "${packages[@]}"; }

echo "setup: installing the toolchain from Debian packages"
"${as_root[@]}" dpkg --add-architecture i386
if apt update && install_all; then
  echo "setup: done"
  exit 0
fi

# The i386 index of the security suite can lag behind the mirror. Then only the main suites are
# asked, through a private source list; the machine's own lists stay as they are.
echo "setup: the package index is out of step; trying again with the main suites only"
site=$(apt-get indextargets --format '$(REPO_URI) $(RELEASE)' 2>/dev/null |
  awk '$2 == "bookworm" { print $1; exit }')
[ -n "$site" ] || { tail -n 20 "$log" >&2; echo "setup: no bookworm source is configured" >&2; exit 1; }
keyring=/usr/share/keyrings/debian-archive-keyring.gpg
mkdir -p "$work/lists/partial"
chmod -R a+rX "$work"
for suite in bookworm bookworm-updates; do
  echo "deb [signed-by=$keyring] $site $suite main"
done >"$work/sources.list"
private=(-o "Dir::Etc::SourceList=$work/sources.list" -o Dir::Etc::SourceParts=-
  -o "Dir::State::Lists=$work/lists")
if apt "${private[@]}" update && install_all "${private[@]}"; then
  echo "setup: done"
  exit 0
fi
tail -n 30 "$log" >&2
echo "setup: the packages could not be installed" >&2
exit 1
