#!/usr/bin/env python3
"""Writes the side-by-side manifest for use of the library without registration.

A program whose own manifest depends on the assembly "pvItems32" finds the classes through this
file beside the library. It lists what registration would write: the classes, the type library, and
the interfaces, which other apartments reach through the platform's own automation proxies.
"""

import argparse
import re
import sys
from xml.sax.saxutils import quoteattr

LIBRARY = "pvItems32"
INTERFACE_PROXY = "{00020424-0000-0000-C000-000000000046}"
EVENTS_PROXY = "{00020420-0000-0000-C000-000000000046}"
DISPATCH = "{00020400-0000-0000-C000-000000000046}"

DECLARATION = re.compile(
    r"\[([^\[\]]*\buuid\(([0-9A-Fa-f-]{36})\)[^\[\]]*)\]\s*"
    r"(library|interface|dispinterface|coclass)\s+(\w+)"
)
COMMENT_OR_TEXT = re.compile(r'"(?:[^"\\]|\\.)*"|//[^\n]*|/\*.*?\*/', re.DOTALL)


def declarations(idl):
    """What the contract declares: (kind, name, identifier, attributes) in order."""
    # Help texts may hold anything, even brackets.
    bare = COMMENT_OR_TEXT.sub(lambda m: '""' if m[0].startswith('"') else " ", idl)
    for attributes, uuid, kind, name in DECLARATION.findall(bare):
        yield kind, name, "{" + uuid.upper() + "}", attributes


def element(tag, indent=2, has_content=False, /, **attributes):
    pairs = "".join(f" {key}={quoteattr(value)}" for key, value in attributes.items())
    return " " * indent + f"<{tag}{pairs}{'' if has_content else '/'}>"


def manifest(idl, version, processor):
    declared = list(declarations(idl))
    libraries = [d for d in declared if d[0] == "library"]
    if len(libraries) != 1 or libraries[0][1] != LIBRARY:
        raise ValueError("the contract does not declare the library")
    _, _, library_id, attributes = libraries[0]
    library_version = re.search(r"version\(([\d.]+)\)", attributes)[1]

    inside = [element("typelib", 4, tlbid=library_id, version=library_version, helpdir="")]
    proxies = []
    for kind, name, uuid, _ in declared:
        if kind == "coclass":
            inside += [
                element("comClass", 4, True, clsid=uuid, threadingModel="Apartment",
                        progid=f"{LIBRARY}.{name}", tlbid=library_id),
                f"      <progid>{LIBRARY}.{name}.1</progid>",
                "    </comClass>",
            ]
        elif kind != "library":
            proxy = INTERFACE_PROXY if kind == "interface" else EVENTS_PROXY
            proxies.append(
                element("comInterfaceExternalProxyStub", name=name, iid=uuid, tlbid=library_id,
                        baseInterface=DISPATCH, proxyStubClsid32=proxy)
            )
    identity = element("assemblyIdentity", type="win32", name=LIBRARY, version=version,
                       processorArchitecture=processor)
    lines = [
        '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>',
        '<assembly xmlns="urn:schemas-microsoft-com:asm.v1" manifestVersion="1.0">',
        identity,
        f'  <file name="{LIBRARY}.dll">',
        *inside,
        "  </file>",
        *proxies,
        "</assembly>",
    ]
    return "\n".join(lines) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("idl", help="the contract")
    parser.add_argument("output", help="the manifest to write")
    parser.add_argument("--version", default="1.0.0.0", help="four numbers")
    parser.add_argument("--processor", default="x86", choices=("x86", "amd64"))
    options = parser.parse_args()
    try:
        with open(options.idl, encoding="utf-8") as file:
            text = manifest(file.read(), options.version, options.processor)
        with open(options.output, "w", encoding="utf-8", newline="\r\n") as file:
            file.write(text)
    except (OSError, ValueError) as error:
        sys.exit(f"make_manifest: {error}")


if __name__ == "__main__":
    main()
