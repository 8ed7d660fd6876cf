#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Completes a compiled help file in place.

The compiler of the build writes the pages of the help contexts with the folder of its project, where
no help viewer finds them. They stand in the table of strings, which is compressed; the completed
table is appended uncompressed, and the directory of the file tells it there.

It also writes the time. A checksum takes its place, so that the same pages make the same file.

Usage: docs/site/finish_help_file.py <help file> <folder, as the compiler was told>
"""

import re
import struct
import subprocess
import sys
import tempfile
import zlib
from pathlib import Path

STRINGS, SYSTEM = "#STRINGS", "#SYSTEM"
TIME = 0x10  # positions in the header
FILE_SIZES = 0x38  # where the size of the file stands behind 8 bytes
CONTENT = 0x58  # where everything begins that is not compressed
TIME_OF_SYSTEM = 10  # code of an entry


def number_at(data, position):
    """A number in groups of seven bits, the highest first, and where the next one is."""
    value, byte = 0, 0x80
    while byte & 0x80:
        byte = data[position]
        value, position = value << 7 | byte & 0x7F, position + 1
    return value, position


def number(value, width):
    if value >> 7 * width:
        raise ValueError("the help file is too large")
    groups = [value >> 7 * i & 0x7F for i in reversed(range(width))]
    return bytes([group | 0x80 for group in groups[:-1]] + groups[-1:])


def position_in(data, header):
    return struct.unpack_from("<Q", data, header)[0]


def entry_of(data, name):
    """Where the directory has the three numbers of a file: section, start and size."""
    entry = bytes([len(name) + 1]) + b"/" + name.encode()
    if data.count(entry) != 1:
        raise ValueError(f"{name} is not in the directory, or more than once")
    return data.index(entry) + len(entry)


def unpacked(path, name):
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["chmls", "extractall", str(path.resolve()), folder], check=True, capture_output=True)
        return (Path(folder) / name).read_bytes()


def without_folder(strings, folder):
    """Each string stays where it begins."""
    prefix = folder.encode() + b"/"
    changed, count = re.subn(re.escape(prefix) + rb"([^\0]*)", lambda found: found[1] + bytes(len(prefix)), strings)
    if not count:
        raise ValueError("no context has a page")
    return changed


def replace_strings(data, strings):
    """By others of the same size."""
    section = entry_of(data, STRINGS)
    _, start = number_at(data, section)
    _, size = number_at(data, start)
    data[section:size] = number(0, start - section) + number(len(data) - position_in(data, CONTENT), size - start)
    data += strings
    struct.pack_into("<Q", data, position_in(data, FILE_SIZES) + 8, len(data))


def position_of_time(data):
    """In the settings of the file: entries of a code, a size and their content."""
    _, start = number_at(data, entry_of(data, SYSTEM))
    offset, _ = number_at(data, start)
    position = position_in(data, CONTENT) + offset + 4
    code, size = struct.unpack_from("<HH", data, position)
    while code != TIME_OF_SYSTEM:
        position += 4 + size
        code, size = struct.unpack_from("<HH", data, position)
    return position + 4


def replace_times(data):
    def write(value):
        for position in (TIME, position_of_time(data)):
            struct.pack_into("<I", data, position, value)

    write(0)
    write(zlib.crc32(data))


def main(path, folder):
    data = bytearray(path.read_bytes())
    replace_strings(data, without_folder(unpacked(path, STRINGS), folder))
    replace_times(data)
    path.write_bytes(data)


if __name__ == "__main__":
    main(Path(sys.argv[1]), sys.argv[2])
