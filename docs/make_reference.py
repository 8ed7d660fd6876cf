#!/usr/bin/env python3
"""Writes docs/reference.md from the published contract, typelib/pvItems32.idl.

Usage: docs/make_reference.py [--check]     --check only tells whether the reference is current
"""

import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
CONTRACT = ROOT / "typelib" / "pvItems32.idl"
REFERENCE = ROOT / "docs" / "reference.md"

TYPES = {
    "BSTR": "String", "VARIANT": "Variant", "VARIANT_BOOL": "Boolean", "short": "Integer (16 bit)",
    "long": "Integer (32 bit)", "float": "Single", "double": "Double", "DATE": "Date",
    "unsigned char": "Byte", "IDispatch": "Object", "IUnknown": "Object", "IPictureDisp": "Picture",
}
TEXT = r'"((?:[^"\\]|\\.)*)"'


def expanded_contract():
    """The contract after its macros; enumeration values keep their help texts (__midl)."""
    source = "\n".join(line for line in CONTRACT.read_text(encoding="utf-8").splitlines()
                       if not line.startswith("import "))
    result = subprocess.run(["cpp", "-P", "-D__midl", "-"], input=source, capture_output=True,
                            text=True, check=True)
    return result.stdout


def type_name(text):
    name = text.replace("*", "").strip()
    if name in TYPES:
        return TYPES[name]
    return name[1:] if name.startswith("_C") else name


def help_text(attributes):
    found = re.search(r"helpstring\(" + TEXT + r"\)", attributes)
    return found.group(1) if found else ""


def split_parameters(text):
    """The parameters of a member: at commas outside of brackets and texts."""
    parts, depth, quoted, current = [], 0, False, ""
    for character in text:
        if character == '"':
            quoted = not quoted
        if not quoted and character in "([":
            depth += 1
        if not quoted and character in ")]":
            depth -= 1
        if character == "," and depth == 0 and not quoted:
            parts.append(current)
            current = ""
        else:
            current += character
    return [part.strip() for part in parts + [current] if part.strip()]


class Parameter:
    def __init__(self, text):
        self.attributes, rest = re.match(r"\[(.*?)\]\s*(.*)$", text, re.S).groups()
        kind, self.name = re.match(r"(.*?)([A-Za-z_]\w*)$", rest.strip(), re.S).groups()
        self.type = type_name(kind)

    @property
    def is_result(self):
        return "retval" in self.attributes

    def text(self):
        text = self.name
        if "out" in self.attributes:
            text = "ByRef " + text
        text += f" As {self.type}"
        default = re.search(r"defaultvalue\((.*)\)", self.attributes)
        if default:
            text += f" = {self.default(default.group(1))}"
        return f"[{text}]" if "optional" in self.attributes else text

    def default(self, value):
        if self.type == "Boolean":
            return "False" if value == "0" else "True"
        return "Nothing" if value == "0" and not self.type.startswith("Integer") else value


class Member:
    def __init__(self, attributes, name, parameters):
        self.name, self.help = name, help_text(attributes)
        self.id = re.search(r"\bid\((.*?)\)[,\s]", attributes + " ").group(1).strip("()")
        kinds = re.findall(r"\b(propget|propputref|propput)\b", attributes)
        self.kind = kinds[0] if kinds else "method"
        parsed = [Parameter(text) for text in split_parameters(parameters)]
        self.result = next((p.type for p in parsed if p.is_result), None)
        self.parameters = [p for p in parsed if not p.is_result]


def members_of(body):
    pattern = r"\[((?:[^\[\]\"]|" + TEXT + r")*)\]\s*(?:HRESULT|void)\s+(\w+)\s*\((.*?)\)\s*;"
    return [Member(m.group(1), m.group(3), m.group(4)) for m in re.finditer(pattern, body, re.S)]


def as_one(members):
    """A property and its setters become one entry, in the order of the contract."""
    entries = {}
    for member in members:
        entries.setdefault((member.name, member.kind == "method"), []).append(member)
    return entries.values()


def signature(kinds):
    first = kinds[0]
    parameters = first.parameters
    kind_of_result = first.result
    if first.kind.startswith("propput"):
        kind_of_result = parameters[-1].type
        parameters = parameters[:-1]
    text = first.name
    if parameters:
        text += "(" + ", ".join(p.text() for p in parameters) + ")"
    elif first.kind == "method":
        text += "()"
    return text + (f" As {kind_of_result}" if kind_of_result else "")


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


def member_table(body, with_access=True):
    lines = ["| Member | | What it does |", "|---|---|---|"] if with_access else [
        "| Event | Number | When |", "|---|---|---|"]
    for kinds in as_one(members_of(body)):
        identifier = kinds[0].id
        middle = access(kinds) if with_access else identifier
        if with_access and identifier == "0":
            middle += "; default"
        lines.append(f"| `{escaped(signature(kinds))}` | {middle} | {escaped(kinds[0].help)} |")
    return lines


def enumerations(contract):
    for attributes, body, name in re.findall(
            r"typedef\s*\[(.*?)\]\s*enum\s+\w+\s*\{(.*?)\}\s*(\w+);", contract, re.S):
        values = re.findall(r"\[helpstring\(" + TEXT + r"\)\]\s*(\w+)\s*=\s*(-?\w+)", body)
        yield name, help_text(attributes), values


def interfaces(contract, keyword):
    pattern = (r"\[((?:[^\[\]\"]|" + TEXT + r")*)\]\s*" + keyword
               + r"\s+(\w+)[^{;]*\{(.*?)\n\s*\}")
    return {m.group(3): (help_text(m.group(1)), m.group(4))
            for m in re.finditer(pattern, contract, re.S)}


def classes(contract):
    pattern = r"\[uuid\(([-0-9A-F]+)\),\s*helpstring\(" + TEXT + r"\)\]\s*coclass\s+(\w+)\s*\{(.*?)\}"
    for clsid, text, name, body in re.findall(pattern, contract, re.S):
        yield name, clsid, text, re.findall(r"(?:dispinterface|interface)\s+(\w+);", body)


def reference():
    contract = expanded_contract()
    duals = interfaces(contract, r"(?<!disp)interface")
    events = interfaces(contract, "dispinterface")
    lines = ["# Reference", "",
             "Generated from `typelib/pvItems32.idl` by `docs/make_reference.py`; change the help texts there.",
             "", "Types are named as Basic hosts know them. Arguments in brackets may be left out. `ByRef` arguments may be"
             " changed by the member.", "", "## Classes", ""]
    known = sorted(classes(contract), key=lambda entry: entry[0].lower())
    lines += ["| Class | |", "|---|---|"]
    lines += [f"| [{name}](#{name.lower()}) | {text} |" for name, _, text, _ in known]
    for name, clsid, text, implemented in known:
        lines += ["", f"### {name}", "", f"{text} ProgID `pvItems32.{name}`, class `{{{clsid}}}`.", ""]
        for interface in implemented:
            if interface in duals:
                lines += member_table(duals[interface][1])
            elif members_of(events[interface][1]):
                lines += ["", f"Events (`{interface}`):", ""]
                lines += member_table(events[interface][1], with_access=False)
            else:
                lines += ["", f"Its source interface `{interface}` has no events."]
    lines += ["", "## Enumerations"]
    for name, text, values in sorted(enumerations(contract), key=lambda entry: entry[0].lower()):
        lines += ["", f"### {name}", "", text, "", "| Name | Value | Meaning |", "|---|---|---|"]
        lines += [f"| `{value_name}` | {value} | {escaped(meaning)} |"
                  for meaning, value_name, value in values]
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
