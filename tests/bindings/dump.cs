// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Prints what an assembly of bindings declares, as the runtime sees it, in a form that is compared with
// the type library: dump.exe <assembly>

using System;
using System.Linq;
using System.Reflection;
using System.Runtime.InteropServices;

static class Dump
{
    static T Attribute<T>(ICustomAttributeProvider of) where T : Attribute
    {
        return (T)of.GetCustomAttributes(typeof(T), false).FirstOrDefault();
    }

    static string Identifier(Type type)
    {
        return "{" + Attribute<GuidAttribute>(type).Value.ToUpperInvariant() + "}";
    }

    static string Value(ParameterInfo parameter)
    {
        object value = parameter.RawDefaultValue;
        if (value == null) return " = null";
        if (value is string) return " = \"" + value + "\"";
        if (value is bool) return " = " + value;
        return " = " + Convert.ToInt64(value);
    }

    static string Marshalling(ParameterInfo parameter)
    {
        var marshal = Attribute<MarshalAsAttribute>(parameter);
        return marshal == null ? "" : " as " + marshal.Value;
    }

    static string Text(ParameterInfo parameter)
    {
        string text = parameter.ParameterType.Name + Marshalling(parameter) + " " + parameter.Name;
        if (!parameter.IsOptional) return text;
        bool has_value = (parameter.Attributes & ParameterAttributes.HasDefault) != 0;
        return text + "?" + (has_value ? Value(parameter) : "");
    }

    // An accessor has its number from its property, too.
    static string Number(MethodInfo method)
    {
        int number = Attribute<DispIdAttribute>(method).Value;
        var owner = method.DeclaringType.GetProperties()
            .FirstOrDefault(property => property.GetAccessors().Contains(method));
        bool same = owner == null || Attribute<DispIdAttribute>(owner).Value == number;
        return same ? number.ToString() : number + " unlike its property";
    }

    static void PrintMethod(MethodInfo method)
    {
        var parameters = string.Join(", ", method.GetParameters().Select(Text));
        Console.WriteLine("  {0} {1}({2}): {3}{4}", Number(method), method.Name,
            parameters, method.ReturnType.Name, Marshalling(method.ReturnParameter));
    }

    static void PrintInterface(Type type)
    {
        Console.WriteLine("interface {0} {1} {2}", type.Name, Identifier(type),
            Attribute<InterfaceTypeAttribute>(type).Value);
        // The order of the tokens is that of the vtable.
        foreach (var method in type.GetMethods().Where(method => method.DeclaringType == type)
                     .OrderBy(method => method.MetadataToken))
            PrintMethod(method);
    }

    static void PrintClass(Type type)
    {
        Type made = Attribute<CoClassAttribute>(type).CoClass;
        Type face = type.GetInterfaces().First(known => known.Name[0] == '_');
        var source = Attribute<ComSourceInterfacesAttribute>(made);
        Console.WriteLine("class {0} {1} {2} {3} {4}", type.Name, Identifier(made), face.Name,
            Identifier(type) == Identifier(face) ? "same" : "another", source == null ? "" : source.Value);
    }

    static void PrintEnumeration(Type type)
    {
        Console.WriteLine("enum {0} {1}", type.Name, Identifier(type));
        foreach (var field in type.GetFields(BindingFlags.Public | BindingFlags.Static))
            Console.WriteLine("  {0} = {1}", field.Name, Convert.ToInt64(field.GetRawConstantValue()));
    }

    static void Main(string[] arguments)
    {
        foreach (var type in Assembly.LoadFrom(arguments[0]).GetTypes())
        {
            if (type.IsEnum) PrintEnumeration(type);
            else if (Attribute<CoClassAttribute>(type) != null) PrintClass(type);
            else if (type.IsInterface) PrintInterface(type);
        }
    }
}
