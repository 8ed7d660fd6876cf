#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Checks the drafts for package managers and the bill of materials against the files they tell of.

The drafts have the fields that the package managers require, of the right form; whether the managers
take them is seen by their own tools, which run on Windows alone.
"""

import hashlib
import json
import re
import sys
from pathlib import Path
from xml.etree import ElementTree

import yaml

SHA256 = r"[0-9A-F]{64}"
COMMON = {"PackageIdentifier": r"[^.\s]{1,32}(\.[^.\s]{1,32}){1,7}", "PackageVersion": r"\d+\.\d+\.\d+",
          "ManifestVersion": r"1\.6\.0"}
REQUIRED = {
    "version": {**COMMON, "DefaultLocale": "en-US", "ManifestType": "version"},
    "defaultLocale": {**COMMON, "PackageLocale": "en-US", "Publisher": ".{2,256}", "PackageName": ".{2,256}",
                      "License": ".{3,512}", "ShortDescription": ".{3,256}", "ManifestType": "defaultLocale"},
    "installer": {**COMMON, "ManifestType": "installer"},
}
OF_INSTALLER = {"Architecture": "x86|x64", "InstallerType": "nullsoft|wix", "Scope": "user|machine",
                "InstallerUrl": "https?://.+", "InstallerSha256": SHA256}
NUSPEC = "{http://schemas.microsoft.com/packaging/2013/05/nuspec.xsd}"


def expect(condition, said):
    if not condition:
        sys.exit(f"check_release: {said}")


def digest(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def check_fields(found, required, where):
    for name, form in required.items():
        expect(re.fullmatch(form, str(found.get(name, ""))), f"{where}: {name} is {found.get(name)!r}")


def check_winget(folder, version):
    for kind, required in REQUIRED.items():
        found = yaml.safe_load((folder / "winget" / f"{kind}.yaml").read_text(encoding="utf-8"))
        check_fields(found, required, kind)
        expect(found["PackageVersion"] == version, f"{kind}: of another version")
    for installer in found["Installers"]:
        check_fields(installer, OF_INSTALLER, "installer")
        name = installer["InstallerUrl"].rsplit("/", 1)[1]
        expect(digest(folder / name).upper() == installer["InstallerSha256"], f"{name}: another checksum")


def check_nuget(folder, root, version):
    package = ElementTree.parse(folder / "nuget" / "pvItems32.nuspec").getroot()
    for name in ("id", "version", "authors", "description", "license"):
        expect(package.findtext(f"{NUSPEC}metadata/{NUSPEC}{name}"), f"nuspec: no {name}")
    expect(package.findtext(f"{NUSPEC}metadata/{NUSPEC}version") == version, "nuspec: another version")
    for file in package.iter(NUSPEC + "file"):
        source = file.get("src")
        expect((root / source).is_file() or (folder / source).is_file(), f"nuspec: there is no {source}")
    ElementTree.parse(folder / "nuget" / "build" / "pvItems32.targets")


def check_sbom(folder, root, version):
    made = json.loads((folder / f"pvItems32-{version}.spdx.json").read_text(encoding="utf-8"))
    expect(made["spdxVersion"] == "SPDX-2.3", "bill of materials: another version")
    told = {entry["fileName"]: entry["checksums"][1]["checksumValue"] for entry in made["files"]}
    packed = {f"./{path.relative_to(root)}": digest(path)
              for path in root.rglob("*") if path.suffix in (".dll", ".exe")}
    expect(told == packed, "bill of materials: other programs than those that are packed")
    known = {entry["SPDXID"] for entry in made["packages"] + made["files"]} | {"SPDXRef-DOCUMENT"}
    for relation in made["relationships"]:
        for end in ("spdxElementId", "relatedSpdxElement"):
            expect(relation[end] in known, f"bill of materials: there is no {relation[end]}")
    for entry in made["packages"] + made["files"]:
        expect(re.fullmatch(r"SPDXRef-[A-Za-z0-9.-]+", entry["SPDXID"]), f"not an identifier: {entry['SPDXID']}")


def main():
    folder, version = Path(sys.argv[1]), sys.argv[2]
    root = folder / f"pvItems32-{version}"
    check_winget(folder, version)
    check_nuget(folder, root, version)
    check_sbom(folder, root, version)


if __name__ == "__main__":
    main()
