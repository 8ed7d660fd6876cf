#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Writes docs/reference.md from the published contract, typelib/pvItems32.idl.

Usage: docs/make_reference.py [--check]     --check only tells whether the reference is current
"""

import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tools"))

import contract  # noqa: E402

REFERENCE = ROOT / "docs" / "reference.md"

TYPES = {
    "BSTR": "String", "VARIANT": "Variant", "VARIANT_BOOL": "Boolean", "short": "Integer (16 bit)",
    "long": "Integer (32 bit)", "float": "Single", "double": "Double", "DATE": "Date",
    "unsigned char": "Byte", "IDispatch": "Object", "IUnknown": "Object", "IPictureDisp": "Picture",
}


def type_name(parameter):
    name = parameter.type
    if name in TYPES:
        return TYPES[name]
    return name[1:] if name.startswith("_C") else name


def default_text(parameter):
    name, value = type_name(parameter), parameter.default
    if name == "Boolean":
        return "False" if value == "0" else "True"
    return "Nothing" if value == "0" and not name.startswith("Integer") else value


def parameter_text(parameter):
    text = "ByRef " if parameter.is_by_reference else ""
    text += f"{parameter.name} As {type_name(parameter)}"
    if parameter.default:
        text += f" = {default_text(parameter)}"
    return f"[{text}]" if parameter.is_optional else text


def signature(kinds):
    first = kinds[0]
    parameters, result = first.parameters, first.result
    if first.kind.startswith("propput"):
        *parameters, result = parameters
    text = first.name
    if parameters:
        text += "(" + ", ".join(parameter_text(parameter) for parameter in parameters) + ")"
    elif first.kind == "method":
        text += "()"
    return text + (f" As {type_name(result)}" if result else "")


def access(kinds):
    names = {kind.kind for kind in kinds}
    if names == {"method"}:
        return "method"
    words = []
    if "propget" in names:
        words.append("get")
    if "propput" in names:
        words.append("let")
    if "propputref" in names:
        words.append("set")
    return ", ".join(words)


def escaped(text):
    return text.replace("|", "\\|")


def member_table(members, with_access=True):
    lines = ["| Member | | What it does |", "|---|---|---|"] if with_access else [
        "| Event | Number | When |", "|---|---|---|"]
    for kinds in contract.grouped(members):
        identifier = kinds[0].id
        middle = access(kinds) if with_access else identifier
        if with_access and identifier == 0:
            middle += "; default"
        lines.append(f"| `{escaped(signature(kinds))}` | {middle} | {escaped(kinds[0].help)} |")
    return lines


def event_table(source):
    if not source.members:
        return ["", f"Its source interface `{source.name}` has no events."]
    return ["", f"Events (`{source.name}`):", "", *member_table(source.members, with_access=False)]


def by_name(declarations):
    return sorted(declarations, key=lambda declared: declared.name.lower())


def reference():
    declared = contract.read()
    interfaces = {interface.name: interface for interface in declared.interfaces}
    lines = ["# Reference", "",
             "Generated from `typelib/pvItems32.idl` by `docs/make_reference.py`; change the help texts there.",
             "", "Types are named as Basic hosts know them. Arguments in brackets may be left out. `ByRef` arguments may be"
             " changed by the member.", "", "## Classes", "", "| Class | |", "|---|---|"]
    lines += [f"| [{known.name}](#{known.name.lower()}) | {known.help} |"
              for known in by_name(declared.classes)]
    for known in by_name(declared.classes):
        lines += ["", f"### {known.name}", "",
                  f"{known.help} ProgID `pvItems32.{known.name}`, class `{{{known.uuid}}}`.", "",
                  *member_table(interfaces[known.interface].members)]
        if known.source:
            lines += event_table(interfaces[known.source])
    lines += ["", "## Enumerations"]
    for known in by_name(declared.enumerations):
        lines += ["", f"### {known.name}", "", known.help, "", "| Name | Value | Meaning |",
                  "|---|---|---|"]
        lines += [f"| `{value.name}` | {value.number} | {escaped(value.help)} |" for value in known.values]
    return "\n".join(lines) + "\n"


def main():
    text = reference()
    if "--check" in sys.argv[1:]:
        if not REFERENCE.exists() or REFERENCE.read_text(encoding="utf-8") != text:
            sys.exit("docs/reference.md is not current: run docs/make_reference.py")
        return
    REFERENCE.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
