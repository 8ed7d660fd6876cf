#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Gives the values of enumerations their help texts in a compiled type library.

The IDL compiler of the build cannot store them. This program adds those of the contract to the
library in place.

A type library (MSFT format) is a header, the offsets of the type descriptions, a directory of
segments, the segments, and behind them one block per type with its members. All pointers into the
file are the offsets in the segment directory and the block offset in each type description; every
other reference is relative to a segment. So segments and blocks may grow, as long as these two
kinds of offset are moved along.
"""

import argparse
import struct
import sys

import contract

HEADER_SIZE = 0x54
HAS_HELP_DLL = 0x100  # in the header's flags: one more header field
SEGMENT_COUNT = 15
TYPE_INFO, NAMES, STRINGS = 0, 7, 8  # positions in the segment directory
TYPE_INFO_SIZE = 0x64
KIND_ENUM = 0

# A variable record: size and number, type, flags, kind and description size, value; then optional
# fields, of which help context and help text are the first.
PLAIN_RECORD = 0x14
RECORD_WITH_HELP = 0x1C


def u32(data, offset):
    return struct.unpack_from("<I", data, offset)[0]


def texts_in(declared):
    """The help text of every enumeration value, by its name."""
    texts = {}
    for value in (value for known in declared.enumerations for value in known.values):
        if value.name in texts:
            raise ValueError(f"{value.name} is declared twice")
        texts[value.name] = value.help
    return texts


class TypeLibrary:
    """A library file as a header and parts that may be replaced: segments and member blocks. A part
    ends where the next one begins."""

    def __init__(self, data):
        if data[:4] != b"MSFT":
            raise ValueError("not a type library")
        self.data = bytearray(data)
        self.directory = HEADER_SIZE + 4 * u32(data, 0x20)
        if u32(data, 0x14) & HAS_HELP_DLL:
            self.directory += 4
        self.replaced = {}  # start of a part -> its new content
        starts = {self.segment(i)[0] for i in range(SEGMENT_COUNT) if self.segment(i)[1]}
        starts |= {self.block(info) for info in self.types()}
        self.starts = sorted(starts | {len(data)})

    def segment(self, index):
        """Start and size in the file."""
        return struct.unpack_from("<II", self.data, self.directory + 16 * index)

    def types(self):
        """Offsets of the type descriptions in the file."""
        start, size = self.segment(TYPE_INFO)
        return range(start, start + size, TYPE_INFO_SIZE)

    def block(self, info):
        """Start of the members of a type."""
        return u32(self.data, info + 4)

    def part(self, start):
        if start in self.replaced:
            return self.replaced[start]
        return self.data[start : self.starts[self.starts.index(start) + 1]]

    def name(self, offset):
        start = self.segment(NAMES)[0] + offset
        return self.data[start + 12 : start + 12 + self.data[start + 8]].decode("ascii")

    def content(self):
        """The file with its replaced parts, the offsets moved along."""
        result = bytearray(self.data[: self.starts[0]])
        moved = {}
        for start in self.starts[:-1]:
            moved[start] = len(result)
            result += self.part(start)
        moved[len(self.data)] = len(result)

        for i in range(SEGMENT_COUNT):
            start, size = self.segment(i)
            if size:
                size = len(self.replaced.get(start, self.data[:size]))
                struct.pack_into("<II", result, self.directory + 16 * i, moved[start], size)
        first = self.segment(TYPE_INFO)[0]
        for info in self.types():
            struct.pack_into("<I", result, moved[first] + info - first + 4, moved[self.block(info)])
        return bytes(result)


class StringTable:
    """The segment of strings: a length of two bytes, the characters, padding to four bytes."""

    def __init__(self, content):
        self.content = bytearray(content)
        self.offsets = {}

    def add(self, text):
        if text not in self.offsets:
            encoded = text.encode("cp1252")
            entry = struct.pack("<H", len(encoded)) + encoded
            entry += b"W" * (max(8, -(-len(entry) // 4) * 4) - len(entry))
            self.offsets[text] = len(self.content)
            self.content += entry
        return self.offsets[text]


def records_of(block, count):
    """The member records of a block, in order."""
    position = 4
    for _ in range(count):
        size = u32(block, position) & 0xFFFF
        yield block[position : position + size]
        position += size


def with_help(block, count, texts, strings, name_of):
    """A block of `count` values whose records carry their texts. Returns it with the names used.

    Behind the records stand three arrays: member ids, names, and positions of the records."""
    arrays = 4 + u32(block, 0)
    names = [name_of(u32(block, arrays + 4 * (count + i))) for i in range(count)]
    records, positions = [], []
    for name, record in zip(names, records_of(block, count)):
        if name in texts and len(record) == PLAIN_RECORD:
            record = record + struct.pack("<II", 0, strings.add(texts[name]))
            struct.pack_into("<H", record, 0, RECORD_WITH_HELP)
        positions.append(sum(map(len, records)))
        records.append(record)
    body = b"".join(records)
    return (
        struct.pack("<I", len(body))
        + body
        + block[arrays : arrays + 8 * count]
        + struct.pack(f"<{count}I", *positions)
        + block[arrays + 12 * count :]
    ), names


def add_help(data, texts):
    library = TypeLibrary(data)
    start, size = library.segment(STRINGS)
    strings = StringTable(data[start : start + size])
    used = set()
    for info in library.types():
        count = u32(data, info + 0x18) >> 16
        if u32(data, info) & 0xF != KIND_ENUM or count == 0:
            continue
        block = library.part(library.block(info))
        block, names = with_help(block, count, texts, strings, library.name)
        library.replaced[library.block(info)] = block
        used.update(names)
    unknown = sorted(set(texts) - used)
    if unknown:
        raise ValueError("not in the library: " + ", ".join(unknown))
    library.replaced[start] = bytes(strings.content)
    return library.content()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("idl", help="the contract")
    parser.add_argument("library", help="the compiled type library, changed in place")
    options = parser.parse_args()
    try:
        texts = texts_in(contract.read(options.idl))
        with open(options.library, "rb") as file:
            data = file.read()
        changed = add_help(data, texts)
        with open(options.library, "wb") as file:
            file.write(changed)
    except (OSError, ValueError) as error:
        sys.exit(f"typelib_help: {error}")


if __name__ == "__main__":
    main()
