#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Writes the source of the MSI package, for wixl, from the folder that tools/package.sh packs.

Each file is a component of its own. The libraries' components also hold what registration writes, as
rows of the registry: the tool refuses the elements for classes and type libraries.
"""

import argparse
import hashlib
import sys
import uuid
from pathlib import Path
from xml.etree import ElementTree

import contract
import registry_rows

UPGRADE_CODE = uuid.UUID("5b3d3a0e-6f0c-4a3c-9d55-0f4b8c1de7a2")  # for all versions of the product
LIBRARY = "pvItems32.dll"
FOLDERS = {32: "x86", 64: "x64"}

# In the order of actions: before the folders are final, when they are, and before anything is installed.
BEHIND_FILE_COST = 901
BEHIND_COST_FINALIZE = 1001
BEHIND_VALIDATION = 1401
FOLDER_KEY = "Software\\pvItems32"
FOLDERS_BY_PRECEDENCE = (
    ("SameFolderOfMachine", "[FOLDEROFMACHINE]", "ALLUSERS AND FOLDEROFMACHINE"),
    ("SameFolderOfUser", "[FOLDEROFUSER]", "NOT ALLUSERS AND FOLDEROFUSER"),
    ("NewFolderOfUser", "[LocalAppDataFolder]Programs\\pvItems32", "NOT ALLUSERS"),
)


def guid(*words):
    """The same words have the same identifier in every build."""
    return "{" + str(uuid.uuid5(UPGRADE_CODE, "/".join(map(str, words)))).upper() + "}"


def identifier(kind, path):
    return kind + hashlib.sha1(path.as_posix().encode()).hexdigest()[:16]


def add(parent, tag, **attributes):
    return ElementTree.SubElement(parent, tag, attributes)


def add_value(component, key, name, text):
    named = {"Name": name} if name else {}
    add(component, "RegistryValue", Root="HKMU", Key=key, Type="string", Value=text, **named)


class Package:
    def __init__(self, root, version, files):
        self.version = version
        self.files = files  # of each feature
        self.library = contract.read(root / "typelib" / "pvItems32.idl")

    def tree(self):
        wix = ElementTree.Element("Wix", xmlns="http://schemas.microsoft.com/wix/2006/wi")
        product = add(wix, "Product", Name="pvItems32", Id=guid("product", self.version),
                      UpgradeCode=f"{{{str(UPGRADE_CODE).upper()}}}", Version=self.version,
                      Language="1033", Codepage="1252", Manufacturer="the pvItems32 authors")
        self.add_package(product)
        self.add_scope(product)
        self.add_entry(product)
        self.add_files(product)
        self.add_features(product)
        return ElementTree.ElementTree(wix)

    def add_package(self, product):
        add(product, "Package", InstallerVersion="500", Compressed="yes", Description=f"pvItems32 {self.version}",
            Manufacturer="the pvItems32 authors")
        add(product, "Media", Id="1", Cabinet="files.cab", EmbedCab="yes")
        add(product, "MajorUpgrade", DowngradeErrorMessage="A newer version is installed.")

    def add_scope(self, product):
        """For all users, unless MSIINSTALLPERUSER=1 or an empty ALLUSERS asks for one. The folder of
        the command line has precedence over that of an installed version."""
        add(product, "Property", Id="ALLUSERS", Value="2")
        for name, root in (("FOLDEROFMACHINE", "HKLM"), ("FOLDEROFUSER", "HKCU")):
            add(add(product, "Property", Id=name), "RegistrySearch", Id="Search" + name, Root=root,
                Key=FOLDER_KEY, Name="Folder", Type="raw", Win64="yes")
        sequences = [add(product, name) for name in ("InstallExecuteSequence", "InstallUISequence")]
        add(sequences[0], "RemoveExistingProducts", Sequence=str(BEHIND_VALIDATION))
        for number, (name, folder, condition) in enumerate(FOLDERS_BY_PRECEDENCE, BEHIND_FILE_COST):
            add(product, "CustomAction", Id=name, Property="INSTALLDIR", Value=folder)
            for sequence in sequences:
                add(sequence, "Custom", Action=name,
                    Sequence=str(number)).text = f"NOT INSTALLDIR AND {condition}"

    def add_entry(self, product):
        """The entry among the installed programs. Without pages there is nothing to change by hand."""
        add(product, "Property", Id="ARPNOMODIFY", Value="1")
        add(product, "CustomAction", Id="TellFolder", Property="ARPINSTALLLOCATION", Value="[INSTALLDIR]")
        sequence = product.find("InstallExecuteSequence")
        add(sequence, "Custom", Action="TellFolder", Sequence=str(BEHIND_COST_FINALIZE)).text = "NOT Installed"

    def add_files(self, product):
        target = add(product, "Directory", Id="TARGETDIR", Name="SourceDir")
        programs = add(target, "Directory", Id="ProgramFiles64Folder")
        folders = {Path("."): add(programs, "Directory", Id="INSTALLDIR", Name="pvItems32")}
        for path in sorted(sum(self.files.values(), [])):
            self.add_component(self.folder_of(path, folders), path)

    def folder_of(self, path, folders):
        parent = path.parent
        if parent not in folders:
            folders[parent] = add(self.folder_of(parent, folders), "Directory",
                                  Id=identifier("D", parent), Name=parent.name)
        return folders[parent]

    def add_component(self, folder, path):
        bits = next((bits for bits, name in FOLDERS.items() if path == Path(name) / LIBRARY), None)
        component = add(folder, "Component", Id=identifier("C", path), Guid=guid("file", path.as_posix()),
                        Win64="no" if bits == 32 else "yes")
        add(component, "File", Id=identifier("F", path), Name=path.name, Source=path.as_posix(),
            KeyPath="yes")
        if bits:
            self.add_registration(component, bits)

    def add_registration(self, component, bits):
        paths = {each: f"[INSTALLDIR]{name}\\{LIBRARY}" for each, name in FOLDERS.items()}
        rows = registry_rows.view_rows(self.library, bits, paths, "[INSTALLDIR]" + FOLDERS[32])
        if bits == 64:
            rows += registry_rows.name_rows(self.library)
            add_value(component, FOLDER_KEY, "Folder", "[INSTALLDIR]")
        for row in rows:
            add_value(component, f"Software\\Classes\\{row.key}", row.name, row.text)

    def add_features(self, product):
        for name, files in self.files.items():
            feature = add(product, "Feature", Id=name, Title=name, Level="1")
            for path in files:
                add(feature, "ComponentRef", Id=identifier("C", path))


def files_of(listing):
    return [Path(line) for line in listing.read_text(encoding="utf-8").splitlines()]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("root", type=Path, help="the package's folder")
    parser.add_argument("version", help="three numbers")
    parser.add_argument("library", type=Path, help="a list of files that are always installed")
    parser.add_argument("examples", type=Path, help="a list of those that one can do without")
    parser.add_argument("output", help="the file to write")
    options = parser.parse_args()
    try:
        files = {"Library": files_of(options.library), "Examples": files_of(options.examples)}
        Package(options.root, options.version, files).tree().write(
            options.output, encoding="utf-8", xml_declaration=True)
    except (OSError, ValueError) as error:
        sys.exit(f"make_wxs: {error}")


if __name__ == "__main__":
    main()
