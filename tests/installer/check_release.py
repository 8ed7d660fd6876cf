#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Checks the drafts for package managers and the bill of materials against the files they tell of.

The drafts are valid by schemas of our own, winget.schema.json and nuspec.xsd; whether the package
managers take them is seen by their own tools, which run on Windows alone.
"""

import hashlib
import json
import re
import subprocess
import sys
from pathlib import Path
from xml.etree import ElementTree

import jsonschema
import yaml

HERE = Path(__file__).resolve().parent
NUSPEC = "{http://schemas.microsoft.com/packaging/2013/05/nuspec.xsd}"


def expect(condition, said):
    if not condition:
        sys.exit(f"check_release: {said}")


def digest(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def winget_draft(folder, kind):
    """Valid by the schema of its kind. All values are texts, as the schema has them: dates, too."""
    found = yaml.load((folder / "winget" / f"{kind}.yaml").read_text(encoding="utf-8"), yaml.BaseLoader)
    schema = json.loads((HERE / "winget.schema.json").read_text(encoding="utf-8"))
    error = next(jsonschema.Draft202012Validator(schema | {"$ref": f"#/$defs/{kind}"}).iter_errors(found), None)
    expect(not error, error and f"{kind}: {error.json_path}: {error.message}")
    return found


def check_winget(folder, version):
    drafts = {kind: winget_draft(folder, kind) for kind in ("version", "defaultLocale", "installer")}
    for kind, found in drafts.items():
        expect(found["PackageVersion"] == version, f"{kind}: of another version")
    for installer in drafts["installer"]["Installers"]:
        name = installer["InstallerUrl"].rsplit("/", 1)[1]
        expect(digest(folder / name).upper() == installer["InstallerSha256"], f"{name}: another checksum")


def check_nuget(folder, root, version):
    path = folder / "nuget" / "pvItems32.nuspec"
    checked = subprocess.run(["xmllint", "--noout", "--nonet", "--schema", HERE / "nuspec.xsd", path],
                             capture_output=True, text=True)
    expect(checked.returncode == 0, checked.stderr)
    package = ElementTree.parse(path).getroot()
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
