# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""The contract's constants as a module of Basic, for hosts that bind late."""


def text(contract):
    lines = [f'Attribute VB_Name = "{contract.name}Constants"',
             f"' Generated from the contract of {contract.name} {contract.version}; not to be edited.",
             "Option Explicit"]
    for enumeration in contract.enumerations:
        lines += ["", f"' {enumeration.help}", f"Public Enum {enumeration.name}"]
        lines += [f"    {value.name} = {value.number}  ' {value.help}"
                  for value in enumeration.values]
        lines.append("End Enum")
    return "\r\n".join(lines) + "\r\n"
