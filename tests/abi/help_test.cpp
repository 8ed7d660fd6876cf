// Everything that the contract publishes carries a help text.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "tests/support/module.h"
#include "tests/support/source_tree.h"
#include "tests/support/type_library.h"
#include "tests/support/value.h"

namespace pv::test {
namespace {

template <class Visit>
void for_each_type(TYPEKIND kind, Visit&& visit) {
  const Module module;
  int visited = 0;
  for (const TypeInfo& type : types_of(module.type_library().get())) {
    if (type.attributes().typekind != kind) continue;
    ++visited;
    SCOPED_TRACE(printable(type.name()));
    visit(type);
  }
  EXPECT_GT(visited, 0);
}

TEST(Help, LibraryHasOne) {
  const Module module;
  BSTR help = nullptr;
  module.type_library()->GetDocumentation(-1, nullptr, &help, nullptr, nullptr);
  EXPECT_GT(SysStringLen(help), 0u);
  SysFreeString(help);
}

TEST(Help, EveryTypeHasOne) {
  for (TYPEKIND kind : {TKIND_COCLASS, TKIND_DISPATCH, TKIND_ENUM}) {
    for_each_type(kind, [](const TypeInfo& type) { EXPECT_NE(type.help_of(MEMBERID_NIL), L""); });
  }
}

TEST(Help, EveryMemberHasOne) {
  for_each_type(TKIND_DISPATCH, [](const TypeInfo& type) {
    for (const FunctionInfo& function : functions_of(vtable_view_of(type))) {
      EXPECT_NE(type.help_of(function.description().memid), L"") << printable(function.name());
    }
  });
}

TEST(Help, EveryValueOfAnEnumerationHasOne) {
  for_each_type(TKIND_ENUM, [](const TypeInfo& type) {
    for (UINT i = 0; i < type.attributes().cVars; ++i) {
      VARDESC* variable = nullptr;
      ASSERT_EQ(type.get()->GetVarDesc(i, &variable), S_OK);
      EXPECT_NE(type.help_of(variable->memid), L"") << printable(type.name_of(variable->memid));
      type.get()->ReleaseVarDesc(variable);
    }
  });
}

// From declarations such as ENUM_VALUE(edtBit, 1, "One bit.").
std::map<std::string, std::string> declared_help_of_values() {
  std::ifstream file(source_file("typelib/pvItems32.idl"));
  const std::string contract((std::istreambuf_iterator<char>(file)), {});
  const std::string declaration = "ENUM_VALUE(";
  std::map<std::string, std::string> texts;
  for (std::size_t name = 0; (name = contract.find(declaration, name)) != std::string::npos;) {
    name += declaration.size();
    const std::size_t text = contract.find('"', name) + 1;
    texts[contract.substr(name, contract.find(',', name) - name)] =
        contract.substr(text, contract.find('"', text) - text);
  }
  return texts;
}

TEST(Help, OfValuesIsWhatTheContractSays) {
  std::map<std::string, std::string> texts = declared_help_of_values();
  EXPECT_GT(texts.size(), 0u);
  for_each_type(TKIND_ENUM, [&](const TypeInfo& type) {
    for (UINT i = 0; i < type.attributes().cVars; ++i) {
      VARDESC* variable = nullptr;
      ASSERT_EQ(type.get()->GetVarDesc(i, &variable), S_OK);
      const std::string name = printable(type.name_of(variable->memid));
      EXPECT_EQ(printable(type.help_of(variable->memid)), texts[name]) << name;
      type.get()->ReleaseVarDesc(variable);
    }
  });
}

}  // namespace
}  // namespace pv::test
