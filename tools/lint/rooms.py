#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Proves the order of the rooms: a file below src/ includes only its own room and those before it, and
core/ includes neither a header of the platform nor one of the contract."""

import pathlib
import re
import sys

ROOMS = ["core", "com", "platform", "host", "apartment", "dialogs", "classes", "module"]
CONTRACT = "pvItems32.h"
CONTRACT_FROM = ROOMS.index("host")  # com/ and platform/ know nothing of this product
WINDOWS = re.compile(r"windows\.h|commctrl\.h|shlobj\.h|(ole|oa|oc|obj|wtypes|winuser|dispex).*\.h")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def fault_of(room, quote, header):
    """What is wrong with an include, or None."""
    if quote == "<":
        return "core/ is platform-independent" if room == "core" and WINDOWS.fullmatch(header) else None
    if header == CONTRACT:
        return "knows nothing of the contract" if ROOMS.index(room) < CONTRACT_FROM else None
    target = header.split("/")[0]
    if target == "resources":
        return None
    if target not in ROOMS:
        return "is not named by its room"
    return f"{room}/ comes before {target}/" if ROOMS.index(target) > ROOMS.index(room) else None


def main():
    source = pathlib.Path(__file__).resolve().parents[2] / "src"
    faults = 0
    for path in sorted(source.rglob("*.*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        name = path.relative_to(source)
        for quote, header in INCLUDE.findall(path.read_text(encoding="utf-8")):
            fault = fault_of(name.parts[0], quote, header)
            if fault:
                print(f"src/{name} includes {header}: {fault}")
                faults += 1
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
