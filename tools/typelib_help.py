#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Completes the help of a compiled type library in place: the name of the help file, the contexts of
everything that the library holds (tools/help_topics.py), and the texts of enumeration values, which
the IDL compiler cannot store.

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
import help_topics

HEADER_SIZE = 0x54
LIBRARY_FLAGS, LIBRARY_CONTEXT, HELP_FILE = 0x14, 0x2C, 0x3C  # positions in the header
HAS_HELP_FILE = 0x10  # in the header's flags
HAS_HELP_DLL = 0x100  # in the header's flags: one more header field
SEGMENT_COUNT = 15
TYPE_INFO, NAMES, STRINGS = 0, 7, 8  # positions in the segment directory
TYPE_INFO_SIZE = 0x64
TYPE_NAME, TYPE_CONTEXT = 0x34, 0x44  # positions in a type description
KIND_ENUM = 0

# A member's record is its size and number, its type, and what depends on its kind; then optional
# fields, of which help context and help text are the first.
FUNCTION_CONTEXT = 0x18
VALUE_CONTEXT = 0x14


def u32(data, offset):
    return struct.unpack_from("<I", data, offset)[0]


class TypeLibrary:
    """A library file as a header and parts that may be replaced: segments and member blocks. A part
    ends where the next one begins."""

    def __init__(self, data):
        if data[:4] != b"MSFT":
            raise ValueError("not a type library")
        self.data = bytearray(data)
        self.directory = HEADER_SIZE + 4 * u32(data, 0x20)
        if u32(data, LIBRARY_FLAGS) & HAS_HELP_DLL:
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


def with_help(block, count, helped):
    """A block of `count` members, whose records `helped` completes; it gets the number and the name
    of each. Behind the records stand three arrays: member ids, names, and positions of the records."""
    arrays = 4 + u32(block, 0)
    records, positions = [], []
    for i, record in enumerate(records_of(block, count)):
        positions.append(sum(map(len, records)))
        records.append(helped(record, u32(block, arrays + 4 * i), u32(block, arrays + 4 * (count + i))))
    body = b"".join(records)
    return (
        struct.pack("<I", len(body))
        + body
        + block[arrays : arrays + 8 * count]
        + struct.pack(f"<{count}I", *positions)
        + block[arrays + 12 * count :]
    )


def function_with_help(record, topic):
    """Each has its text already, which stands behind the context."""
    struct.pack_into("<I", record, FUNCTION_CONTEXT, topic.number)
    return record


def value_with_help(record, topic, strings):
    text = strings.add(topic.member.help)
    record = record[:VALUE_CONTEXT] + struct.pack("<II", topic.number, text)
    struct.pack_into("<H", record, 0, len(record))
    return record


class Helper:
    """Gives each type its topics, and knows afterwards which of them were used."""

    def __init__(self, library, declared):
        self.library = library
        self.topics = help_topics.topics(declared)
        self.owners = {known.interface: known.name for known in declared.classes}
        self.ids = {(owner, topic.member.id): name for (owner, name), topic in self.topics.items()
                    if isinstance(topic.member, contract.Member)}
        start, size = library.segment(STRINGS)
        self.strings = StringTable(library.part(start))
        self.used = set()

    def topic(self, *key):
        if key not in self.topics:
            raise ValueError(f"{key} is not in the contract")
        self.used.add(key)
        return self.topics[key]

    def help_type(self, info):
        library = self.library
        name = library.name(u32(library.data, info + TYPE_NAME))
        owner = self.owners.get(name, name)
        struct.pack_into("<I", library.data, info + TYPE_CONTEXT, self.topic(owner, None).number)
        is_enumeration = u32(library.data, info) & 0xF == KIND_ENUM

        def helped(record, number, name):
            if is_enumeration:
                return value_with_help(record, self.topic(owner, library.name(name)), self.strings)
            return function_with_help(record, self.topic(owner, self.ids.get((owner, signed(number)), "")))

        functions, values = struct.unpack_from("<HH", library.data, info + 0x18)
        if functions + values:
            block = library.block(info)
            library.replaced[block] = with_help(library.part(block), functions + values, helped)

    def help_library(self, declared):
        header = self.library.data
        struct.pack_into("<I", header, LIBRARY_FLAGS, u32(header, LIBRARY_FLAGS) | HAS_HELP_FILE)
        struct.pack_into("<I", header, LIBRARY_CONTEXT, self.topic(declared.name, None).number)
        struct.pack_into("<I", header, HELP_FILE, self.strings.add(help_topics.HELP_FILE))
        for info in self.library.types():
            self.help_type(info)
        missing = sorted(f"{owner}.{name}" for owner, name in set(self.topics) - self.used)
        if missing:
            raise ValueError("not in the library: " + ", ".join(missing))
        self.library.replaced[self.library.segment(STRINGS)[0]] = bytes(self.strings.content)


def signed(number):
    return number - (1 << 32) if number >> 31 else number


def completed(data, declared):
    library = TypeLibrary(data)
    Helper(library, declared).help_library(declared)
    return library.content()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("idl", help="the contract")
    parser.add_argument("library", help="the compiled type library, changed in place")
    options = parser.parse_args()
    try:
        with open(options.library, "rb") as file:
            data = file.read()
        changed = completed(data, contract.read(options.idl))
        with open(options.library, "wb") as file:
            file.write(changed)
    except (OSError, ValueError) as error:
        sys.exit(f"typelib_help: {error}")


if __name__ == "__main__":
    main()
