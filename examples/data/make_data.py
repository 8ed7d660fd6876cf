#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Writes the Fluxor settings files (fluxor.itm, .ver, .dim, .lst, .val) from fluxor_tables.py.

Usage: make_data.py [folder]      without a folder the files beside this script are replaced
"""

import sys
from decimal import Decimal, localcontext
from fractions import Fraction
from pathlib import Path

sys.dont_write_bytecode = True  # the folder holds the settings files and nothing else

from fluxor_tables import DIMENSIONS, ITEMS, LISTS, OLD_ITEMS, VERSIONS

FILE_VERSION = "1.00.00"
FILE_COMMENT = "Fluxor example settings"
SIGNIFICANT_DIGITS = 15  # what the ordinary text form of a 64-bit float carries
SELECTOR_DIMENSION = -1

DIMENSION_IDS = {caption: n for n, caption in enumerate(DIMENSIONS, start=1)}
LIST_IDS = {caption: n for n, caption in enumerate(LISTS, start=1)}
ITEMS_BY_ID = {item.id: item for item in ITEMS}


def number_text(value):
    """Plain decimal text, exact where 15 significant digits allow it, else correctly rounded."""
    fraction = Fraction(value)
    with localcontext() as context:
        context.prec = SIGNIFICANT_DIGITS
        text = format(Decimal(fraction.numerator) / Decimal(fraction.denominator), "f")
    return text.rstrip("0").rstrip(".") if "." in text else text


def flag(value):
    return "-1" if value else "0"


def record(*fields):
    return "".join(f"{field}|" for field in fields)


class SettingsFile:
    """Section and key lines; an empty line stands before every section but the first."""

    def __init__(self):
        self.lines = []

    def section(self, name, **values):
        if self.lines:
            self.lines.append("")
        self.lines.append(f"[{name}]")
        for key, value in values.items():
            self.value(key, value)

    def header(self, name, count):
        self.section(name, Count=count, Version=FILE_VERSION, Date=FILE_COMMENT)

    def value(self, key, value):
        self.lines.append(f"{key}={value}")


def unit_id(dimension, caption):
    captions = [unit[0] for unit in DIMENSIONS[dimension]]
    return captions.index(caption) + 1 if caption else 1


def carrier(item, variable):
    """The variable whose dimension and unit `variable` shows: its own or one of another item."""
    if variable.parent == 0:
        return variable
    if variable.parent < 0:
        sibling = item.variables[-variable.parent - 1]
        return ITEMS_BY_ID[int(sibling.value)].variables[0]
    parent = ITEMS_BY_ID[variable.parent].variables[0]
    if parent.dimension:
        return parent
    tags = {raw: tag for raw, _, tag in LISTS[parent.list]}
    return ITEMS_BY_ID[int(tags[parent.value])].variables[0]


def dimension_and_unit(item, variable):
    shown = carrier(item, variable)
    if not shown.dimension:
        return SELECTOR_DIMENSION, 1
    return DIMENSION_IDS[shown.dimension], unit_id(shown.dimension, shown.unit)


def item_file():
    out = SettingsFile()
    out.header("Items", len(ITEMS))
    for n, item in enumerate(ITEMS, start=1):
        by_meaning = any(variable.list for variable in item.variables)
        length = sum(variable.data_type[1] for variable in item.variables)
        kind = item.kind
        settings = record(item.id, item.id, flag(by_meaning), kind["access"], flag(kind["historian"]),
                          flag(kind["restore"]), kind["wait"], length)
        out.section(f"ITEM{n}", Count=len(item.variables), Settings=settings)
        for j, variable in enumerate(item.variables, start=1):
            dimension, unit = dimension_and_unit(item, variable)
            out.value(f"VAR{j}", record(
                j, variable.caption, variable.description, variable.parent, dimension, unit,
                variable.decimals, "", LIST_IDS.get(variable.list, 0), variable.data_type[0], ""))
    return out.lines


def version_file():
    out = SettingsFile()
    out.header("Versions", len(VERSIONS))
    for n, version in enumerate(VERSIONS, start=1):
        hidden = OLD_ITEMS | set(version.missing)
        visible = [item.id for item in ITEMS if item.id not in hidden]
        out.section(f"Version{n}", Name=version.name, Count=len(visible), ItemCount=len(visible))
        for j, item_id in enumerate(visible, start=1):
            out.value(f"Item{j}", f"{item_id}|{version.stored_as.get(item_id, item_id)}")
    return out.lines


def dimension_file():
    out = SettingsFile()
    out.header("Dimensions", len(DIMENSIONS))
    for n, (caption, units) in enumerate(DIMENSIONS.items(), start=1):
        out.section(f"DIM{n}", Caption=caption, Count=len(units))
        for m, (unit, slope, offset) in enumerate(units, start=1):
            out.value(f"UNIT{m}", record(unit, number_text(slope), number_text(offset)))
    return out.lines


def list_file():
    out = SettingsFile()
    out.header("Lists", len(LISTS))
    for n, (caption, members) in enumerate(LISTS.items(), start=1):
        out.section(f"LIST{n}", Caption=caption, Count=len(members))
        for j, (raw, text, tag) in enumerate(members, start=1):
            out.value(f"ITEM{j}", record(raw, text, raw if tag is None else tag))
    return out.lines


def values_file():
    return [f"{item.id}|{j}|{variable.value}"
            for item in ITEMS
            for j, variable in enumerate(item.variables, start=1)
            if variable.value is not None]


def main():
    folder = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).parent
    for extension, make in (("itm", item_file), ("ver", version_file), ("dim", dimension_file),
                            ("lst", list_file), ("val", values_file)):
        text = "".join(line + "\r\n" for line in make())
        (folder / f"fluxor.{extension}").write_bytes(text.encode("cp1252"))


if __name__ == "__main__":
    main()
