# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""The rows that registration writes below Software\\Classes, from the contract.

For installers that write the registry themselves. What regsvr32 writes is compared with them by
tests/installer.
"""

from dataclasses import dataclass

from make_manifest import EVENTS_PROXY, INTERFACE_PROXY, braced

LIBRARY_HAS_DISK_IMAGE = "8"  # LIBFLAG_FHASDISKIMAGE
NEUTRAL_LANGUAGE = "0"


@dataclass
class Row:
    key: str
    text: str
    name: str = ""  # the key's default value


def names_of(known, library):
    """Without and with the version."""
    general = f"{library.name}.{known.name}"
    return general, general + ".1"


def name_rows(library):
    """Programs of both bitnesses see the same names."""
    found = []
    for known in library.classes:
        general, versioned = names_of(known, library)
        found += [
            Row(general, general),
            Row(general + "\\CLSID", braced(known)),
            Row(general + "\\CurVer", versioned),
            Row(versioned, general),
            Row(versioned + "\\CLSID", braced(known)),
        ]
    return found


def class_rows(known, library, path):
    general, versioned = names_of(known, library)
    key = f"CLSID\\{braced(known)}"
    return [
        Row(key, general),
        Row(key + "\\InprocServer32", path),
        Row(key + "\\InprocServer32", "Apartment", "ThreadingModel"),
        Row(key + "\\ProgID", versioned),
        Row(key + "\\VersionIndependentProgID", general),
        Row(key + "\\TypeLib", braced(library)),
        Row(key + "\\Version", library.version),
        Row(key + "\\Programmable", ""),
    ]


def interface_rows(interface, library):
    key = f"Interface\\{braced(interface)}"
    proxy = EVENTS_PROXY if interface.is_source else INTERFACE_PROXY
    return [
        Row(key, interface.name),
        Row(key + "\\ProxyStubClsid", proxy),
        Row(key + "\\ProxyStubClsid32", proxy),
        Row(key + "\\TypeLib", braced(library)),
        Row(key + "\\TypeLib", library.version, "Version"),
    ]


def library_rows(library, paths, folder):
    """The entry knows the type library of either bitness."""
    key = f"TypeLib\\{braced(library)}\\{library.version}"
    return [
        Row(key, library.help),
        *(Row(f"{key}\\{NEUTRAL_LANGUAGE}\\win{bits}", path) for bits, path in paths.items()),
        Row(key + "\\FLAGS", LIBRARY_HAS_DISK_IMAGE),
        Row(key + "\\HELPDIR", folder),
    ]


def view_rows(library, bits, paths, folder):
    """What programs of so many bits find besides names; paths has the DLL of each bitness, folder is for help."""
    found = library_rows(library, paths, folder)
    for known in library.classes:
        found += class_rows(known, library, paths[bits])
    for interface in library.interfaces:
        found += interface_rows(interface, library)
    return found
