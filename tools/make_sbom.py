#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Writes the bill of materials, SPDX 2.3 as JSON: the packed programs, and the compiler's and the
platform's run-time libraries that are linked into them, in the versions of the build machine."""

import argparse
import hashlib
import json
import subprocess
import sys
from datetime import datetime, timezone
from pathlib import Path

GCC = "GPL-3.0-or-later WITH GCC-exception-3.1"

# The Debian packages of what is linked into the programs of a folder: libstdc++, libgcc, and the
# platform's libraries with winpthread; with the licence.
LINKED = {
    folder: ((f"g++-mingw-w64-{target}-posix", GCC), (f"gcc-mingw-w64-{target}-posix", GCC),
             (f"mingw-w64-{target}-dev", "NOASSERTION"))
    for folder, target in (("x86", "i686"), ("x64", "x86-64"))
}
SUFFIXES = (".dll", ".exe")


def installed_version(package):
    return subprocess.run(["dpkg-query", "-W", "-f", "${Version}", package], capture_output=True,
                          text=True, check=True).stdout


def reference(*words):
    return "SPDXRef-" + "-".join(words).replace("/", "-").replace("_", "-").replace("+", "p")


def package(name, version, licence, **more):
    return {"SPDXID": reference("Package", name), "name": name, "versionInfo": version,
            "downloadLocation": "NOASSERTION", "filesAnalyzed": False, "licenseConcluded": licence,
            "licenseDeclared": licence, "copyrightText": "NOASSERTION", **more}


def file_entry(root, path):
    data = (root / path).read_bytes()
    return {
        "SPDXID": reference("File", path.as_posix()), "fileName": f"./{path.as_posix()}",
        "checksums": [{"algorithm": "SHA1", "checksumValue": hashlib.sha1(data).hexdigest()},
                      {"algorithm": "SHA256", "checksumValue": hashlib.sha256(data).hexdigest()}],
        "licenseConcluded": "NOASSERTION", "copyrightText": "NOASSERTION",
    }


def relationship(one, kind, other):
    return {"spdxElementId": one, "relationshipType": kind, "relatedSpdxElement": other}


def document(root, version, time):
    product = package("pvItems32", version, "MIT")
    programs = sorted(path.relative_to(root) for path in root.rglob("*") if path.suffix in SUFFIXES)
    files = [file_entry(root, path) for path in programs]
    linked = [package(name, installed_version(name), licence, supplier="Organization: Debian")
              for libraries in LINKED.values() for name, licence in libraries]
    relations = [relationship("SPDXRef-DOCUMENT", "DESCRIBES", product["SPDXID"])]
    for path, entry in zip(programs, files):
        relations.append(relationship(product["SPDXID"], "CONTAINS", entry["SPDXID"]))
        relations += [relationship(entry["SPDXID"], "STATIC_LINK", reference("Package", name))
                      for name, _ in LINKED[path.parts[0]]]
    digest = hashlib.sha256(json.dumps(files).encode()).hexdigest()
    return {
        "spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"pvItems32-{version}",
        "documentNamespace": f"urn:pvItems32:sbom:{version}:{digest}",
        "creationInfo": {
            "created": datetime.fromtimestamp(time, timezone.utc).strftime("%Y-%m-%dT%H:%M:%SZ"),
            "creators": ["Tool: make_sbom.py", "Organization: the pvItems32 authors"]},
        "packages": [product, *linked], "files": files, "relationships": relations,
    }


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("root", type=Path, help="the package's folder")
    parser.add_argument("version", help="three numbers")
    parser.add_argument("time", type=int, help="of its making, in seconds since 1970")
    parser.add_argument("output", help="the file to write")
    options = parser.parse_args()
    try:
        made = document(options.root, options.version, options.time)
        with open(options.output, "w", encoding="utf-8") as file:
            file.write(json.dumps(made, indent=1) + "\n")
    except (OSError, subprocess.CalledProcessError) as error:
        sys.exit(f"make_sbom: {error}")


if __name__ == "__main__":
    main()
