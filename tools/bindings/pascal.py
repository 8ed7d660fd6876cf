# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""The contract as a Pascal unit, for Free Pascal and Delphi: interfaces for early binding, dispatch
interfaces for calls by member number, a class for each coclass that creates its objects.

Words of the language get an underscore behind them: Unit_, Repeat_.
"""

from contract import grouped

TYPES = {
    "BSTR": "WideString", "VARIANT": "OleVariant", "VARIANT_BOOL": "WordBool", "DATE": "TDateTime",
    "short": "Smallint", "long": "Integer", "unsigned char": "Byte", "float": "Single",
    "double": "Double", "IDispatch": "IDispatch", "IPictureDisp": "IDispatch",
    "IUnknown": "IUnknown",
}
# Texts and objects are pointers either way, and Pascal need not count what it only reads. A variant
# is passed by value, which Pascal does for parameters without "const" alone.
READ_ONLY = ("BSTR",)
WORDS = {"begin", "const", "end", "file", "function", "object", "of", "procedure", "property",
         "record", "repeat", "result", "set", "string", "type", "unit", "until", "uses", "var", "with"}
ACCESSORS = {"propget": "Get_", "propput": "Set_", "propputref": "SetRef_"}
NEW_ENUM = -4

HEAD = """\
{{ Generated from the contract of {name} {version}; not to be edited. }}

unit {name}_TLB;

{{$ifdef FPC}}{{$mode delphi}}{{$endif}}

interface

uses
  ActiveX, ComObj, Variants;

const
  LIBID_{name}: TGUID = '{{{uuid}}}';
"""


def identifier(name):
    return name + "_" if name.lower() in WORDS else name


def quoted(text):
    return "{ " + text.replace("}", ")") + " }"


def type_of(parameter):
    return TYPES.get(parameter.type, parameter.type)


def parameter_text(parameter):
    prefix = "var " if parameter.is_by_reference else ""
    if not prefix and (parameter.type in READ_ONLY or is_object(parameter)):
        prefix = "const "
    return f"{prefix}{identifier(parameter.name)}: {type_of(parameter)}"


def is_object(parameter):
    return parameter.pointers == 1 and not parameter.is_by_reference


def parameter_list(parameters, brackets="()"):
    if not parameters:
        return ""
    return brackets[0] + "; ".join(map(parameter_text, parameters)) + brackets[1]


def routine(member, name, ending):
    result = f": {type_of(member.result)}" if member.result else ""
    word = "function" if result else "procedure"
    return f"    {word} {name}{parameter_list(member.parameters)}{result}; {ending};"


def value_of(kinds):
    return kinds[0].result or kinds[0].parameters[-1]


def indexes_of(kinds):
    first = kinds[0]
    return first.parameters if first.kind == "propget" else first.parameters[:-1]


def property_head(kinds):
    name = identifier(kinds[0].name)
    return f"    property {name}{parameter_list(indexes_of(kinds), '[]')}: {type_of(value_of(kinds))}"


def property_text(kinds):
    accessors = {member.kind: ACCESSORS[member.kind] + member.name for member in kinds}
    text = property_head(kinds)
    if "propget" in accessors:
        text += f" read {accessors['propget']}"
    setter = accessors.get("propput", accessors.get("propputref"))
    if setter:
        text += f" write {setter}"
    return text + (";" if not is_default(kinds) else "; default;")


def is_default(kinds):
    """Pascal has default properties with an index alone."""
    return kinds[0].id == 0 and bool(indexes_of(kinds))


def dispatch_property(kinds):
    names = {member.kind for member in kinds}
    access = {True: "", False: " writeonly"}["propget" in names]
    if names == {"propget"}:
        access = " readonly"
    ending = " default;" if is_default(kinds) else ""
    return f"{property_head(kinds)}{access} dispid {kinds[0].id};{ending}"


def interface_lines(interface):
    lines = [f"  {quoted(interface.help)}", f"  {interface.name} = interface(IDispatch)",
             f"    ['{{{interface.uuid}}}']"]
    for kinds in grouped(interface.members):
        for member in kinds:
            lines.append(routine(member, ACCESSORS.get(member.kind, "") + (
                member.name if member.kind != "method" else identifier(member.name)), "safecall"))
    for kinds in grouped(interface.members):
        if kinds[0].kind != "method":
            lines.append(property_text(kinds))
    return lines + ["  end;", ""]


def dispatch_lines(interface, name):
    lines = [f"  {name} = dispinterface", f"    ['{{{interface.uuid}}}']"]
    for kinds in grouped(interface.members):
        first = kinds[0]
        if first.kind == "method":
            lines.append(routine(first, identifier(first.name), f"dispid {first.id}"))
        else:
            lines.append(dispatch_property(kinds))
    return lines + ["  end;", ""]


def enumeration_lines(enumeration):
    lines = ["", f"{quoted(enumeration.help)}", "type", f"  {enumeration.name} = TOleEnum;", "const"]
    return lines + [f"  {value.name} = {value.number};  {quoted(value.help)}"
                    for value in enumeration.values]


def class_lines(known):
    return [f"  {quoted(known.help)}", f"  Co{known.name} = class",
            f"    class function Create: {known.interface};", "  end;", ""]


def creation_lines(known):
    return ["", f"class function Co{known.name}.Create: {known.interface};", "begin",
            f"  Result := CreateComObject(CLASS_{known.name}) as {known.interface};", "end;"]


def constants(contract):
    for interface in contract.interfaces:
        prefix = "DIID_" if interface.is_source else "IID_"
        yield f"  {prefix}{interface.name}: TGUID = '{{{interface.uuid}}}';"
    for known in contract.classes:
        yield f"  CLASS_{known.name}: TGUID = '{{{known.uuid}}}';"


def declarations(contract):
    duals = [interface for interface in contract.interfaces if not interface.is_source]
    yield "type"
    for interface in duals:
        yield f"  {interface.name} = interface;"
    yield ""
    for interface in contract.interfaces:
        if interface.is_source:
            yield f"  {quoted(interface.help)}"
            yield from dispatch_lines(interface, interface.name)
        else:
            yield from interface_lines(interface)
            yield from dispatch_lines(interface, interface.name + "Disp")
    for known in contract.classes:
        yield from class_lines(known)


def text(contract):
    lines = [HEAD.format(name=contract.name, version=contract.version,
                         uuid=contract.uuid).rstrip(), *constants(contract)]
    for enumeration in contract.enumerations:
        lines += enumeration_lines(enumeration)
    lines += ["", *declarations(contract), "implementation"]
    for known in contract.classes:
        lines += creation_lines(known)
    return "\n".join(lines) + "\n\nend.\n"
