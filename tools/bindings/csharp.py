# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""The contract as C#: one source file that needs no interop assembly.

The order of an interface's members is that of its vtable. Where C# has no property for a member, such
as one with arguments, its accessors are methods, named as other generators name them.
"""

from xml.sax.saxutils import escape

from contract import grouped

TYPES = {
    "BSTR": "string", "VARIANT": "object", "VARIANT_BOOL": "bool", "DATE": "DateTime",
    "short": "short", "long": "int", "unsigned char": "byte", "float": "float", "double": "double",
    "IDispatch": "object", "IPictureDisp": "object", "IUnknown": "object",
}
MARSHALLED = {"IDispatch": "IDispatch", "IPictureDisp": "IDispatch", "IUnknown": "IUnknown"}
ACCESSORS = {"propget": "get_", "propput": "set_", "propputref": "setref_"}
NEW_ENUM = -4
ENUMERATOR = (
    "System.Runtime.InteropServices.CustomMarshalers.EnumeratorToEnumVariantMarshaler, "
    "CustomMarshalers, Version=4.0.0.0, Culture=neutral, PublicKeyToken=b03f5f7f11d50a3a")

HEAD = """\
// Generated from the contract of {name} {version}; not to be edited. Booleans, texts, dates and variants are
// marshalled as automation has them, which is the default for interfaces of this kind.

using System;
using System.Collections;
using System.Runtime.InteropServices;
using System.Runtime.InteropServices.ComTypes;

namespace {name}
{{
    /// <summary>Connects a listener, an object of a class that implements an interface of events, as long as it
    /// is not disposed of.</summary>
    public sealed class EventConnection : IDisposable
    {{
        private readonly IConnectionPoint point;
        private readonly int cookie;
        private bool connected;

        public EventConnection(object source, Type events, object listener)
        {{
            Guid identifier = events.GUID;
            ((IConnectionPointContainer)source).FindConnectionPoint(ref identifier, out point);
            point.Advise(listener, out cookie);
            connected = true;
        }}

        public void Dispose()
        {{
            if (connected) point.Unadvise(cookie);
            connected = false;
        }}
    }}
"""


def summary(text, indent):
    return f"{indent}/// <summary>{escape(text)}</summary>"


def type_of(parameter):
    return TYPES.get(parameter.type, parameter.type)


def marshalling(parameter):
    unmanaged = MARSHALLED.get(parameter.type)
    return f"MarshalAs(UnmanagedType.{unmanaged})" if unmanaged else None


def default_value(parameter):
    value, kind = parameter.default, type_of(parameter)
    if kind == "bool":
        return "false" if value == "0" else "true"
    if parameter.pointers:
        return "null"
    if kind == "short":
        return f"(short)({value})"
    return value if kind in TYPES.values() else f"{kind}.{value}"


def parameter_text(parameter):
    attributes = []
    if parameter.is_optional:
        attributes.append("Optional")
    if parameter.default is not None:
        attributes.append(f"DefaultParameterValue({default_value(parameter)})")
    if marshalling(parameter):
        attributes.append(marshalling(parameter))
    text = f"[{', '.join(attributes)}] " if attributes else ""
    text += "ref " if parameter.is_by_reference else ""
    return f"{text}{type_of(parameter)} {parameter.name}"


def method(member, name):
    lines = [f"        [DispId({member.id})]"]
    if member.result and marshalling(member.result):
        lines.append(f"        [return: {marshalling(member.result)}]")
    result = type_of(member.result) if member.result else "void"
    parameters = ", ".join(parameter_text(parameter) for parameter in member.parameters)
    return [*lines, f"        {result} {name}({parameters});"]


def enumerator(member):
    return [f"        [DispId({member.id})]",
            "        [return: MarshalAs(UnmanagedType.CustomMarshaler, MarshalType =",
            f'            "{ENUMERATOR}")]',
            "        new IEnumerator GetEnumerator();"]


def accessor(member, value):
    if member.kind == "propget":
        target, word = "return", "get"
    else:
        target, word = "param", "set"
    marshalled = f"[{target}: {marshalling(value)}] " if marshalling(value) else ""
    return f"            [DispId({member.id})] {marshalled}{word};"


def is_property(kinds):
    """One whose accessors take nothing but its value."""
    most = 0 if kinds[0].kind == "propget" else 1
    return kinds[0].kind != "method" and len(kinds[0].parameters) == most


def property_text(kinds):
    """A getter and a setter; another setter is a method behind them."""
    value = kinds[0].result or kinds[0].parameters[0]
    lines = [f"        [DispId({kinds[0].id})]",
             f"        {type_of(value)} {kinds[0].name}", "        {",
             *(accessor(member, value) for member in kinds[:2]), "        }"]
    for member in kinds[2:]:
        lines += method(member, ACCESSORS[member.kind] + member.name)
    return lines


def indexer(member):
    parameter = parameter_text(member.parameters[0])
    return [f"        [DispId({member.id})]",
            f"        {type_of(member.result)} this[{parameter}]", "        {",
            f"            [DispId({member.id})] get;", "        }"]


def member_lines(kinds):
    first = kinds[0]
    lines = [summary(first.help, "        ")]
    if first.id == NEW_ENUM:
        return lines + enumerator(first)
    if first.id == 0 and first.name == "Item":
        return lines + indexer(first)
    if is_property(kinds):
        return lines + property_text(kinds)
    for member in kinds:
        lines += method(member, ACCESSORS.get(member.kind, "") + member.name)
    return lines


def interface_lines(interface):
    kind = "InterfaceIsIDispatch" if interface.is_source else "InterfaceIsDual"
    base = " : IEnumerable" if any(m.id == NEW_ENUM for m in interface.members) else ""
    lines = ["", summary(interface.help, "    "),
             f'    [ComImport, Guid("{interface.uuid}"), InterfaceType(ComInterfaceType.{kind})]',
             f"    public interface {interface.name}{base}", "    {"]
    for kinds in grouped(interface.members):
        lines += member_lines(kinds)
    return lines + ["    }"]


def enumeration_lines(enumeration):
    lines = ["", summary(enumeration.help, "    "), f'    [Guid("{enumeration.uuid}")]',
             f"    public enum {enumeration.name}", "    {"]
    for value in enumeration.values:
        lines += [summary(value.help, "        "), f"        {value.name} = {value.number},"]
    return lines + ["    }"]


def class_lines(known, identifiers):
    source = f", ComSourceInterfaces(typeof({known.source}))" if known.source else ""
    return ["", summary(known.help, "    "),
            f'    [ComImport, Guid("{identifiers[known.interface]}"), CoClass(typeof({known.name}Class))]',
            f"    public interface {known.name} : {known.interface} {{ }}", "",
            f'    [ComImport, Guid("{known.uuid}"), ClassInterface(ClassInterfaceType.None){source}]',
            f"    public class {known.name}Class {{ }}"]


def text(contract):
    identifiers = {interface.name: interface.uuid for interface in contract.interfaces}
    lines = [HEAD.format(name=contract.name, version=contract.version).rstrip()]
    for enumeration in contract.enumerations:
        lines += enumeration_lines(enumeration)
    for interface in contract.interfaces:
        lines += interface_lines(interface)
    for known in contract.classes:
        lines += class_lines(known, identifiers)
    return "\n".join(lines) + "\n}\n"
