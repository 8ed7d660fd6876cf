# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""What the type library declares, read from its dump, which the ABI tests compare with the library."""

import re
from dataclasses import dataclass, field
from pathlib import Path

DUMP = Path(__file__).resolve().parent.parent / "abi" / "pvItems32.golden.txt"


@dataclass
class Argument:
    flags: list
    type: str  # what is passed, without the pointer of results and changed arguments
    name: str
    default: str  # None without one

    @property
    def changes(self):
        return "out" in self.flags and "retval" not in self.flags


@dataclass
class Member:
    id: int
    kind: str  # call, get, put, putref
    name: str
    arguments: list = field(default_factory=list)
    result: Argument = None


@dataclass
class Declared:
    kind: str  # interface, enum or class
    name: str
    uuid: str
    members: list = field(default_factory=list)
    values: dict = field(default_factory=dict)
    interface: str = None
    source: str = None

    @property
    def is_source(self):
        return self.kind == "interface" and self.name.startswith("__")


def default_of(text):
    """A number, Boolean or null as the number, a text in its quotes."""
    if text is None:
        return None
    return re.sub(r"^(Boolean|object) | \(type \d+\)$", "", text)


def argument_of(line):
    flags, kind, name, default = re.fullmatch(
        r"\[([a-z,]+)\] ((?:unsigned )?\w+\**) ?(\w*)(?: = (.*))?", line).groups()
    flags = flags.split(",")
    if "out" in flags:
        kind = kind[:-1]
    return Argument(flags, kind.rstrip("*"), name, default_of(default))


def read_line(declared, line):
    if declared.kind == "enum":
        name, value = re.fullmatch(r"(\w+) = (-?\d+) .*", line).groups()
        declared.values[name] = int(value)
    elif declared.kind == "class":
        words = line.split()
        if "source" in words:
            declared.source = words[-1]
        else:
            declared.interface = words[-1]
    elif line.startswith("["):
        argument = argument_of(line)
        if "retval" in argument.flags:
            declared.members[-1].result = argument
        else:
            declared.members[-1].arguments.append(argument)
    else:
        number, kind, _, name = line.split()[:4]
        declared.members.append(Member(int(number), kind, name))


def read():
    library = []
    for line in DUMP.read_text(encoding="utf-8").splitlines():
        head = re.match(r"(interface|enum|class) (\w+) (\{.*?\})", line)
        if head:
            library.append(Declared(*head.groups()))
        elif line.startswith("  "):
            read_line(library[-1], line.strip())
    return library
