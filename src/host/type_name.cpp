// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "host/type_name.h"

#include "com/failure.h"
#include "com/floating_point.h"
#include "com/variant.h"

namespace pv {
namespace {

std::wstring name_of(const Ref<ITypeInfo>& type) {
  if (!type) return {};
  BSTR name = nullptr;
  const HRESULT named = type->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
  const Bstr owner = Bstr::attach(name);
  if (is_out_of_memory(named)) raise_foreign_failure(named);  // who knows what it is called
  return std::wstring(view_of(name));
}

// A dispatch interface is named after its class, with a mark or letter before it.
std::wstring without_prefix(std::wstring name) {
  const bool lettered = name.size() > 1 && name[0] == L'I' && IsCharUpperW(name[1]);
  if (lettered || name.starts_with(L'_')) name.erase(0, 1);
  return name;
}

}  // namespace

std::wstring type_name_of(IDispatch* object) {
  const HostFloatingPoint in_host;  // the object tells
  Ref<ITypeInfo> type;
  if (const auto provider = query<IProvideClassInfo>(object)) {
    if (SUCCEEDED(provider->GetClassInfo(type.put())) && type) return name_of(type);
  }
  if (!object || FAILED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.put()))) return {};
  return without_prefix(name_of(type));
}

}  // namespace pv
