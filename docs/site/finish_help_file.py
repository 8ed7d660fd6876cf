#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Makes the pages of the help contexts relative in a compiled help file, in place.

The compiler of the build writes them with the folder of its project, where no help viewer finds
them. They stand in the table of strings, which is compressed; the completed table is appended
uncompressed, and the directory of the file tells it there.

Usage: docs/site/help_contexts.py <help file> <folder, as the compiler was told>
"""

import re
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

TABLE = "#STRINGS"
ENTRY = bytes([len(TABLE) + 1]) + b"/" + TABLE.encode()  # of the directory: its name, then three numbers
CONTENT_START = 0x58  # position in the header
SIZES_START = 0x38  # position in the header, of where the size of the file stands behind 8 bytes


def number_at(data, position):
    """A number in groups of seven bits, the highest first, and where the next one is."""
    value, byte = 0, 0x80
    while byte & 0x80:
        byte = data[position]
        value, position = value << 7 | byte & 0x7F, position + 1
    return value, position


def number(value, width):
    groups = [value >> 7 * i & 0x7F for i in reversed(range(width))]
    if value >> 7 * width:
        raise ValueError("the help file is too large")
    return bytes([group | 0x80 for group in groups[:-1]] + groups[-1:])


def unpacked(path, name):
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["chmls", "extractall", str(path.resolve()), folder], check=True, capture_output=True)
        return (Path(folder) / name).read_bytes()


def without_folder(table, folder):
    """Each string stays where it begins."""
    prefix = folder.encode() + b"/"
    changed, count = re.subn(re.escape(prefix) + rb"([^\0]*)", lambda found: found[1] + bytes(len(prefix)), table)
    if not count:
        raise ValueError("no context has a page")
    return changed


def with_table(data, table):
    """The content of the file, its table replaced by one of the same size."""
    if data.count(ENTRY) != 1:
        raise ValueError("the table is not in the directory, or more than once")
    section = data.index(ENTRY) + len(ENTRY)
    _, start = number_at(data, section)
    _, size = number_at(data, start)
    content = struct.unpack_from("<Q", data, CONTENT_START)[0]
    sizes = struct.unpack_from("<Q", data, SIZES_START)[0]
    changed = bytearray(data + table)
    changed[section:size] = number(0, start - section) + number(len(data) - content, size - start)
    struct.pack_into("<Q", changed, sizes + 8, len(changed))
    return changed


def main(path, folder):
    path.write_bytes(with_table(path.read_bytes(), without_folder(unpacked(path, TABLE), folder)))


if __name__ == "__main__":
    main(Path(sys.argv[1]), sys.argv[2])
