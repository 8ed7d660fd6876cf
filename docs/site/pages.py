#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Writes the sources of the reference site: a page for each class of the contract, one with the
enumerations, and beside them the guides, in the folders in which the project has them.

Usage: docs/site/pages.py <folder>
"""

import re
import shutil
import subprocess
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
sys.path[:0] = [str(ROOT / "docs"), str(ROOT / "tools"), str(HERE)]

import contract  # noqa: E402
import examples  # noqa: E402
from make_reference import (access, by_name, default_text, escaped, parameter_text,  # noqa: E402
                            signature, type_name)
from picture import picture  # noqa: E402

GUIDES = ["README.md", "CHANGELOG.md", "CONTRIBUTING.md", "SECURITY.md", "docs/*.md", "examples/*README.md"]
NOT_GUIDES = ("docs/examples/", "docs/site/", "docs/reference.md")

HOSTS = "docs/hosts/"
GUIDES_IN_ORDER = ["docs/using", "docs/installing", "docs/server_contract", "docs/dialogs", "docs/symbols", "docs/performance"]

INDEX = """# pvItems32 {version}

{help}.

- **First steps**: [using the library](docs/using.md), and a page for [each host language](docs/hosts/README.md).
- **Reference**: [all classes](docs/reference.md), [enumerations](docs/enumerations.md), every name in the {{ref}}`index <genindex>`.
- **For those who write transmitter servers**: [the contract with a server](docs/server_contract.md).

```{{toctree}}
:hidden:
:caption: Guides

{guides}
```

```{{toctree}}
:hidden:
:glob:
:caption: Hosts

docs/hosts/README
docs/hosts/*
```

```{{toctree}}
:hidden:
:caption: Reference

docs/reference
docs/enumerations
```

```{{toctree}}
:hidden:
:caption: Project

README
CHANGELOG
CONTRIBUTING
SECURITY
docs/architecture
docs/performance_notes
docs/performance_64
examples/data/README
examples/fluxor_server/README
examples/simulator/README
```
"""


class Reference:
    def __init__(self, declared):
        self.declared = declared
        self.interfaces = {interface.name: interface for interface in declared.interfaces}
        self.classes = by_name(declared.classes)
        self.class_names = {known.name for known in declared.classes}
        self.enumeration_names = {known.name for known in declared.enumerations}
        self.relations = [relation for known in self.classes for relation in self.relations_of(known)]

    def members(self, known):
        return list(contract.grouped(self.interfaces[known.interface].members))

    def events(self, known):
        return list(contract.grouped(self.interfaces[known.source].members)) if known.source else []

    # ---- who gives whom

    def relations_of(self, known):
        """The class, the class that it gives, and the member."""
        for kinds in self.members(known):
            result = kinds[0].result and type_name(kinds[0].result)
            if result in self.class_names and result != known.name:
                yield known.name, result, kinds[0].name

    def related(self, name, mine, other):
        found = {}
        for relation in self.relations:
            if relation[mine] == name:
                found.setdefault(relation[other], []).append(relation[2])
        return found

    def givers(self, name):
        return self.related(name, 1, 0)

    def given(self, name):
        return self.related(name, 0, 1)

    def relations_in_words(self, name):
        def listed(found):
            return ", ".join(f"[{other}]({other}.md) ({', '.join(members)})" for other, members in found.items())

        lines = []
        for what, found in (("Given by", self.givers(name)), ("Gives", self.given(name))):
            if found:
                lines.append(f"{what}: {listed(found)}.")
        return "\n\n".join(lines)

    # ---- members

    def type_link(self, parameter):
        name = type_name(parameter)
        if name in self.class_names:
            return f"[{name}]({name}.md)"
        if name in self.enumeration_names:
            return f"{{ref}}`{name} <{name}>`"
        return name

    def parameter_rows(self, parameters):
        lines = ["| Parameter | Type | |", "|---|---|---|"]
        for parameter in parameters:
            words = ["may be changed"] if parameter.is_by_reference else []
            if parameter.default:
                words.append(f"optional, default `{default_text(parameter)}`")
            elif parameter.is_optional:
                words.append("optional")
            lines.append(f"| `{parameter.name}` | {self.type_link(parameter)} | {escaped('; '.join(words))} |")
        return lines

    def member(self, known, kinds, page, kind=None):
        """`kind` is given for events."""
        first = kinds[0]
        parameters, result = list(first.parameters), first.result
        if first.kind.startswith("propput"):
            result = parameters.pop()
        words = [kind or access(kinds), f"number {first.id}"]
        if first.id == 0 and not kind:
            words.append("default member")
        label = f"{known.name}.{first.name}" + (".event" if kind else "")
        lines = [f"```{{index}} {first.name} ({known.name}{' event' if kind else ''})", "```", "",
                 f"({label})=", f"### {first.name}", "", "```{code-block} text", ":class: signature", signature(kinds), "```", "",
                 first.help + f" *({', '.join(words)})*", ""]
        if parameters:
            lines += [*self.parameter_rows(parameters), ""]
        if result:
            lines += [f"{'Returns' if first.kind == 'method' else 'Type'}: {self.type_link(result)}.", ""]
        if first.name in page.notes:
            lines += [page.notes[first.name], ""]
        if not kind:
            lines += [self.errors(parameters, kinds), ""]
        for section in page.sections_on(first.name):
            lines += [f"Example: {{ref}}`{section.title} <{self.label(known, section)}>`.", ""]
        return lines

    def errors(self, parameters, kinds):
        """What the types of the arguments bring about; the notes tell what else there is."""
        taken = list(parameters)
        if any(kind.kind.startswith("propput") for kind in kinds):
            taken.append(next(kind for kind in kinds if kind.kind.startswith("propput")).parameters[-1])
        names = {type_name(parameter) for parameter in taken}
        numbers = []
        if names - {"Variant"}:
            numbers.append("13 for an argument of a type that cannot be converted")
        if any(name.startswith(("Integer", "Byte", "Single", "Date")) or name in self.enumeration_names
               for name in names):
            numbers.append("6 for a number out of range")
        told = f"{'; '.join(numbers)}; " if numbers else ""
        return f"Errors: {told}what [every call](../reference.md#errors) may raise."

    @staticmethod
    def label(known, section):
        return f"{known.name}.example.{section.members[0]}"

    def page(self, known):
        page = examples.read(known.name)
        if any(kinds[0].name == "NewEnum" for kinds in self.members(known)):
            page.notes = examples.read(examples.SHARED).notes | page.notes
        lines = [f"```{{index}} {known.name}", "```", "", f"({known.name})=", f"# {known.name}", "", known.help, "",
                 f"ProgID `pvItems32.{known.name}`, class `{{{known.uuid}}}`, interface `{known.interface}`.", ""]
        lines += [page.text, ""] if page.text else []
        lines += ["```{only} not chm", "", picture(known.name, self.givers(known.name), self.given(known.name)),
                  "", "```", "", "```{only} chm", "", self.relations_in_words(known.name), "", "```", ""]
        lines += ["## Members", "", "| Member | What it does |", "|---|---|"]
        lines += [f"| {{ref}}`{kinds[0].name} <{known.name}.{kinds[0].name}>` | {escaped(kinds[0].help)} |"
                  for kinds in self.members(known)]
        lines += [""]
        for kinds in self.members(known):
            lines += self.member(known, kinds, page)
        if self.events(known):
            lines += ["## Events", "", f"Of the source interface `{known.source}`.", ""]
            for kinds in self.events(known):
                lines += self.member(known, kinds, page, "event")
        if page.sections:
            lines += ["## Examples", "", "Each language's blocks are one program, which the tests run. Paths: `C:\\data`"
                      " holds the files of `examples/data`. The C++ blocks are the body of a function; `create`, `get`"
                      " and `put` are those of `examples/fluxor_server/library.h`, `show` prints its arguments"
                      " (`docs/examples/example.h`).", ""]
        for section in page.sections:
            text = section.text.replace(" not run\n", "\n")
            lines += [f"({self.label(known, section)})=", f"### {section.title}", "", text]
        return "\n".join(lines)

    # ---- pages about all of them

    def overview(self):
        shown = {language: sum(self.is_shown(known, kinds, language) for known in self.classes
                               for kinds in self.members(known)) for language in ("vbscript", "cpp")}
        every = sum(len(self.members(known)) for known in self.classes)
        lines = ["# Reference", "", "Types are named as Basic hosts know them. Every class can be created by its ProgID,"
                 f" `pvItems32.<Class>`. Of the {every} members, {shown['vbscript']} are shown in an example in VBScript,"
                 f" {shown['cpp']} in one in C++; the tests run them, but what waits for a user or needs a device is"
                 " only compiled, and in VBScript only shown.",
                 "", "## Classes", "", "| Class | |", "|---|---|"]
        lines += [f"| [{known.name}](classes/{known.name}.md) | {known.help} |" for known in self.classes]
        lines += ["", "## Errors", "", (HERE / "errors.md").read_text(encoding="utf-8"), "",
                  "```{toctree}", ":hidden:", ""]
        lines += [f"classes/{known.name}" for known in self.classes]
        return "\n".join([*lines, "```", ""])

    @staticmethod
    def is_shown(known, kinds, language):
        return any(section.code(language) or section.code(language, is_run=False)
                   for section in examples.read(known.name).sections_on(kinds[0].name))

    def enumerations(self):
        lines = ["# Enumerations", ""]
        for known in by_name(self.declared.enumerations):
            lines += [f"```{{index}} {known.name}", "```", "", f"({known.name})=", f"## {known.name}", "", known.help,
                      "", "| Name | Value | Meaning |", "|---|---|---|"]
            lines += [f'| <span id="{value.name.lower()}">`{value.name}`</span> | {value.number} |'
                      f" {escaped(value.help)} |" for value in known.values]
            lines.append("")
        return "\n".join(lines)


def write(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")


def linked(text):
    """Links to files and folders of the project lead nowhere from the site, so only their words stay."""
    return re.sub(r"\[([^]]*)\]\((?!https?:|#)(?![^)]*\.md[#)])[^)]*\)", r"\1", text)


def copy_guides(folder):
    listed = subprocess.run(["git", "ls-files", *GUIDES], cwd=ROOT, capture_output=True, text=True, check=True)
    for name in listed.stdout.splitlines():
        if not name.startswith(NOT_GUIDES):
            write(folder / name, linked((ROOT / name).read_text(encoding="utf-8")))


def version():
    first = (line for line in (ROOT / "CMakeLists.txt").read_text().splitlines() if line.startswith("project("))
    return next(first).split("VERSION")[1].split()[0]


def main(folder):
    shutil.rmtree(folder, ignore_errors=True)
    reference = Reference(contract.read())
    copy_guides(folder)
    write(folder / "index.md", INDEX.format(version=version(), guides="\n".join(GUIDES_IN_ORDER), help=reference.declared.help.split(": ")[1].capitalize()))
    write(folder / "docs/reference.md", reference.overview())
    write(folder / "docs/enumerations.md", reference.enumerations())
    for known in reference.classes:
        write(folder / f"docs/classes/{known.name}.md", reference.page(known))
    shutil.copytree(HERE / "theme", folder / "theme")
    shutil.copy(HERE / "conf.py", folder)


if __name__ == "__main__":
    main(Path(sys.argv[1]))
