#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Writes the side-by-side manifest for use of the library without registration.

A program whose own manifest depends on the assembly "pvItems32" finds the classes through this
file beside the library. It lists what registration would write: the classes, the type library, and
the interfaces, which other apartments reach through the platform's own automation proxies.
"""

import argparse
import sys
from xml.sax.saxutils import quoteattr

import contract

INTERFACE_PROXY = "{00020424-0000-0000-C000-000000000046}"
EVENTS_PROXY = "{00020420-0000-0000-C000-000000000046}"
DISPATCH = "{00020400-0000-0000-C000-000000000046}"


def braced(declared):
    return "{" + declared.uuid.upper() + "}"


def element(tag, indent=2, has_content=False, /, **attributes):
    pairs = "".join(f" {key}={quoteattr(value)}" for key, value in attributes.items())
    return " " * indent + f"<{tag}{pairs}{'' if has_content else '/'}>"


def class_elements(known, library):
    return [
        element("comClass", 4, True, clsid=braced(known), threadingModel="Apartment",
                progid=f"{library.name}.{known.name}", tlbid=braced(library)),
        f"      <progid>{library.name}.{known.name}.1</progid>",
        "    </comClass>",
    ]


def proxy_element(interface, library):
    proxy = EVENTS_PROXY if interface.is_source else INTERFACE_PROXY
    return element("comInterfaceExternalProxyStub", name=interface.name, iid=braced(interface),
                   tlbid=braced(library), baseInterface=DISPATCH, proxyStubClsid32=proxy)


def manifest(library, version, processor):
    inside = [element("typelib", 4, tlbid=braced(library), version=library.version, helpdir="")]
    for known in library.classes:
        inside += class_elements(known, library)
    proxies = [proxy_element(interface, library) for interface in library.interfaces]
    identity = element("assemblyIdentity", type="win32", name=library.name, version=version,
                       processorArchitecture=processor)
    lines = [
        '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>',
        '<assembly xmlns="urn:schemas-microsoft-com:asm.v1" manifestVersion="1.0">',
        identity,
        f'  <file name="{library.name}.dll">',
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
        text = manifest(contract.read(options.idl), options.version, options.processor)
        with open(options.output, "w", encoding="utf-8", newline="\r\n") as file:
            file.write(text)
    except (OSError, ValueError) as error:
        sys.exit(f"make_manifest: {error}")


if __name__ == "__main__":
    main()
