// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Everything that the contract publishes carries a help text and the context of its topic in the
// help file. golden_test.cpp proves that the contexts are the published ones.

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

TEST(Help, OfVersionsIsTheSameForClassAndInterface) {
  const std::map<std::wstring, std::wstring> published = {
      {L"CVerItem", L"Contains the IndexKey which identfies an Item in Items collection."},
      {L"CVersion",
       L"Contains the lookup table to select the necessary items for different software versions"}};
  std::size_t found = 0;
  for (const TYPEKIND kind : {TKIND_COCLASS, TKIND_DISPATCH}) {
    for_each_type(kind, [&](const TypeInfo& type) {
      std::wstring name = type.name();
      if (name.starts_with(L'_')) name.erase(0, 1);
      if (!published.contains(name)) return;
      EXPECT_EQ(type.help_of(MEMBERID_NIL), published.at(name));
      ++found;
    });
  }
  EXPECT_EQ(found, 2 * published.size());
}

// A host that relies on a flag which nobody sets loses its edits.
TEST(Help, OfChangedSaysWhoSetsIt) {
  const std::map<std::wstring, std::vector<std::wstring>> said = {
      {L"_CItems", {L"True by Add", L"False by a load or save"}},
      {L"_CVersions", {L"by the host", L"no member sets it to True", L"A load or save"}},
      {L"_CDLists", {L"by the host", L"no member sets it to True", L"A load or save"}},
      {L"_CDListMembers", {L"by the host alone"}},
      {L"_CDimensions",
       {L"by the host", L"no member sets it to True", L"A load that worked", L"a save leaves it"}}};
  std::size_t found = 0;
  for_each_type(TKIND_DISPATCH, [&](const TypeInfo& type) {
    for (const FunctionInfo& function : functions_of(vtable_view_of(type))) {
      if (function.name() != L"Changed") continue;
      ASSERT_TRUE(said.contains(type.name()));
      const std::wstring help = type.help_of(function.description().memid);
      for (const std::wstring& part : said.at(type.name())) {
        EXPECT_NE(help.find(part), std::wstring::npos) << printable(part);
      }
      ++found;
    }
  });
  EXPECT_EQ(found, 2 * said.size());  // get and put
}

// As object browsers ask: the file's name with or without its folder.
void expect_help_file(BSTR name) {
  const std::wstring file = name ? name : L"";
  SysFreeString(name);
  EXPECT_TRUE(file.ends_with(L"pvItems32.chm")) << printable(file);
}

TEST(Help, LibraryNamesItsFile) {
  const Module module;
  BSTR file = nullptr;
  DWORD context = 0;
  ASSERT_EQ(module.type_library()->GetDocumentation(-1, nullptr, nullptr, &context, &file), S_OK);
  expect_help_file(file);
  // Wine answers with the context of the help text, which there is none of.
  EXPECT_TRUE(context == 1000 || context == 0) << context;
}

// What the contexts of a type and of its members belong to, by context.
class Topics {
 public:
  void add_type(const TypeInfo& type) {
    add(type, MEMBERID_NIL, topic_of(type));
    if (type.attributes().typekind == TKIND_ENUM) add_values(type);
    if (type.attributes().typekind != TKIND_DISPATCH) return;
    const TypeInfo view = vtable_view_of(type);
    for (const FunctionInfo& function : functions_of(view)) {
      const MEMBERID member = function.description().memid;
      add(view, member, topic_of(type) + L"." + function.name());
      EXPECT_EQ(type.help_context_of(member), view.help_context_of(member));
    }
  }
  std::size_t size() const { return topics_.size(); }

 private:
  // A class and its default interface are one topic, _CItem and CItem; __CItems are its events.
  static std::wstring topic_of(const TypeInfo& type) {
    const std::wstring name = type.name();
    return name.starts_with(L"_C") ? name.substr(1) : name;
  }
  void add_values(const TypeInfo& type) {
    for (UINT i = 0; i < type.attributes().cVars; ++i) {
      VARDESC* variable = nullptr;
      ASSERT_EQ(type.get()->GetVarDesc(i, &variable), S_OK);
      add(type, variable->memid, topic_of(type) + L"." + type.name_of(variable->memid));
      type.get()->ReleaseVarDesc(variable);
    }
  }
  void add(const TypeInfo& type, MEMBERID member, const std::wstring& topic) {
    BSTR file = nullptr;
    DWORD context = 0;
    ASSERT_EQ(type.get()->GetDocumentation(member, nullptr, nullptr, &context, &file), S_OK);
    SCOPED_TRACE(printable(topic));
    expect_help_file(file);
    EXPECT_NE(context, 0u);
    EXPECT_EQ(topics_.try_emplace(context, topic).first->second, topic) << context;
  }

  std::map<DWORD, std::wstring> topics_;
};

// A property and its setter share theirs, and so do a class and its default interface.
TEST(Help, EveryTopicHasItsOwnContext) {
  const Module module;
  Topics topics;
  for (const TypeInfo& type : types_of(module.type_library().get())) {
    topics.add_type(type);
    if (type.attributes().typekind != TKIND_COCLASS) continue;
    EXPECT_EQ(type.help_context_of(MEMBERID_NIL), type.implemented(0).help_context_of(MEMBERID_NIL))
        << printable(type.name());
  }
  EXPECT_GT(topics.size(), 500u);
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
