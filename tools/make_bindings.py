#!/usr/bin/env python3
# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""Writes what hosts in other languages compile or import: the contract in C#, Pascal, Python and Basic."""

import argparse
import sys
from pathlib import Path

import contract
from bindings import basic, csharp, pascal, python

FILES = {"{name}.cs": csharp, "{name}_TLB.pas": pascal, "{name}.py": python, "{name}.bas": basic}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("idl", help="the contract")
    parser.add_argument("folder", type=Path, help="where to write them")
    options = parser.parse_args()
    try:
        declared = contract.read(options.idl)
        options.folder.mkdir(parents=True, exist_ok=True)
        for name, language in FILES.items():
            file = options.folder / name.format(name=declared.name)
            file.write_text(language.text(declared), encoding="utf-8", newline="")
    except (OSError, ValueError) as error:
        sys.exit(f"make_bindings: {error}")


if __name__ == "__main__":
    main()
