#!/usr/bin/env bash
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Source this file: takes programs and commands out of the guide of the unpacked package.

# snippet <language of the fence> <heading>: the first one of the section.
snippet() {
  awk -v fence="\`\`\`$1" -v heading="## $2" '
    /^## / { wanted = $0 == heading }
    inside && /^```$/ { exit }
    inside
    wanted && $0 == fence { inside = 1 }' docs/using.md
}

# command_for <source> <folder>: the one command that makes a program of the source in the folder.
command_for() {
  local commands
  commands=$(awk '/^```/ { inside = $0 == "```sh"; next } inside { print $0 " " }' docs/using.md |
    grep -F " $1 " | grep -F "$2/")
  [ "$(wc -l <<<"$commands")" -eq 1 ] && printf '%s\n' "$commands"
}
