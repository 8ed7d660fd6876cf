// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/type_library.h"

#include <array>
#include <stdexcept>
#include <utility>

#include "com/variant.h"

namespace pv::test {
namespace {

constexpr int kPuts = INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF;

void require(HRESULT result) {
  if (FAILED(result)) throw std::runtime_error("the type library cannot be read");
}

std::wstring taken(BSTR text) {
  std::wstring copy(view_of(text));
  SysFreeString(text);
  return copy;
}

}  // namespace

TypeInfo::TypeInfo(Ref<ITypeInfo> info) : info_(std::move(info)) {
  require(info_->GetTypeAttr(&attributes_));
}

std::wstring TypeInfo::name_of(MEMBERID member) const {
  BSTR name = nullptr;
  require(info_->GetDocumentation(member, &name, nullptr, nullptr, nullptr));
  return taken(name);
}

std::wstring TypeInfo::help_of(MEMBERID member) const {
  BSTR help = nullptr;
  require(info_->GetDocumentation(member, nullptr, &help, nullptr, nullptr));
  return taken(help);
}

DWORD TypeInfo::help_context_of(MEMBERID member) const {
  DWORD context = 0;
  require(info_->GetDocumentation(member, nullptr, nullptr, &context, nullptr));
  return context;
}

TypeInfo TypeInfo::referenced(HREFTYPE reference) const {
  Ref<ITypeInfo> info;
  require(info_->GetRefTypeInfo(reference, info.put()));
  return TypeInfo(info);
}

TypeInfo TypeInfo::implemented(UINT index) const {
  HREFTYPE reference = 0;
  require(info_->GetRefTypeOfImplType(index, &reference));
  return referenced(reference);
}

int TypeInfo::implementation_flags(UINT index) const {
  int flags = 0;
  require(info_->GetImplTypeFlags(index, &flags));
  return flags;
}

FunctionInfo::FunctionInfo(const TypeInfo& owner, UINT index) : owner_(owner.get()) {
  require(owner_->GetFuncDesc(index, &description_));
  std::array<BSTR, 64> names{};
  UINT count = 0;
  owner_->GetNames(description_->memid, names.data(), static_cast<UINT>(names.size()), &count);
  name_ = taken(names[0]);
  for (SHORT i = 0; i < description_->cParams; ++i) {
    const ELEMDESC& element = description_->lprgelemdescParam[i];
    const USHORT flags = element.paramdesc.wParamFlags;
    const bool has_default = (flags & PARAMFLAG_FHASDEFAULT) != 0;
    // The names of a member are those of its first kind; a new value has none of its own.
    const bool is_new_value = is_put() && i + 1 == description_->cParams;
    std::wstring name = taken(std::exchange(names[static_cast<std::size_t>(i) + 1], nullptr));
    if (is_new_value) name.clear();
    parameters_.push_back(
        {std::move(name), element.tdesc, flags,
         has_default ? &element.paramdesc.pparamdescex->varDefaultValue : nullptr});
  }
}

FunctionInfo::FunctionInfo(FunctionInfo&& other) noexcept
    : owner_(other.owner_),
      description_(std::exchange(other.description_, nullptr)),
      name_(std::move(other.name_)),
      parameters_(std::move(other.parameters_)) {}

FunctionInfo::~FunctionInfo() {
  if (description_) owner_->ReleaseFuncDesc(description_);
}

std::span<const ParameterInfo> FunctionInfo::inputs() const {
  return std::span(parameters_).first(parameters_.size() - (has_result() ? 1 : 0));
}

bool FunctionInfo::is_put() const { return (description_->invkind & kPuts) != 0; }

std::vector<TypeInfo> types_of(ITypeLib* library) {
  std::vector<TypeInfo> types;
  const UINT count = library->GetTypeInfoCount();
  types.reserve(count);
  for (UINT i = 0; i < count; ++i) {
    Ref<ITypeInfo> info;
    require(library->GetTypeInfo(i, info.put()));
    types.emplace_back(info);
  }
  return types;
}

TypeInfo vtable_view_of(const TypeInfo& type) {
  HREFTYPE reference = 0;
  const bool is_dual = (type.attributes().wTypeFlags & TYPEFLAG_FDUAL) != 0;
  if (!is_dual || type.attributes().typekind != TKIND_DISPATCH) return type;
  require(type.get()->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
  return type.referenced(reference);
}

std::vector<FunctionInfo> functions_of(const TypeInfo& type) {
  std::vector<FunctionInfo> functions;
  for (UINT i = 0; i < type.attributes().cFuncs; ++i) functions.emplace_back(type, i);
  return functions;
}

namespace {

PlainType plain_type_of_named(const TypeInfo& named) {
  switch (named.attributes().typekind) {
    case TKIND_ENUM:
      return {VT_I4, {}, 0};
    case TKIND_ALIAS:
      return plain_type_of(named, named.attributes().tdescAlias);
    default:
      return {VT_DISPATCH, named.attributes().guid, -1};  // its own pointer does not count
  }
}

}  // namespace

PlainType plain_type_of(const TypeInfo& owner, const TYPEDESC& type) {
  switch (type.vt) {
    case VT_PTR: {
      PlainType pointee = plain_type_of(owner, *type.lptdesc);
      ++pointee.pointers;
      return pointee;
    }
    case VT_USERDEFINED:
      return plain_type_of_named(owner.referenced(type.hreftype));
    case VT_DISPATCH:
      return {VT_DISPATCH, IID_IDispatch, 0};
    case VT_UNKNOWN:
      return {VT_UNKNOWN, IID_IUnknown, 0};
    default:
      return {type.vt, {}, 0};
  }
}

std::vector<ClassInfo> classes_of(ITypeLib* library) {
  std::vector<ClassInfo> classes;
  for (const TypeInfo& type : types_of(library)) {
    const TYPEATTR& attributes = type.attributes();
    if (attributes.typekind != TKIND_COCLASS || !(attributes.wTypeFlags & TYPEFLAG_FCANCREATE)) {
      continue;
    }
    Ref<ITypeInfo> default_interface;
    IID source = IID_NULL;
    for (UINT i = 0; i < attributes.cImplTypes; ++i) {
      const TypeInfo implemented = type.implemented(i);
      if (type.implementation_flags(i) & IMPLTYPEFLAG_FSOURCE) {
        source = implemented.attributes().guid;
      } else if (type.implementation_flags(i) & IMPLTYPEFLAG_FDEFAULT) {
        default_interface = implemented.get();
      }
    }
    classes.push_back(
        {type.name(), attributes.guid, type, vtable_view_of(TypeInfo(default_interface)), source});
  }
  return classes;
}

const ClassInfo& class_named(const std::vector<ClassInfo>& classes, std::string_view plain_name) {
  for (const ClassInfo& each : classes) {
    if (each.plain_name() == plain_name) return each;
  }
  throw std::runtime_error("there is no class " + std::string(plain_name));
}

const ClassInfo* class_with(const std::vector<ClassInfo>& classes, REFIID default_interface) {
  for (const ClassInfo& each : classes) {
    if (each.interface_type.attributes().guid == default_interface) return &each;
  }
  return nullptr;
}

std::wstring text_of_guid(REFGUID guid) {
  wchar_t text[40];
  StringFromGUID2(guid, text, ARRAYSIZE(text));
  return text;
}

}  // namespace pv::test
