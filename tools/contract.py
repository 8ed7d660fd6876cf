# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Reads the published contract, an IDL file, into plain Python objects.

Everything that is made of the contract besides the type library starts here: the reference, the
manifest, the dispatch tables, the help texts of enumeration values, the bindings of other languages.
"""

import re
import subprocess
from dataclasses import dataclass, field
from pathlib import Path

CONTRACT = Path(__file__).resolve().parent.parent / "typelib" / "pvItems32.idl"

TOKEN = re.compile(
    r"""\s*(?: (?P<text>"(?:[^"\\]|\\.)*")
             | (?P<uuid>[0-9A-Fa-f]{8}(?:-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12})
             | (?P<word>[A-Za-z_]\w*)
             | (?P<number>-?(?:0[xX][0-9A-Fa-f]+|\d+(?:\.\d+)?))
             | (?P<mark>[][(){}*,;:=]))""",
    re.VERBOSE,
)


@dataclass
class Parameter:
    name: str
    type: str  # without its pointers
    pointers: int
    attributes: dict

    @property
    def is_result(self):
        return "retval" in self.attributes

    @property
    def is_by_reference(self):
        """The callee may change it. An input pointer is an object."""
        return "out" in self.attributes and not self.is_result

    @property
    def is_optional(self):
        return "optional" in self.attributes

    @property
    def default(self):
        return self.attributes.get("defaultvalue")


@dataclass
class Member:
    name: str
    kind: str  # method, propget, propput or propputref
    id: int
    help: str
    is_restricted: bool
    parameters: list  # without the result

    result: Parameter = None


@dataclass
class Interface:
    name: str
    uuid: str
    help: str
    is_source: bool  # events: a dispinterface
    members: list


@dataclass
class Value:
    name: str
    number: int
    help: str


@dataclass
class Enumeration:
    name: str
    uuid: str
    help: str
    values: list


@dataclass
class CoClass:
    name: str
    uuid: str
    help: str
    interface: str
    source: str = None


@dataclass
class Contract:
    name: str
    uuid: str
    version: str
    help: str
    enumerations: list = field(default_factory=list)
    interfaces: list = field(default_factory=list)  # in order, those of events among them
    classes: list = field(default_factory=list)


def grouped(members):
    """A property and its setters become one entry, in the order of the contract."""
    entries = {}
    for member in members:
        entries.setdefault((member.name, member.kind == "method"), []).append(member)
    return list(entries.values())


def expanded(path):
    """The file after its macros; enumeration values keep their help texts (__midl)."""
    source = "\n".join(line for line in path.read_text(encoding="utf-8").splitlines()
                       if not line.startswith("import "))
    return subprocess.run(["cpp", "-P", "-D__midl", "-"], input=source, capture_output=True,
                          text=True, check=True).stdout


def tokens_of(text):
    position, text = 0, text.rstrip()
    while position < len(text):
        found = TOKEN.match(text, position)
        if not found:
            raise ValueError("not understood: " + text[position:position + 40].strip())
        yield found[found.lastgroup]
        position = found.end()


def unquoted(text):
    return re.sub(r"\\(.)", r"\1", text[1:-1])


def number_of(words):
    return int("".join(words).strip("()"), 0)


class Parser:
    """Recursive descent: one method for each thing that the contract declares."""

    def __init__(self, text):
        self.tokens = list(tokens_of(text))
        self.position = 0

    def peek(self):
        return self.tokens[self.position]

    def take(self, *expected):
        token = self.peek()
        if expected and token not in expected:
            raise ValueError(f"found {token}, expected {' or '.join(expected)}")
        self.position += 1
        return token

    def taken(self, token):
        if self.peek() != token:
            return False
        self.position += 1
        return True

    def separated(self, read, end):
        """What `read` gives, up to the end, with commas between."""
        found = []
        while not self.taken(end):
            found.append(read())
            if self.peek() != end:
                self.take(",")
        return found

    def attributes(self):
        return dict(self.separated(self.attribute, "]")) if self.taken("[") else {}

    def attribute(self):
        """A name with the text of its value, True when it has none."""
        name = self.take()
        if not self.taken("("):
            return name, True
        words, depth = [], 1
        while depth:
            words.append(self.take())
            depth += {"(": 1, ")": -1}.get(words[-1], 0)
        text = "".join(words[:-1])
        return name, unquoted(text) if name == "helpstring" else text

    def library(self):
        attributes = self.attributes()
        self.take("library")
        contract = Contract(self.take(), attributes["uuid"], attributes["version"],
                            attributes["helpstring"])
        self.take("{")
        while not self.taken("}"):
            self.declaration(contract)
        return contract

    def declaration(self, contract):
        attributes = self.attributes()
        kind = self.take("importlib", "typedef", "interface", "dispinterface", "coclass")
        if kind == "importlib":
            self.skip_to(";")
        elif kind == "typedef":
            contract.enumerations.append(self.enumeration())
        elif kind == "coclass":
            contract.classes.append(self.coclass(attributes))
        else:
            name = self.take()
            if not self.taken(";"):  # that would be its announcement
                contract.interfaces.append(self.interface(name, attributes, kind))

    def skip_to(self, token):
        while self.take() != token:
            pass

    def enumeration(self):
        attributes = self.attributes()
        self.take("enum")
        name = self.take()
        self.take("{")
        values = self.separated(self.value, "}")
        self.take(name)
        self.take(";")
        return Enumeration(name, attributes["uuid"], attributes.get("helpstring", ""), values)

    def value(self):
        attributes = self.attributes()
        name = self.take()
        self.take("=")
        return Value(name, number_of([self.take()]), attributes.get("helpstring", ""))

    def interface(self, name, attributes, kind):
        is_source = kind == "dispinterface"
        if is_source:
            self.take("{")
            for label in ("properties", "methods"):
                self.take(label)
                self.take(":")
        else:
            self.take(":")
            self.take("IDispatch")
            self.take("{")
        members = []
        while not self.taken("}"):
            members.append(self.member())
        return Interface(name, attributes["uuid"], attributes.get("helpstring", ""), is_source, members)

    def member(self):
        attributes = self.attributes()
        self.take("HRESULT", "void")
        name = self.take()
        self.take("(")
        parameters = self.separated(self.parameter, ")")
        self.take(";")
        kinds = [kind for kind in ("propget", "propput", "propputref") if kind in attributes]
        return Member(
            name, kinds[0] if kinds else "method", number_of([attributes["id"]]),
            attributes.get("helpstring", ""), "restricted" in attributes,
            [parameter for parameter in parameters if not parameter.is_result],
            next((parameter for parameter in parameters if parameter.is_result), None))

    def parameter(self):
        attributes = self.attributes()
        words, pointers = [], 0
        while self.peek() not in (",", ")"):
            if self.taken("*"):
                pointers += 1
            else:
                words.append(self.take())
        return Parameter(words[-1], " ".join(words[:-1]), pointers, attributes)

    def coclass(self, attributes):
        found = CoClass(self.take(), attributes["uuid"], attributes.get("helpstring", ""), None)
        self.take("{")
        while not self.taken("}"):
            role = self.attributes()
            self.take("interface", "dispinterface")
            if "source" in role:
                found.source = self.take()
            else:
                found.interface = self.take()
            self.take(";")
        return found


def read(path=CONTRACT):
    return Parser(expanded(Path(path))).library()
