# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""The contract as a Python module: enumerations, and a thin class for each coclass and its members, over
either of the two usual packages for automation."""

import json
import keyword

from contract import grouped

PYTHON_TYPES = {
    "BSTR": "str", "VARIANT_BOOL": "bool", "short": "int", "long": "int", "unsigned char": "int",
    "float": "float", "double": "float",
}
KINDS = {"method": "METHOD", "propget": "GET", "propput": "PUT", "propputref": "PUT_REFERENCE"}

HEAD = '''\
"""{name} {version} for Python. Generated from the contract; not to be edited.

    import {name}
    {name}.use({name}.Pywin32())        # or Comtypes()
    items = {name}.CItems.create()
    items.LoadSettingsNew(r"C:\\\\data\\\\fluxor.itm")
    print(items.Item("1").get_Caption())

What a member changes in its arguments is not handed back.
"""

import enum

LIBID = "{{{uuid}}}"
METHOD, GET, PUT, PUT_REFERENCE = 1, 2, 4, 8
OMITTED = object()


class Pywin32:
    """Calls by the package pywin32."""

    def __init__(self):
        import pythoncom

        self.missing = pythoncom.Missing
        self._pythoncom = pythoncom

    def create(self, clsid):
        com = self._pythoncom
        return com.CoCreateInstance(clsid, None, com.CLSCTX_INPROC_SERVER, com.IID_IDispatch)

    def invoke(self, dispatch, member, kind, arguments):
        return dispatch.Invoke(member, 0, kind, kind in (METHOD, GET), *arguments)


class Comtypes:
    """Calls by the package comtypes."""

    def __init__(self):
        import comtypes
        import comtypes.automation

        self.missing = comtypes.automation.VARIANT.missing
        self._comtypes = comtypes

    def create(self, clsid):
        com = self._comtypes
        return com.CoCreateInstance(com.GUID(clsid), interface=com.automation.IDispatch)

    def invoke(self, dispatch, member, kind, arguments):
        return dispatch.Invoke(member, *arguments, _invkind=kind)


_package = None


def use(package):
    """Chooses what all calls go through: an object like Pywin32()."""
    global _package
    _package = package


class Object:
    """Wraps an automation object; `dispatch` is what the package knows it by."""

    CLSID = None

    def __init__(self, dispatch):
        self.dispatch = dispatch

    @classmethod
    def create(cls):
        return cls(_package.create(cls.CLSID))

    def _invoke(self, member, kind, arguments=(), result=None):
        value = _package.invoke(self.dispatch, member, kind, [_bare(given) for given in arguments])
        return value if result is None or value is None else result(value)


def _bare(argument):
    if argument is OMITTED:
        return _package.missing
    return argument.dispatch if isinstance(argument, Object) else argument
'''


def identifier(name):
    return name + "_" if keyword.iskeyword(name) else name


def default_of(parameter):
    value = parameter.default
    if value is None or parameter.pointers:
        return "OMITTED"
    if parameter.type == "VARIANT_BOOL":
        return "False" if value == "0" else "True"
    known = parameter.type in PYTHON_TYPES
    return value if known else f"{parameter.type}.{value}"


def parameter_text(parameter):
    name = identifier(parameter.name)
    return f"{name}={default_of(parameter)}" if parameter.is_optional else name


def annotation(parameter, enumerations):
    name = PYTHON_TYPES.get(parameter.type)
    if parameter.type in enumerations or parameter.type.startswith("_C"):
        name = parameter.type.lstrip("_")
    return f' -> "{name}"' if name else ""


def converter(parameter, enumerations):
    """What makes the result of a call what it is declared as."""
    if parameter and (parameter.type in enumerations or parameter.type.startswith("_C")):
        return parameter.type.lstrip("_")
    return None


class Writer:
    def __init__(self, contract):
        self.contract = contract
        self.enumerations = {enumeration.name for enumeration in contract.enumerations}
        self.interfaces = {interface.name: interface for interface in contract.interfaces}

    def function(self, member, name, decorator=None, value_first=False):
        """The value of a setter with indexes comes first, as these have defaults."""
        parameters = list(member.parameters)
        declared = parameters[-1:] + parameters[:-1] if value_first else parameters
        head = ", ".join(["self", *map(parameter_text, declared)])
        result = annotation(member.result, self.enumerations) if member.result else ""
        call = [str(member.id), KINDS[member.kind]]
        convert = converter(member.result, self.enumerations)
        if parameters or convert:
            given = "".join(identifier(parameter.name) + ", " for parameter in parameters)
            call.append(f"({given.rstrip()})" if parameters else "()")
        if convert:
            call.append(convert)
        lines = [f"    @{decorator}"] if decorator else []
        lines += [f"    def {identifier(name)}({head}){result}:",
                  f"        {json.dumps(member.help, ensure_ascii=False)}",
                  f"        {'return ' if member.result else ''}self._invoke({', '.join(call)})", ""]
        return lines

    def property_lines(self, kinds):
        lines = []
        for member in kinds:
            name = identifier(member.name)
            if member.kind == "propget":
                lines += self.function(member, name, "property")
            elif lines and member is kinds[1]:
                lines += self.function(member, name, f"{name}.setter")
            else:
                lines += self.function(member, ("set_" if member.kind == "propput" else "setref_")
                                       + member.name)
        return lines

    def members(self, interface):
        lines = []
        for kinds in grouped(interface.members):
            first = kinds[0]
            if first.kind == "method" or first.kind == "propget" and first.name == "Item":
                lines += self.function(first, first.name)
            elif first.kind == "propget" and first.parameters:
                lines += self.function(first, "get_" + first.name)
                for member in kinds[1:]:
                    lines += self.function(member, "set_" + member.name, value_first=True)
            else:
                lines += self.property_lines(kinds)
        return lines

    def coclass(self, known):
        lines = ["", "", f"class {known.name}(Object):",
                 f"    {json.dumps(known.help, ensure_ascii=False)}", "",
                 f'    PROGID = "{self.contract.name}.{known.name}"',
                 f'    CLSID = "{{{known.uuid}}}"',
                 f'    IID = "{{{self.interfaces[known.interface].uuid}}}"']
        if known.source:
            source = self.interfaces[known.source]
            events = {member.name: member.id for member in source.members}
            lines += [f'    EVENTS_IID = "{{{source.uuid}}}"', f"    EVENTS = {json.dumps(events)}"]
        lines += ["", *self.members(self.interfaces[known.interface])]
        return lines[:-1]

    def enumeration(self, enumeration):
        return ["", "", f"class {enumeration.name}(enum.IntEnum):",
                f"    {json.dumps(enumeration.help, ensure_ascii=False)}", "",
                *(f"    {value.name} = {value.number}  # {value.help}"
                  for value in enumeration.values)]

    def text(self):
        contract = self.contract
        lines = [HEAD.format(name=contract.name, version=contract.version,
                             uuid=contract.uuid).rstrip()]
        for enumeration in contract.enumerations:
            lines += self.enumeration(enumeration)
        for known in contract.classes:
            lines += self.coclass(known)
        return "\n".join(lines) + "\n"


def text(contract):
    return Writer(contract).text()
