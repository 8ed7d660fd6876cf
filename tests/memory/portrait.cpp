// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/memory/portrait.h"

#include <vector>

#include "com/module.h"
#include "com/type_library.h"
#include "tests/support/type_library.h"

namespace pv::test {
namespace {

constexpr int kDeepest = 6;

struct Property {
  std::wstring name;
  DISPID id;
};
using Properties = std::vector<Property>;

std::wstring words_for(const VARIANT& value, int depth);

bool is_readable(const FunctionInfo& function) {
  return function.description().invkind == INVOKE_PROPERTYGET && function.has_result() &&
         function.inputs().empty() && function.description().memid != DISPID_NEWENUM;
}

struct Described {
  IID iid;
  Properties properties;
};

std::vector<Described> describe_classes() {
  std::vector<Described> described;
  for (const ClassInfo& each : classes_of(own_type_library().get())) {
    Described& next = described.emplace_back(each.interface_type.attributes().guid);
    for (const FunctionInfo& function : functions_of(each.interface_type)) {
      if (is_readable(function))
        next.properties.push_back({function.name(), function.description().memid});
    }
  }
  return described;
}

/// Nothing for objects that are not of the library.
const Properties* properties_of(IDispatch* object) {
  static const std::vector<Described> known = describe_classes();
  for (const Described& each : known) {
    Ref<IUnknown> found;
    object->QueryInterface(each.iid, reinterpret_cast<void**>(found.put()));
    if (found) return &each.properties;
  }
  return nullptr;
}

std::wstring words_for_members(const Object& object, int depth) {
  const Outcome held = object.invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET);
  const auto members = held.value.is_object() ? query<IEnumVARIANT>(held.value.punkVal) : nullptr;
  if (!members) return {};
  std::wstring words = L"[";
  for (Value member; members->Next(1, &member, nullptr) == S_OK; VariantClear(&member))
    words += words_for(member, depth) + L" ";
  return words + L"]";
}

std::wstring words_for_object(const Object& object, int depth) {
  const Properties* const properties = depth < kDeepest ? properties_of(object.get()) : nullptr;
  if (!properties) return L"object";
  std::wstring words = L"{";
  for (const Property& property : *properties) {
    const Outcome outcome = object.invoke(property.id, DISPATCH_PROPERTYGET);
    words += property.name + L"=";
    words += outcome.worked() ? words_for(outcome.value, depth + 1)
                              : L"error " + std::to_wstring(outcome.number());
    words += L";";
  }
  return words + words_for_members(object, depth + 1) + L"}";
}

std::wstring words_for(const VARIANT& given, int depth) {
  const Value value(dereferenced(given));
  if (value.is_nothing()) return L"nothing";
  if (value.vt == VT_DISPATCH) return words_for_object(Object(value), depth);
  if (value.vt == VT_UNKNOWN) return L"object";
  if (value.vt == VT_DATE) return L"a date";  // some are of now
  if (value.vt == VT_EMPTY || value.vt == VT_NULL || value.vt == VT_ERROR || (value.vt & VT_ARRAY))
    return L"kind " + std::to_wstring(value.vt);
  return value.text();
}

}  // namespace

Object create(std::wstring_view class_name) {
  for (const ClassEntry& entry : library().classes) {
    if (entry.name != class_name) continue;
    Ref<IDispatch> object;
    if (FAILED(entry.create(IID_IDispatch, reinterpret_cast<void**>(object.put())))) break;
    return Object(object);
  }
  throw CallFailed("cannot create an object");
}

std::wstring portrait_of(const Object& object) { return words_for_object(object, 0); }
std::wstring portrait_of(const VARIANT& value) { return words_for(value, 0); }

}  // namespace pv::test
