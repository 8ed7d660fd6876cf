#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Checks the reference site and the help file against the contract, case by case.

Usage: check_site.py <case> <folder>     the folder that tools/docs.sh has made; says what is wrong
Cases: Members Links Search Resources HelpFile Examples
"""

import re
import subprocess
import sys
import tempfile
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit

ROOT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tools"), str(ROOT / "docs/site")]

import contract  # noqa: E402
import examples  # noqa: E402

LOADING = {("script", "src"), ("link", "href"), ("img", "src"), ("iframe", "src"), ("source", "src"), ("form", "action")}
NOT_LOADED = {"next", "prev", "index", "search", "canonical"}  # relations of a link element that a browser does not fetch


class Page(HTMLParser):
    """The identifiers of a page, what it leads to and what it loads."""

    def __init__(self, path):
        super().__init__()
        self.path, self.ids, self.links, self.loads = path, set(), [], []
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        self.ids.update(filter(None, (attributes.get("id"), attributes.get("name"))))
        for name in ("href", "src", "action"):
            target = attributes.get(name)
            if not target:
                continue
            self.links.append(target)
            if (tag, name) in LOADING and attributes.get("rel") not in NOT_LOADED:
                self.loads.append(target)


def pages_in(folder):
    return {path: Page(path) for path in sorted(folder.rglob("*.html"))}


def is_outside(target):
    parts = urlsplit(target)
    return bool(parts.scheme or parts.netloc)


def members_of(declared):
    """Each class with the members and the events of its interfaces."""
    interfaces = {interface.name: interface for interface in declared.interfaces}
    for known in declared.classes:
        yield known, interfaces[known.interface].members, interfaces[known.source].members if known.source else []


def case_members(output):
    """Every class has a page with its picture, every member, event and enumeration value an anchor."""
    for known, members, events in members_of(contract.read()):
        path = output / f"html/docs/classes/{known.name}.html"
        if not path.exists():
            yield f"{known.name}: no page"
            continue
        page, text = Page(path), path.read_text(encoding="utf-8")
        if '<svg class="relations"' not in text:
            yield f"{known.name}: no picture"
        wanted = {f"{known.name}.{member.name}" for member in members}
        wanted |= {f"{known.name}.{event.name}.event" for event in events}
        for name in sorted(wanted):
            if re.sub(r"[^a-z0-9]+", "-", name.lower()) not in page.ids:
                yield f"{name}: no anchor"
        for member in members:
            for parameter in member.parameters:
                if member.kind == "method" and f">{parameter.name}<" not in text:
                    yield f"{known.name}.{member.name}: parameter {parameter.name} is missing"
    values = Page(output / "html/docs/enumerations.html").ids
    for known in contract.read().enumerations:
        for name in [known.name, *(value.name for value in known.values)]:
            if name.lower() not in values:
                yield f"{name}: no anchor"


def broken_links(folder):
    pages = pages_in(folder)
    for path, page in pages.items():
        for link in page.links:
            if is_outside(link):
                continue
            parts = urlsplit(link)
            target = (path.parent / unquote(parts.path)).resolve() if parts.path else path
            if not target.is_file():
                yield f"{path.relative_to(folder)}: {link} leads nowhere"
            elif parts.fragment and target in pages and unquote(parts.fragment) not in pages[target].ids:
                yield f"{path.relative_to(folder)}: {link} has no such anchor"


def case_links(output):
    """Links within the site lead to files and anchors that are there."""
    yield from broken_links((output / "html").resolve())


def case_search(output):
    """The index of the search is a script, which a page from the file system may load, and knows every name."""
    index = (output / "html/searchindex.js").read_text(encoding="utf-8")
    if not index.startswith("Search.setIndex("):
        yield "the index is no script"
    if "searchindex.js" not in (output / "html/search.html").read_text(encoding="utf-8"):
        yield "the search page does not load the index"
    known_words = set(re.findall(r"[a-z_0-9]+", index.lower()))
    for known, members, events in members_of(contract.read()):
        for name in [known.name, *(member.name for member in [*members, *events])]:
            if name.lower() not in known_words:
                yield f"{known.name}: {name} is not in the index"


def case_resources(output):
    """Nothing is loaded from elsewhere."""
    folder = output / "html"
    for path, page in pages_in(folder).items():
        for target in page.loads:
            if is_outside(target):
                yield f"{path.relative_to(folder)} loads {target}"
    for path in [*folder.rglob("*.css"), *folder.rglob("*.js")]:
        text = path.read_text(encoding="utf-8")
        for target in re.findall(r"(?:url\(|@import |fetch\(|importScripts\()\s*[\"']?((?:https?:)?//[^\"')]+)", text):
            yield f"{path.relative_to(folder)} loads {target}"


def topics_of_dialogs():
    sources = "".join(path.read_text(encoding="utf-8") for path in (ROOT / "src/dialogs").rglob("*.cpp"))
    return {int(number) for number in re.findall(r"kHelpTopic = (\d+);", sources)}


def topics_of_contract():
    """What is published for each help context: the names of its type and of its member, if it is one's."""
    type_name, found = "", {}
    for line in (ROOT / "tests/abi/pvItems32.golden.txt").read_text(encoding="utf-8").splitlines():
        words, number = line.split(), re.search(r" help (\d+)$", line)
        if number and not line.startswith(" "):
            type_name = words[1]
            found.setdefault(int(number[1]), (type_name, None))
        elif number:
            is_value = words[1] == "="  # edtBit = 1 (type 3) help 2011, but 10 get HRESULT Key slot 7 help 20020
            found[int(number[1])] = (type_name, words[0] if is_value else words[3])
    return found


def topics_of_help_file(files):
    """The page of each help context."""
    table, texts = files["#ivb"].read_bytes(), files["#strings"].read_bytes()
    numbers = [int.from_bytes(table[at:at + 4], "little") for at in range(4, len(table), 4)]
    return {number: texts[start:texts.index(b"\0", start)].decode("cp1252")
            for number, start in zip(numbers[::2], numbers[1::2])}


def place_of_topic(files, page):
    """Page and anchor that a topic's page leads to, or "" for none."""
    text = files[page.lower()].read_text(encoding="cp1252")
    target = re.search(r'http-equiv="refresh" content="0; url=\.\./([^#"]*)#?([^"]*)"', text)
    return target.groups() if target else ("", "")


def wrong_topics(files):
    """Every help context of the type library and of the dialogs has a page. That of a member leads to the place where
    it is described: an anchor that ends in its name, or has the name of the value."""
    pages, published = topics_of_help_file(files), topics_of_contract()
    if len(published) < 500:
        yield "no help contexts are published"
    for number in sorted(topics_of_dialogs() | set(published)):
        if pages.get(number, "").lower() not in files:
            yield f"topic {number} has no page"
    for number, (type_name, member) in published.items():
        if pages.get(number, "").lower() not in files:
            continue
        page, anchor = place_of_topic(files, pages[number])
        if page.lower() not in files:
            yield f"topic {number} leads nowhere"
        elif anchor and f'id="{anchor}"' not in files[page.lower()].read_text(encoding="cp1252"):
            yield f"topic {number} leads to {page}#{anchor}, which has no such anchor"
        elif member and not re.fullmatch(rf"(.*-)?{member.replace('_', '-')}(-event)?", anchor, re.IGNORECASE):
            yield f"topic {number} leads to {page}#{anchor}, not to {type_name}.{member}"


def case_help_file(output):
    """The help file holds a page for every class, its index every class and member, and it knows the topics of the
    type library and those that the dialogs open."""
    with tempfile.TemporaryDirectory() as folder:
        done = subprocess.run(["chmls", "extractall", str((output / "pvItems32.chm").resolve()), folder],
                              capture_output=True, text=True)
        files = {str(path.relative_to(folder)).lower(): path for path in Path(folder).rglob("*") if path.is_file()}
        if done.returncode or not files:
            yield f"cannot be unpacked: {done.stdout}{done.stderr}"
            return
        lists = {suffix: "".join(path.read_text(encoding="utf-8", errors="replace") for name, path in files.items()
                                 if name.endswith(suffix)) for suffix in (".hhc", ".hhk")}
        yield from wrong_topics(files)
        for known, members, events in members_of(contract.read()):
            if f"docs/classes/{known.name}.html".lower() not in files:
                yield f"{known.name}: no page"
            if f'value="{known.name}"' not in lists[".hhc"]:
                yield f"{known.name}: not in the contents"
            for name in [member.name for member in [*members, *events]]:
                if f'value="{name} ({known.name}' not in lists[".hhk"]:
                    yield f"{known.name}.{name}: not in the index"


def case_examples(_):
    """Every class has an example in VBScript and one in C++ that is run. Sections are named after members, and their
    code uses these."""
    for known, members, _ in members_of(contract.read()):
        page = examples.read(known.name)
        names = {member.name for member in members}
        for language in ("vbscript", "cpp"):
            if not any(section.code(language) for section in page.sections):
                yield f"{known.name}: no example in {language}"
        for name in page.notes:
            if name not in names:
                yield f"{known.name}: a note on {name}, which is no member"
        for section in page.sections:
            for name in section.members:
                yield from missing_uses(known.name, section, name, names)


def missing_uses(class_name, section, name, names):
    if name not in names:
        yield f"{class_name}: an example of {name}, which is no member"
        return
    implied = {"Item", "NewEnum"}  # For Each and Item(...) of a result
    for language, patterns in (("vbscript", rf"\.{name}\b|For Each" if name in implied else rf"\.{name}\b"),
                               ("cpp", rf"::(?:get_|put_|putref_)?{name}\b")):
        code = section.code(language) + section.code(language, is_run=False)
        if code and not re.search(patterns, code, re.IGNORECASE if language == "vbscript" else 0):
            yield f"{class_name}: the {language} example of {name} does not use it"


def main(case, folder):
    cases = {"Members": case_members, "Links": case_links, "Search": case_search, "Resources": case_resources,
             "HelpFile": case_help_file, "Examples": case_examples}
    wrong = list(cases[case](Path(folder)))
    print("\n".join(wrong[:40]))
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main(*sys.argv[1:])
