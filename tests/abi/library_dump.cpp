// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/abi/library_dump.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <vector>

#include "tests/support/type_library.h"
#include "tests/support/value.h"

namespace pv::test {
namespace {

std::string text_of_type(const TypeInfo& owner, const TYPEDESC& type) {
  static const std::map<VARTYPE, const char*> kNames = {
      {VT_I2, "short"},          {VT_I4, "long"},
      {VT_R4, "float"},          {VT_R8, "double"},
      {VT_CY, "CURRENCY"},       {VT_DATE, "DATE"},
      {VT_BSTR, "BSTR"},         {VT_DISPATCH, "IDispatch*"},
      {VT_ERROR, "SCODE"},       {VT_BOOL, "VARIANT_BOOL"},
      {VT_VARIANT, "VARIANT"},   {VT_UNKNOWN, "IUnknown*"},
      {VT_UI1, "unsigned char"}, {VT_HRESULT, "HRESULT"},
      {VT_VOID, "void"},         {VT_INT, "int"}};
  if (type.vt == VT_PTR) return text_of_type(owner, *type.lptdesc) + "*";
  if (type.vt == VT_USERDEFINED) return printable(owner.referenced(type.hreftype).name());
  const auto found = kNames.find(type.vt);
  return found != kNames.end() ? found->second : "type" + std::to_string(type.vt);
}

std::string text_of_value(const VARIANT& value) {
  std::ostringstream text;
  PrintTo(Value(value), &text);
  return text.str();
}

std::string text_of_flags(USHORT flags) {
  const std::pair<int, const char*> names[] = {{PARAMFLAG_FIN, "in"},
                                               {PARAMFLAG_FOUT, "out"},
                                               {PARAMFLAG_FRETVAL, "retval"},
                                               {PARAMFLAG_FOPT, "optional"}};
  std::string text;
  for (const auto& [flag, name] : names) {
    if (flags & flag) text.append(text.empty() ? "" : ",").append(name);
  }
  return text;
}

const char* text_of_kind(INVOKEKIND kind) {
  switch (kind) {
    case INVOKE_PROPERTYGET:
      return "get";
    case INVOKE_PROPERTYPUT:
      return "put";
    case INVOKE_PROPERTYPUTREF:
      return "putref";
    default:
      return "call";
  }
}

void dump_function(std::ostream& out, const TypeInfo& owner, const FunctionInfo& function) {
  const FUNCDESC& description = function.description();
  out << "  " << description.memid << " " << text_of_kind(description.invkind) << " "
      << text_of_type(owner, description.elemdescFunc.tdesc) << " " << printable(function.name());
  if (description.funckind == FUNC_PUREVIRTUAL) {
    out << " slot " << static_cast<std::size_t>(description.oVft) / sizeof(void*);
  }
  if (description.wFuncFlags) out << " flags " << description.wFuncFlags;
  out << " help " << owner.help_context_of(description.memid) << "\n";
  for (const ParameterInfo& parameter : function.parameters()) {
    out << "    [" << text_of_flags(parameter.flags) << "] " << text_of_type(owner, parameter.type)
        << " " << printable(parameter.name);
    if (parameter.default_value) out << " = " << text_of_value(*parameter.default_value);
    out << "\n";
  }
}

void dump_values(std::ostream& out, const TypeInfo& type) {
  for (UINT i = 0; i < type.attributes().cVars; ++i) {
    VARDESC* variable = nullptr;
    if (FAILED(type.get()->GetVarDesc(i, &variable))) continue;
    out << "  " << printable(type.name_of(variable->memid)) << " = "
        << text_of_value(*variable->lpvarValue) << " help " << type.help_context_of(variable->memid)
        << "\n";
    type.get()->ReleaseVarDesc(variable);
  }
}

void dump_implemented(std::ostream& out, const TypeInfo& type) {
  for (UINT i = 0; i < type.attributes().cImplTypes; ++i) {
    const int flags = type.implementation_flags(i);
    out << "  " << (flags & IMPLTYPEFLAG_FDEFAULT ? "default " : "")
        << (flags & IMPLTYPEFLAG_FSOURCE ? "source " : "") << printable(type.implemented(i).name())
        << "\n";
  }
}

void dump_type(std::ostream& out, const TypeInfo& type) {
  const TYPEATTR& attributes = type.attributes();
  const std::map<TYPEKIND, const char*> kinds = {{TKIND_ENUM, "enum"},
                                                 {TKIND_DISPATCH, "interface"},
                                                 {TKIND_INTERFACE, "interface"},
                                                 {TKIND_COCLASS, "class"},
                                                 {TKIND_ALIAS, "alias"}};
  const auto kind = kinds.find(attributes.typekind);
  out << "\n"
      << (kind == kinds.end() ? "type" : kind->second) << " " << printable(type.name()) << " "
      << printable(text_of_guid(attributes.guid)) << " flags " << attributes.wTypeFlags << " help "
      << type.help_context_of(MEMBERID_NIL) << "\n";
  if (attributes.typekind == TKIND_ENUM) dump_values(out, type);
  if (attributes.typekind == TKIND_COCLASS) dump_implemented(out, type);
  if (attributes.typekind == TKIND_DISPATCH) {
    const TypeInfo view = vtable_view_of(type);
    for (const FunctionInfo& function : functions_of(view)) dump_function(out, view, function);
  }
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

// lengths[i][k]: the longest common sequence of lines from i and k on.
std::vector<std::vector<int>> common_lengths(const std::vector<std::string>& left,
                                             const std::vector<std::string>& right) {
  std::vector<std::vector<int>> lengths(left.size() + 1, std::vector<int>(right.size() + 1));
  for (std::size_t i = left.size(); i-- > 0;) {
    for (std::size_t k = right.size(); k-- > 0;) {
      lengths[i][k] = left[i] == right[k] ? lengths[i + 1][k + 1] + 1
                                          : std::max(lengths[i + 1][k], lengths[i][k + 1]);
    }
  }
  return lengths;
}

}  // namespace

std::string dump_of(ITypeLib* library) {
  std::ostringstream out;
  TLIBATTR* attributes = nullptr;
  BSTR name = nullptr;
  library->GetLibAttr(&attributes);
  library->GetDocumentation(-1, &name, nullptr, nullptr, nullptr);
  out << "library " << printable(view_of(name)) << " " << printable(text_of_guid(attributes->guid))
      << " version " << attributes->wMajorVerNum << "." << attributes->wMinorVerNum << " locale "
      << attributes->lcid << "\n";
  SysFreeString(name);
  library->ReleaseTLibAttr(attributes);
  for (const TypeInfo& type : types_of(library)) dump_type(out, type);
  return out.str();
}

std::string difference_between(const std::string& expected, const std::string& actual) {
  const auto left = lines_of(expected), right = lines_of(actual);
  const auto lengths = common_lengths(left, right);
  std::ostringstream out;
  std::string heading, shown_heading;
  const auto show = [&](const char* mark, const std::string& line) {
    if (heading != shown_heading) out << "  " << heading << "\n";
    shown_heading = heading;
    out << mark << line << "\n";
  };
  std::size_t i = 0, k = 0;
  while (i < left.size() || k < right.size()) {
    if (i < left.size() && k < right.size() && left[i] == right[k]) {
      if (!left[i].empty() && left[i][0] != ' ') heading = left[i];
      ++i, ++k;
    } else if (k == right.size() || (i < left.size() && lengths[i + 1][k] >= lengths[i][k + 1])) {
      show("- ", left[i++]);
    } else {
      show("+ ", right[k++]);
    }
  }
  return out.str();
}

}  // namespace pv::test
