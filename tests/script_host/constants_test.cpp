// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Every constant of the type library is known to scripts by its name.

#include <gtest/gtest.h>

#include "tests/script_host/script_host.h"
#include "tests/script_host/type_constants.h"
#include "tests/support/type_library.h"

namespace pv::test {
namespace {

struct Constant {
  std::wstring name;
  Value value;
};

std::vector<Constant> constants_of(ITypeLib* library) {
  std::vector<Constant> constants;
  for (const TypeInfo& type : types_of(library)) {
    if (type.attributes().typekind != TKIND_ENUM) continue;
    for (UINT i = 0; i < type.attributes().cVars; ++i) {
      VARDESC* description = nullptr;
      if (FAILED(type.get()->GetVarDesc(i, &description))) throw CallFailed("no constant");
      constants.push_back({type.name_of(description->memid), Value(*description->lpvarValue)});
      type.get()->ReleaseVarDesc(description);
    }
  }
  return constants;
}

class Constants : public testing::TestWithParam<const wchar_t*> {};

TEST_P(Constants, AllResolveByTheirNames) {
  const Ref<ITypeLib> library = type_library_of_class(L"pvItems32.CItems");
  ScriptHost host([](const std::string& error) { ADD_FAILURE() << error; });
  host.add_constants(library);
  const std::vector<Constant> constants = constants_of(library.get());
  EXPECT_GT(constants.size(), 100u);
  for (const Constant& constant : constants) {
    EXPECT_EQ(host.engine(GetParam()).evaluate(constant.name), constant.value)
        << printable(constant.name);
  }
}

INSTANTIATE_TEST_SUITE_P(All, Constants, testing::Values(L"VBScript", L"JScript"),
                         [](const auto& language) { return printable(language.param); });

}  // namespace
}  // namespace pv::test
