#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Source this file: tells which Debian release the machine runs and where its packages come from.

debian_keyring=/usr/share/keyrings/debian-archive-keyring.gpg

debian_release() { (. /etc/os-release && printf '%s\n' "${VERSION_CODENAME:-}"); }

# The machine's own Debian sources, one a line, as "<site> <suite>"; empty before the first update.
debian_sources() {
  apt-get indextargets --format '$(ORIGIN) $(CODENAME) $(REPO_URI)' 2>/dev/null |
    awk '$1 == "Debian" { print $3, $2 }' | sort -u
}

# Writes lines of debian_sources as apt reads them.
as_source_list() { sed "s|.*|deb [signed-by=$debian_keyring] & main|"; }
