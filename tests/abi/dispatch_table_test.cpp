// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The dispatch tables that the build writes, against what the compiled type libraries say: every
// member, every parameter, every name.

#include "com/dispatch/dispatch_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "com/type_library.h"
#include "com/variant.h"
#include "core/text/ascii.h"
#include "probe_dispatch.h"
#include "pvItems32_dispatch.h"
#include "tests/support/module.h"
#include "tests/support/type_library.h"
#include "tests/support/value.h"

namespace pv::test {
namespace {

std::wstring small(std::wstring_view name) {
  std::wstring copy(name);
  for (wchar_t& c : copy) c = lower_ascii(c);
  return copy;
}

/// The names of a member and its parameters, as the platform gives them for its id.
class PlatformNames {
 public:
  PlatformNames(const TypeInfo& type, MEMBERID member) {
    EXPECT_EQ(
        type.get()->GetNames(member, names_.data(), static_cast<UINT>(names_.size()), &count_),
        S_OK);
  }
  PlatformNames(const PlatformNames&) = delete;
  PlatformNames& operator=(const PlatformNames&) = delete;
  ~PlatformNames() {
    for (BSTR name : names_) SysFreeString(name);
  }
  std::wstring_view at(std::size_t index) const { return view_of(names_[index]); }

 private:
  std::array<BSTR, 64> names_{};
  UINT count_ = 0;
};

void expect_default(const Parameter& actual, const ParameterInfo& expected) {
  const VARIANT* const value = actual.is_interface() ? nullptr : expected.default_value;
  const bool is_text = value && value->vt == VT_BSTR;
  ASSERT_EQ(actual.default_text().has_value(), is_text);
  ASSERT_EQ(actual.plain_default() != nullptr, value && !is_text);
  if (is_text) {
    EXPECT_EQ(widen_ascii(*actual.default_text()), view_of(value->bstrVal));
  } else if (value) {
    const Variant meant = to_type(*value, actual.type());
    EXPECT_EQ(std::memcmp(actual.plain_default(), &meant.lVal, size_of(actual.type())), 0);
  }
}

void expect_parameter(const Parameter& actual, const TypeInfo& owner, const ParameterInfo& expected,
                      std::wstring_view name) {
  const PlainType type = plain_type_of(owner, expected.type);
  EXPECT_EQ(actual.type(), type.type);
  EXPECT_EQ(actual.by_ref(), type.pointers > 0);
  EXPECT_EQ(actual.optional(), expected.is_optional());
  EXPECT_EQ(widen_ascii(actual.name()), small(name));
  if (type.is_interface()) {
    EXPECT_EQ(text_of_guid(actual.iid()), text_of_guid(type.iid));
  }
  expect_default(actual, expected);
}

void expect_member(const Member& actual, const TypeInfo& owner, const FunctionInfo& expected) {
  const FUNCDESC& function = expected.description();
  EXPECT_EQ(actual.id(), function.memid);
  EXPECT_EQ(actual.kind(), function.invkind);
  EXPECT_EQ(actual.slot() * sizeof(void*), static_cast<std::size_t>(function.oVft));
  EXPECT_EQ(actual.has_result(), expected.has_result());
  ASSERT_EQ(actual.parameter_count(), expected.inputs().size());
  const PlatformNames names(owner, function.memid);
  for (std::size_t i = 0; i < expected.inputs().size(); ++i) {
    SCOPED_TRACE(i);
    expect_parameter(actual.parameter(i), owner, expected.inputs()[i], names.at(i + 1));
  }
  if (!actual.has_result()) return;
  const PlainType result = plain_type_of(owner, expected.parameters().back().type);
  EXPECT_EQ(actual.result().type(), result.type);
  EXPECT_EQ(actual.result().by_ref(), result.pointers > 0);
  EXPECT_FALSE(actual.result().optional());
}

void expect_found_by_name(const DispatchTable& table, const TypeInfo& owner,
                          const FunctionInfo& function) {
  const DISPID id = function.description().memid;
  std::wstring name = function.name();
  EXPECT_EQ(table.id_of(name.c_str()), id);
  for (wchar_t& c : name) c = upper_ascii(c);
  EXPECT_EQ(table.id_of(name.c_str()), id);
  EXPECT_EQ(table.id_of((name + L'\x130').c_str()), DISPID_UNKNOWN);
  EXPECT_EQ(table.id_of(name.substr(1).c_str()), DISPID_UNKNOWN);
  const PlatformNames names(owner, id);
  for (std::size_t i = 0; i < function.inputs().size(); ++i) {
    if (names.at(i + 1).empty()) continue;
    EXPECT_EQ(table.parameter_id(id, std::wstring(names.at(i + 1)).c_str()),
              static_cast<DISPID>(i));
  }
}

void expect_found_by_id(const DispatchTable& table, const FUNCDESC& function) {
  const auto found = table.find(function.memid, static_cast<WORD>(function.invkind));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->kind(), function.invkind);
  EXPECT_EQ(found->slot() * sizeof(void*), static_cast<std::size_t>(function.oVft));
}

// Members that are not described are not found.
void expect_nothing_else(const DispatchTable& table, const std::vector<FunctionInfo>& functions) {
  for (DISPID id = -20; id < 200; ++id) {
    const bool exists = std::any_of(functions.begin(), functions.end(), [&](const auto& function) {
      return function.description().memid == id;
    });
    const auto found = table.find(id, DISPATCH_METHOD | DISPATCH_PROPERTYGET);
    const auto put = table.find(id, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(found || put, exists) << id;
  }
  EXPECT_EQ(table.id_of(L""), DISPID_UNKNOWN);
  EXPECT_EQ(table.id_of(L"NoSuchMember"), DISPID_UNKNOWN);
}

void expect_described(const NamedDispatchTable& named, const std::vector<ClassInfo>& classes) {
  SCOPED_TRACE(printable(named.class_name));
  const std::wstring name(named.class_name);
  const TypeInfo type = class_named(classes, std::string(name.begin(), name.end())).interface_type;
  const auto functions = functions_of(type);
  ASSERT_EQ(named.table->member_count(), functions.size());
  for (std::size_t i = 0; i < functions.size(); ++i) {
    SCOPED_TRACE(printable(functions[i].name()));
    expect_member(named.table->member(i), type, functions[i]);
    expect_found_by_name(*named.table, type, functions[i]);
    expect_found_by_id(*named.table, functions[i].description());
  }
  expect_nothing_else(*named.table, functions);
}

template <std::size_t N>
void expect_all_described(const NamedDispatchTable (&tables)[N], ITypeLib* library) {
  const auto classes = classes_of(library);
  EXPECT_EQ(N, classes.size());
  for (const NamedDispatchTable& each : tables) expect_described(each, classes);
}

TEST(DispatchTables, AreThoseOfTheContract) {
  expect_all_described(kTablesOfpvItems32, Module().type_library().get());
}

TEST(DispatchTables, AreThoseOfAClassWithEveryKindOfArgument) {
  expect_all_described(kTablesOfProbe, own_type_library().get());
}

TEST(DispatchTables, KnowTheEnumeratorByTheNameOfThePlatformsTools) {
  EXPECT_EQ(kMembersOfCItems.id_of(L"_NewEnum"), DISPID_NEWENUM);
  EXPECT_EQ(kMembersOfCItems.id_of(L"NewEnum"), DISPID_NEWENUM);
  EXPECT_EQ(kMembersOfCItem.id_of(L"_NewEnum"), DISPID_UNKNOWN);
}

}  // namespace
}  // namespace pv::test
