#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Writes contents, index and help contexts of the help file, beside the pages that Sphinx has made for it.

Usage: docs/site/help_file.py <folder>
"""

import sys
from pathlib import Path

from pages import HOSTS, GUIDES_IN_ORDER, Reference
import contract  # its folder is known from here on
import help_topics

ENCODING = "cp1252"  # of help files in English

# What the dialogs of the library open with F1, when the host names this file as its help file.
TOPICS_OF_DIALOGS = {158: "docs/dialogs.html"}

# The compiler refuses anchors as topics. So a context opens a page of its own, which leads on to the place.
FORWARDING = """<html><head><title>{name}</title><meta http-equiv="refresh" content="0; url={target}"></head>
<body><a href="{target}">{name}</a></body></html>
"""


def entry(name, target, children=()):
    text = f'<LI><OBJECT type="text/sitemap"><param name="Name" value="{name}">'
    text += f'<param name="Local" value="{target}"></OBJECT>\n' if target else "</OBJECT>\n"
    return text + (f"<UL>\n{''.join(children)}</UL>\n" if children else "")


def sitemap(entries):
    return f"<HTML><BODY>\n<UL>\n{''.join(entries)}</UL>\n</BODY></HTML>\n"


def page_of(known):
    return f"docs/classes/{known.name}.html"


def anchor(known, kinds, suffix=""):
    return f"{page_of(known)}#" + f"{known.name}-{kinds[0].name}{suffix}".replace("_", "-").lower()


def title_of(folder, page):
    text = (folder / page).read_text(encoding=ENCODING)
    return text.split("<title>")[1].split("</title>")[0].split(" &#8212;")[0].split(" \u2014")[0]


def contents(folder, reference):
    def guides(names):
        return [entry(title_of(folder, name + ".html"), name + ".html") for name in names]

    classes = [entry(known.name, page_of(known)) for known in reference.classes]
    hosts = sorted(path.stem for path in (folder / "docs/hosts").glob("*.html"))
    return sitemap([entry("pvItems32", "index.html"), entry("Guides", None, guides(GUIDES_IN_ORDER)),
                    entry("Hosts", HOSTS + "README.html", guides(HOSTS + name for name in hosts if name != "README")),
                    entry("Reference", "docs/reference.html", classes),
                    entry("Enumerations", "docs/enumerations.html")])


def index(reference):
    found = [(known.name, page_of(known)) for known in reference.classes]
    for known in reference.classes:
        found += [(f"{kinds[0].name} ({known.name})", anchor(known, kinds)) for kinds in reference.members(known)]
        found += [(f"{kinds[0].name} ({known.name} event)", anchor(known, kinds, "-event"))
                  for kinds in reference.events(known)]
    for known in reference.declared.enumerations:
        found += [(name, f"docs/enumerations.html#{name.lower()}")
                  for name in [known.name, *(value.name for value in known.values)]]
    return sitemap(entry(*pair) for pair in sorted(found, key=lambda pair: pair[0].lower()))


def place_of(reference, topic):
    """Where the pages describe what has this topic."""
    known, member = topic.type, topic.member
    if known is reference.declared:
        return "index.html"
    if isinstance(known, contract.Enumeration):
        return f"docs/enumerations.html#{(member or known).name.lower()}"
    if isinstance(known, contract.CoClass):
        return anchor(known, [member]) if member else page_of(known)
    sender = next(each for each in reference.classes if each.source == known.name)
    return anchor(sender, [member], "-event") if member else page_of(sender)


def write_topics(folder, reference):
    """A page for each help context of the type library. Returns them by context."""
    pages = {}
    (folder / "topics").mkdir()
    for (owner, name), topic in help_topics.topics(reference.declared).items():
        pages[topic.number] = f"topics/{topic.number}.html"
        (folder / pages[topic.number]).write_text(
            FORWARDING.format(name=f"{owner}.{name}" if name else owner, target="../" + place_of(reference, topic)),
            encoding=ENCODING)
    return pages


def complete_project(path, forwarding):
    """Adds the pages that Sphinx does not know, and the contexts."""
    contexts = TOPICS_OF_DIALOGS | forwarding
    text = path.read_text(encoding=ENCODING).replace("[FILES]\n", "[FILES]\n" + "".join(
        f"{page}\n" for page in forwarding.values()))
    text += "\n\n[MAP]\n" + "".join(f"#define topic{number} {number}\n" for number in contexts)
    text += "\n[ALIAS]\n" + "".join(f"topic{number}={page}\n" for number, page in contexts.items())
    path.write_text(text, encoding=ENCODING)


def main(folder):
    reference = Reference(contract.read())
    (folder / "pvItems32.hhc").write_text(contents(folder, reference), encoding=ENCODING)
    (folder / "pvItems32.hhk").write_text(index(reference), encoding=ENCODING)
    complete_project(folder / "pvItems32.hhp", write_topics(folder, reference))


if __name__ == "__main__":
    main(Path(sys.argv[1]))
