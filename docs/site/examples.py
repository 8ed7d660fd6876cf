# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Reads the pages of docs/examples, one for each class, whose examples stand in the reference and are
run by the tests.

A page has a text on the class, a section "Notes" with units and errors of members, and sections that
are named after the members which they show:

    # CUnit
    What the class is for.
    ## Notes
    - `Slope`: what a caller has to know besides the help text.
    ## Key, Caption
    A block in VBScript, one in C++, and the text that both print.

The blocks of a page in one language are one program. A block that says "not run" behind its language
is shown, and compiled where that language is.
"""

import re
from dataclasses import dataclass, field
from pathlib import Path

FOLDER = Path(__file__).resolve().parent.parent / "examples"
NOTES = "Notes"
SHARED = "collections"  # notes on what all collections have

BLOCK = re.compile(r"^```(.*)\n((?:.*\n)*?)```$", re.MULTILINE)
NOTE = re.compile(r"^- `(\w+)`: (.+)$", re.MULTILINE)


@dataclass
class Section:
    title: str
    text: str  # with its blocks

    @property
    def members(self):
        return [name.strip() for name in self.title.split(",")]

    def blocks(self):
        """Pairs of what stands behind the fence and the lines inside."""
        return BLOCK.findall(self.text)

    def code(self, language, is_run=True):
        wanted = language if is_run else language + " not run"
        return "".join(lines for info, lines in self.blocks() if info == wanted)

    @property
    def output(self):
        return self.code("text")


@dataclass
class Page:
    name: str
    text: str = ""
    notes: dict = field(default_factory=dict)
    sections: list = field(default_factory=list)

    def sections_on(self, member):
        return [section for section in self.sections if member in section.members]


def read(name):
    path = FOLDER / (name + ".md")
    page = Page(name)
    if not path.exists():
        return page
    text, *parts = re.split(r"^## ", path.read_text(encoding="utf-8"), flags=re.MULTILINE)
    page.text = re.sub(r"^# .*\n", "", text).strip()
    for part in parts:
        title, _, body = part.partition("\n")
        if title == NOTES:
            page.notes = dict(NOTE.findall(body))
        else:
            page.sections.append(Section(title.strip(), body.strip() + "\n"))
    return page
