# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""The help contexts of the contract: the number that the help file knows a topic by.

Those of types are listed. A class shares its own with its default interface. A member has that of
its type, plus 10, plus its dispatch id, and an enumeration value that of its enumeration, plus 10,
plus the value: what the contract never changes decides, not the order of anything.
"""

from dataclasses import dataclass
from pathlib import Path

import contract

HELP_FILE = "pvItems32.chm"
LISTED = contract.CONTRACT.with_name("help_topics.txt")
FIRST_MEMBER = 10  # dispatch ids and values may be a little below zero


@dataclass
class Topic:
    """`type` is the library itself, a class, an event interface or an enumeration; `member` one of
    its members, of which a getter and its setters share their topic, or values, or None."""

    number: int
    type: object
    member: object = None


def listed_numbers(path):
    lines = (line.split() for line in Path(path).read_text(encoding="utf-8").splitlines())
    return {words[1]: int(words[0]) for words in lines if words and words[0] != "#"}


def members_by_type(declared):
    """Everything that has a number in the list, with its members or values."""
    interfaces = {interface.name: interface for interface in declared.interfaces}
    yield declared, []
    yield from ((known, known.values) for known in declared.enumerations)
    yield from ((known, interfaces[known.interface].members) for known in declared.classes)
    yield from ((known, known.members) for known in declared.interfaces if known.is_source)


def offset_of(member):
    return FIRST_MEMBER + (member.number if isinstance(member, contract.Value) else member.id)


def topics(declared, path=LISTED):
    """Every topic, by the name of its type and that of its member, if it is one's."""
    numbers, found = listed_numbers(path), {}
    for known, members in members_by_type(declared):
        if known.name not in numbers:
            raise ValueError(f"{known.name} has no help context in {path}")
        first = numbers.pop(known.name)
        found[known.name, None] = Topic(first, known)
        for member in members:
            found[known.name, member.name] = Topic(first + offset_of(member), known, member)
    if numbers:
        raise ValueError("not in the contract: " + ", ".join(numbers))
    if len({topic.number for topic in found.values()}) < len(found):
        raise ValueError("two topics have the same help context")
    return found
