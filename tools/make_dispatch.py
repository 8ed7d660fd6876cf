#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Writes the dispatch tables of a contract: what calls by name have to know of the default interface of
each class, as the constants that src/com/dispatch/dispatch_table.h describes.

    make_dispatch.py <idl> <output base>

makes <base>_dispatch.cpp with the tables, and <base>_dispatch.h, which lists them all.
"""

import sys
from pathlib import Path

import contract

NEW_ENUM = LOWEST_ID = -4
METHODS_OF_DISPATCH = 7  # in front of an interface's own in the vtable
NO_PLACE = 0xFF
KINDS = {"method": (1, 0), "propget": (2, 0), "propput": (4, 1), "propputref": (8, 2)}  # INVOKEKIND, place
PUTS = ("propput", "propputref")
BY_REF, OPTIONAL, PLAIN_DEFAULT, TEXT_DEFAULT = 1, 2, 4, 8

TYPES = {
    "short": "VT_I2", "long": "VT_I4", "hyper": "VT_I8", "unsigned char": "VT_UI1", "float": "VT_R4",
    "double": "VT_R8", "DATE": "VT_DATE", "BSTR": "VT_BSTR", "VARIANT": "VT_VARIANT", "VARIANT_BOOL": "VT_BOOL",
}
WHOLE_NUMBERS = ("VT_I2", "VT_I4", "VT_UI1", "VT_BOOL")
FOREIGN_INTERFACES = {
    "IUnknown": "00000000-0000-0000-C000-000000000046",
    "IDispatch": "00020400-0000-0000-C000-000000000046",
    "IPictureDisp": "7BF80981-BF32-101A-8BBB-00AA00300CAB",
}

HEAD = """// Made by tools/make_dispatch.py of {source}: not to be edited.
"""


def hash_of(name):
    """hash_ascii of src/core/text/ascii.h, of a name in small letters."""
    value = 0
    for character in name:
        value = (value << 5 | value >> 27) & 0xFFFFFFFF ^ ord(character)
    spread = value * 0x9E3779B1 & 0xFFFFFFFF
    return spread ^ spread >> 16


class Texts:
    """All texts one behind the other, each once; the empty one is the first."""

    def __init__(self):
        self.places, self.size = {}, 0
        self.place_of("")

    def place_of(self, text):
        if not text.isascii() or any(mark in text for mark in '"\\'):
            raise ValueError(f"the text {text} is not provided for")
        if text not in self.places:
            self.places[text] = self.size
            self.size += len(text) + 1
        return self.places[text]


class Writer:
    def __init__(self, library):
        self.library = library
        self.texts = Texts()
        self.enumerated = {value.name: value.number
                           for each in library.enumerations for value in each.values}
        self.enumerations = {each.name for each in library.enumerations}
        self.uuids = dict(FOREIGN_INTERFACES)
        self.uuids.update((each.name, each.uuid) for each in library.interfaces)
        self.interfaces = {}  # those that parameters name, and their places

    # -------------------------------------------------------------- parameters

    def type_of(self, parameter):
        """The automation type, and whether it is passed by reference."""
        if parameter.type in self.uuids:
            kind = "VT_UNKNOWN" if parameter.type == "IUnknown" else "VT_DISPATCH"
            return kind, parameter.pointers > 1
        if parameter.type in self.enumerations:
            return "VT_I4", parameter.pointers > 0
        return TYPES[parameter.type], parameter.pointers > 0

    def default_of(self, parameter, kind):
        """Flag and value of a default; an object's can only be Nothing."""
        text = parameter.default
        if text is None or parameter.type in self.uuids:
            return 0, 0
        if text.startswith('"'):
            return TEXT_DEFAULT, self.texts.place_of(contract.unquoted(text))
        if kind not in WHOLE_NUMBERS:
            raise ValueError(f"a default {text} of type {parameter.type} is not provided for")
        number = self.enumerated[text] if text in self.enumerated else int(text, 0)
        return PLAIN_DEFAULT, number

    def parameter(self, parameter, name):
        kind, by_ref = self.type_of(parameter)
        flags, extra = self.default_of(parameter, kind)
        if parameter.type in self.uuids:
            extra = self.interfaces.setdefault(parameter.type, len(self.interfaces))
        flags |= BY_REF if by_ref else 0
        flags |= OPTIONAL if parameter.is_optional or parameter.default is not None else 0
        return f"{{{self.texts.place_of(name.lower())}, {kind}, {flags}, {extra}}}"

    # -------------------------------------------------------------- tables

    def members(self, interface):
        """The rows of the members and of their parameters."""
        rows, parameters, names_of_id = [], [], {}
        for index, member in enumerate(interface.members):
            passed = member.parameters + ([member.result] if member.result else [])
            # The names of all kinds of a member are those of the first; a new value has none of its own.
            own = [each.name for each in passed]
            if member.kind in PUTS:
                own[-1] = ""
            names = names_of_id.setdefault(member.id, own)
            rows.append(f"{{{member.id}, {METHODS_OF_DISPATCH + index}, {len(parameters)}, "
                        f"{len(member.parameters)}, {KINDS[member.kind][0]}, "
                        f"{'true' if member.result else 'false'}}},  // {member.name}")
            for place, each in enumerate(passed):
                name = names[place] if place < len(names) else ""
                parameters.append(self.parameter(each, name) + ",")
        return rows, parameters

    @staticmethod
    def kinds(interface):
        """For each id the places of its members, by kind."""
        if len(interface.members) >= NO_PLACE:
            raise ValueError(f"{interface.name} has too many members")
        places = [[NO_PLACE] * 3 for _ in range(max(each.id for each in interface.members) - LOWEST_ID + 1)]
        for index, member in enumerate(interface.members):
            places[member.id - LOWEST_ID][KINDS[member.kind][1]] = index
        return ["{{%d, %d, %d}}," % tuple(each) for each in places]

    def names(self, interface):
        """The hash table: open, at most half full; a taken place leads to the next."""
        ids = {}
        for member in interface.members:
            ids.setdefault(member.name.lower(), member.id)
            if member.id == NEW_ENUM:  # some clients know it as the platform's tools call it
                ids.setdefault("_newenum", member.id)
        size = 8
        while size < 2 * len(ids):
            size *= 2
        places = [None] * size
        for name in ids:
            at = hash_of(name) % size
            while places[at] is not None:
                at = (at + 1) % size
            places[at] = name
        return [f"{{{self.texts.place_of(name)}, {ids[name]}}}," if name else "{0, 0}," for name in places]

    def table(self, known):
        interface = next(each for each in self.library.interfaces if each.name == known.interface)
        members, parameters = self.members(interface)
        parts = [("MemberData", "members", members), ("ParameterData", "parameters", parameters),
                 ("KindsData", "kinds", self.kinds(interface)), ("NameData", "names", self.names(interface))]
        lines = [f"namespace of_{known.name} {{"]
        for kind, name, rows in parts:
            lines += [f"constexpr {kind} {name}[] = {{", *("  " + row for row in rows), "};"]
        lines += [f"}}  // namespace of_{known.name}", ""]
        return lines

    def iids(self):
        for name in self.interfaces:
            first, second, third, fourth, fifth = self.uuids[name].split("-")
            bytes_of = ", ".join("0x" + (fourth + fifth)[i:i + 2] for i in range(0, 16, 2))
            yield f"  {{0x{first}, 0x{second}, 0x{third}, {{{bytes_of}}}}},  // {name}"

    def source(self, name):
        tables = [line for known in self.library.classes for line in self.table(known)]
        # The literal's own NUL ends the last text.
        pool = [f'  "{text}\\0"' for text in self.texts.places]
        ends = [f"const DispatchTable kMembersOf{known.name}{{\n  pool, " +
                ", ".join(f"of_{known.name}::{part}" for part in ("members", "parameters", "kinds", "names")) +
                ",\n  " + ", ".join(f"std::size(of_{known.name}::{part})" for part in ("members", "kinds", "names")) +
                "};" for known in self.library.classes]
        return "\n".join([
            f'#include "{name}_dispatch.h"', "", "#include <iterator>", "", "namespace pv {", "namespace {", "",
            "constexpr char texts[] =", *pool, ";", "static_assert(sizeof texts < 0x10000);", "",
            "constexpr IID interfaces[] = {", *self.iids(), "};",
            "constexpr DispatchPool pool{texts, interfaces};", "", *tables,
            "}  // namespace", "", *ends, "", "}  // namespace pv", ""])

    def header(self):
        names = [known.name for known in self.library.classes]
        return "\n".join([
            "#pragma once", "", '#include "com/dispatch/dispatch_table.h"', "", "namespace pv {", "",
            *(f"extern const DispatchTable kMembersOf{name};" for name in names), "",
            f"inline constexpr NamedDispatchTable kTablesOf{self.library.name}[] = {{",
            *(f'  {{L"{name}", &kMembersOf{name}}},' for name in names), "};", "", "}  // namespace pv", ""])


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    idl, base = Path(sys.argv[1]), Path(sys.argv[2])
    try:
        writer = Writer(contract.read(idl))
        head = HEAD.format(source=idl.name)
        Path(f"{base}_dispatch.cpp").write_text(head + writer.source(base.name), encoding="ascii")
        Path(f"{base}_dispatch.h").write_text(head + writer.header(), encoding="ascii")
    except (KeyError, OSError, ValueError) as error:
        sys.exit(f"make_dispatch: {error}")


if __name__ == "__main__":
    main()
