#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Compares bindings with the type library: compare.py csharp <dump of the assembly>, or
pascal, python, python-calls or basic <file>. Prints what differs."""

import difflib
import importlib.util
import inspect
import re
import sys
from pathlib import Path

import library

CSHARP = {
    "BSTR": "String", "VARIANT": "Object", "VARIANT_BOOL": "Boolean", "DATE": "DateTime",
    "short": "Int16", "long": "Int32", "unsigned char": "Byte", "float": "Single",
    "double": "Double", "IDispatch": "Object as IDispatch", "IPictureDisp": "Object as IDispatch",
}
PASCAL = {
    "BSTR": "WideString", "VARIANT": "OleVariant", "VARIANT_BOOL": "WordBool",
    "DATE": "TDateTime", "short": "Smallint", "long": "Integer", "unsigned char": "Byte",
    "float": "Single", "double": "Double", "IDispatch": "IDispatch", "IPictureDisp": "IDispatch",
    "IUnknown": "IUnknown",
}
NEW_ENUM = -4
FLAGS = {"call": 1, "get": 2, "put": 4, "putref": 8}


def blocks(lines):
    """The lines below each head, the heads in alphabetical order."""
    found = {}
    for line in lines:
        if not line.startswith("  "):
            head = line.rstrip()
            if head in found:
                raise ValueError(f"twice: {head}")
            found[head] = []
        else:
            found[head].append(line)
    return [line for head in sorted(found) for line in [head, *found[head]]]


def enumeration_blocks(declared):
    for enumeration in (known for known in declared if known.kind == "enum"):
        yield f"enum {enumeration.name}"
        yield from (f"  {name} = {value}" for name, value in enumeration.values.items())


# ---- C#

def csharp_default(argument):
    if "optional" not in argument.flags:
        return ""
    if argument.default is None:
        return "?"
    if argument.type == "VARIANT_BOOL":
        return "? = " + ("False" if argument.default == "0" else "True")
    if argument.type == "IDispatch" or argument.type.startswith("_C"):
        return "? = null"
    return "? = " + argument.default


def csharp_member(member, earlier):
    if member.id == NEW_ENUM:
        return "  -4 GetEnumerator(): IEnumerator as CustomMarshaler"
    arguments = []
    for argument in member.arguments:
        kind = CSHARP.get(argument.type, argument.type) + ("&" if argument.changes else "")
        arguments.append(f"{kind} {argument.name}{csharp_default(argument)}".strip())
    second = member.kind == "putref" and (member.id, "put") in earlier
    prefix = {"call": "", "get": "get_"}.get(member.kind, "setref_" if second else "set_")
    result = CSHARP.get(member.result.type, member.result.type) if member.result else "Void"
    return f"  {member.id} {prefix}{member.name}({', '.join(arguments)}): {result}"


def csharp_blocks(declared):
    for known in declared:
        if known.kind == "enum":
            yield f"enum {known.name} {known.uuid}"
            yield from (f"  {name} = {value}" for name, value in known.values.items())
        elif known.kind == "class":
            source = f" pvItems32.{known.source}" if known.source else ""
            yield f"class {known.name} {known.uuid} {known.interface} same{source}"
        else:
            kind = "InterfaceIsIDispatch" if known.is_source else "InterfaceIsDual"
            yield f"interface {known.name} {known.uuid} {kind}"
            earlier = set()
            for member in known.members:
                yield csharp_member(member, earlier)
                earlier.add((member.id, member.kind))


def csharp_found(path):
    """The value that a setter takes has no name in the type library."""
    return [re.sub(r" [vV]alue\):", "):", line) if "set" in line else line
            for line in path.read_text(encoding="utf-8").splitlines()]


# ---- Pascal

def pascal_routine(member):
    prefix = {"call": "", "get": "Get_", "put": "Set_", "putref": "SetRef_"}[member.kind]
    arguments = [
        f"{PASCAL.get(argument.type, argument.type)}{'&' if argument.changes else ''} {argument.name}"
        for argument in member.arguments]
    result = f": {PASCAL.get(member.result.type, member.result.type)}" if member.result else ""
    return f"  {prefix}{member.name}({', '.join(map(str.strip, arguments))}){result}"


def pascal_blocks(declared):
    yield from enumeration_blocks(declared)
    for known in declared:
        if known.kind == "class":
            yield f"class {known.name} {known.uuid} {known.interface}"
        elif known.kind == "interface":
            if not known.is_source:
                yield f"interface {known.name} {known.uuid}"
                yield from map(pascal_routine, known.members)
            yield f"dispinterface {known.name} {known.uuid}"
            names = dict.fromkeys((member.id, member.name) for member in known.members)
            yield from (f"  {number} {name}" for number, name in names)


def pascal_argument(text):
    name, kind = text.split(": ")
    changes = "&" if name.startswith("var ") else ""
    return f"{kind}{changes} {name.split()[-1].rstrip('_')}"


def pascal_interface(name, uuid, body):
    yield f"interface {name} {{{uuid}}}"
    for routine, arguments, result in re.findall(
            r"^ +(?:function|procedure) (\w+)(?:\((.*)\))?(: \w+)?; safecall;$", body, re.M):
        found = [pascal_argument(text) for text in arguments.split("; ")] if arguments else []
        if routine.startswith("Set"):
            found[-1] = found[-1].split()[0]
        yield f"  {routine.rstrip('_')}({', '.join(found)}){result}"


def pascal_found(path):
    text = path.read_text(encoding="utf-8")
    for name, values in re.findall(r"^  (\w+) = TOleEnum;\nconst\n((?:  .*\n)+)", text, re.M):
        yield f"enum {name}"
        yield from (f"  {value}" for value in re.findall(r"^  (\w+ = -?\d+);", values, re.M))
    made = dict(re.findall(r"CoCreate|class function Co(\w+)\.Create: (\w+);", text))
    for name, uuid in re.findall(r"^  CLASS_(\w+): TGUID = '(.*)';$", text, re.M):
        yield f"class {name} {uuid} {made[name]}"
    for name, kind, uuid, body in re.findall(
            r"^  (\w+) = (interface\(IDispatch\)|dispinterface)\n    \['\{([-0-9A-F]+)\}'\]\n(.*?)^  end;", text,
            re.M | re.S):
        if kind != "dispinterface":
            yield from pascal_interface(name, uuid, body)
            continue
        yield f"dispinterface {name.removesuffix('Disp')} {{{uuid}}}"
        yield from (f"  {number} {member.rstrip('_')}" for member, number in re.findall(
            r"^ +(?:property|function|procedure) (\w+).* dispid (-?\d+);", body, re.M))


# ---- Python

def loaded(path):
    spec = importlib.util.spec_from_file_location("pvItems32", path)
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


def python_blocks(declared):
    yield from enumeration_blocks(declared)
    interfaces = {known.name: known for known in declared if known.kind == "interface"}
    for known in (known for known in declared if known.kind == "class"):
        yield f"class {known.name} {known.uuid} {interfaces[known.interface].uuid}"
        if known.source:
            source = interfaces[known.source]
            yield f"  events {source.uuid}"
            yield from (f"  {member.id} {member.name}" for member in source.members)


def python_found(path):
    module = loaded(path)
    for name, known in vars(module).items():
        if not inspect.isclass(known) or known.__module__ != "pvItems32":
            continue
        if issubclass(known, module.enum.IntEnum):
            yield f"enum {name}"
            yield from (f"  {value} = {number.value}" for value, number in known.__members__.items())
        elif getattr(known, "CLSID", None):
            yield f"class {name} {known.CLSID} {known.IID}"
            if hasattr(known, "EVENTS"):
                yield f"  events {known.EVENTS_IID}"
                yield from (f"  {number} {event}" for event, number in known.EVENTS.items())


class StandIn:
    """Takes the calls of the module in place of a package for automation."""

    missing = "missing"

    def __init__(self):
        self.calls = []

    def create(self, clsid):
        return clsid

    def invoke(self, *call):
        self.calls.append(call)


def call_python(made, member, is_second):
    """Calls one member; each argument is its position."""
    given = list(range(len(member.arguments)))
    known = getattr(type(made), member.name, None)
    if member.kind == "call" or member.kind == "get" and known and not isinstance(known, property):
        getattr(made, member.name)(*given)
    elif member.kind == "get":
        getattr(made, f"get_{member.name}")(*given) if given else getattr(made, member.name)
    elif is_second or known is None:
        setter = "setref_" if member.kind == "putref" else "set_"
        getattr(made, setter + member.name)(*given[-1:], *given[:-1])
    else:
        setattr(made, member.name, *given)


def python_call_blocks(declared):
    interfaces = {known.name: known for known in declared if known.kind == "interface"}
    for known in (known for known in declared if known.kind == "class"):
        yield f"class {known.name}"
        for member in interfaces[known.interface].members:
            arguments = list(range(len(member.arguments)))
            yield f"  {member.name} {(known.uuid, member.id, FLAGS[member.kind], arguments)}"


def python_calls(path):
    module, package = loaded(path), StandIn()
    module.use(package)
    declared = library.read()
    interfaces = {known.name: known for known in declared if known.kind == "interface"}
    for known in (known for known in declared if known.kind == "class"):
        yield f"class {known.name}"
        made, earlier = getattr(module, known.name).create(), set()
        for member in interfaces[known.interface].members:
            call_python(made, member, (member.id, "put") in earlier)
            earlier.add((member.id, member.kind))
            yield f"  {member.name} {package.calls.pop()}"


# ---- Basic

def basic_found(path):
    for line in path.read_text(encoding="utf-8").splitlines():
        head = re.match(r"Public Enum (\w+)", line)
        value = re.match(r"    (\w+ = -?\d+)  '", line)
        if head:
            yield f"enum {head[1]}"
        elif value:
            yield f"  {value[1]}"


COMPARED = {
    "csharp": (csharp_blocks, csharp_found),
    "pascal": (pascal_blocks, pascal_found),
    "python": (python_blocks, python_found),
    "python-calls": (python_call_blocks, python_calls),
    "basic": (enumeration_blocks, basic_found),
}


def main():
    expected, found = COMPARED[sys.argv[1]]
    expected, found = blocks(expected(library.read())), blocks(found(Path(sys.argv[2])))
    differences = list(difflib.unified_diff(expected, found, "type library", sys.argv[2], n=1,
                                            lineterm=""))
    print("\n".join(differences[:60]) or f"{len(found)} lines compared")
    return bool(differences)


if __name__ == "__main__":
    sys.exit(main())
