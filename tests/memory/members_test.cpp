// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Members of all kinds, called late-bound with every allocation failing once.

#include <gtest/gtest.h>

#include <set>

#include "com/module.h"
#include "com/type_library.h"
#include "tests/memory/host.h"
#include "tests/memory/tables.h"
#include "tests/memory/trial.h"
#include "tests/support/module.h"
#include "tests/support/sample_values.h"
#include "tests/support/type_library.h"

namespace pv::test {
namespace {

// Members that open a window, or write to the file of a given number.
const std::set<std::wstring> kLeftOut = {
    L"pvMsgBox", L"ItemAccessEdit", L"ItemSymbolEdit", L"ShowMe",         L"ShowMePW",
    L"ShowMeDT", L"Edit",           L"GetIniSettings", L"SaveIniSection", L"SaveIniSettings"};

/// Every member of a class with arguments that it takes, on an object with something in it.
class EveryMember : public testing::TestWithParam<std::string> {
 protected:
  EveryMember()
      : classes_(classes_of(own_type_library().get())), tested_(class_named(classes_, GetParam())) {
    SetCurrentDirectoryW(scratch_folder().c_str());
  }
  ~EveryMember() override { SetCurrentDirectoryW(program_folder().c_str()); }

  /// `key` is the text or number that values of any kind are.
  std::vector<Value> arguments_of(const FunctionInfo& function, const Value& key) const {
    std::vector<Value> arguments;
    for (const ParameterInfo& input : function.inputs()) {
      arguments.push_back(argument_for(input, key));
    }
    return arguments;
  }

  Object tested_object(const std::vector<FunctionInfo>& functions) const {
    const Object object = create(tested_.name);
    for (const FunctionInfo& function : functions) {
      if (function.name() == L"Add") add_to(object, function);
    }
    return object;
  }

  const ClassInfo& tested() const { return tested_; }

 private:
  Value argument_for(const ParameterInfo& parameter, const Value& key) const {
    const PlainType type = plain_type_of(tested_.interface_type, parameter.type);
    if (type.is_interface()) return object_for(type.iid);
    return type.type == VT_VARIANT ? key : usual_value(type.type);
  }

  Value object_for(REFIID iid) const {
    if (iid == IID_IDispatch) {
      return host_object([](const std::wstring&, const HostArguments&) { return Value(L"1"); });
    }
    const ClassInfo* const found = class_with(classes_, iid);
    return found ? Value(create(found->name)) : Value::nothing();
  }

  void add_to(const Object& object, const FunctionInfo& add) const {
    const std::vector<Value> arguments = arguments_of(add, kLongText);
    const std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    object.invoke(add.description().memid, DISPATCH_METHOD, reversed);
  }

  std::vector<ClassInfo> classes_;
  const ClassInfo& tested_;
};

TEST_P(EveryMember, RunsOutOfMemoryCleanly) {
  const auto functions = functions_of(tested().interface_type);
  for (const FunctionInfo& function : functions) {
    if (kLeftOut.contains(function.name())) continue;
    for (const Value& key : {Value(1), Value(kLongText)}) {
      Trial trial;
      trial.prepare = [&] { return Scene{tested_object(functions), arguments_of(function, key)}; };
      trial.member = function.name();
      trial.kind = static_cast<WORD>(function.description().invkind);
      trial.works = false;  // of all these calls, some are refused
      fail_everywhere(trial);
    }
  }
}

std::vector<std::string> names_of_classes() {
  std::vector<std::string> names;
  for (const ClassInfo& each : classes_of(own_type_library().get())) {
    names.push_back(each.plain_name());
  }
  return names;
}

INSTANTIATE_TEST_SUITE_P(Classes, EveryMember, testing::ValuesIn(names_of_classes()),
                         [](const auto& info) { return info.param; });

TEST(ChangingACollection, LeavesItAsItWasWithoutMemory) {
  const Value long_key(L"a key that takes memory of its own");
  const auto fails = [](const std::function<Object()>& object, const wchar_t* member,
                        const std::vector<Value>& arguments) {
    EXPECT_GT(fail_everywhere(object, member, arguments), 0);
  };
  fails(two_items, L"Add", {long_key, 3, true, 0, true, false, 0.5f, 4});
  fails(two_items, L"Sort", {false});
  fails(two_items, L"ChangeKey", {L"1", long_key});
  fails(two_items, L"ChangeKey", {1, long_key});
  fails(two_items, L"ChangeID", {1, 4711});
  fails(a_version, L"ChangeTitle", {1, long_key});
  fails(a_list, L"ChangeTitle", {1, long_key});
  fails(a_dimension, L"ChangeTitle", {1, long_key});
  fails([] { return a_list().get_object(L"Item", 1).get_object(L"ListMembers"); }, L"ChangeKey",
        {1, long_key});
  fails([] { return a_version().get_object(L"Item", 1).get_object(L"VerItems"); }, L"ChangeKey",
        {1, long_key});
}

// It is kept beside the variable, where it is made when it is needed.
TEST(SettingATolerance, KeepsTheFormerOneWithoutMemory) {
  const auto fresh = [] { return create(L"CVariable"); };
  const auto tolerant = [] {
    const Object variable = create(L"CVariable");
    variable.put(L"Tolerance", 0.5);
    return variable;
  };
  EXPECT_EQ(fail_everywhere(fresh, L"Tolerance", {0.25}, DISPATCH_PROPERTYPUT), 1);
  EXPECT_EQ(fail_everywhere(tolerant, L"Tolerance", {0.25}, DISPATCH_PROPERTYPUT), 1);
}

/// Objects of the same class, with other texts in them.
struct Pair {
  Object source, destination;
};

Object named_version(const wchar_t* name) {
  const Object version = create(L"CVersion");
  version.put(L"Name", std::wstring(L"A version that is not short: ") + name);
  for (const wchar_t* key : {L"1", L"2"}) {
    version.get_object(L"VerItems").call(L"Add", std::wstring(name) + key, kLongText);
  }
  return version;
}

Object named_list(const wchar_t* name) {
  const Object list = create(L"CDList");
  for (const wchar_t* text : {L"Key", L"Caption"}) {
    list.put(text, std::wstring(L"A list that is not short: ") + name);
  }
  for (const wchar_t* key : {L"1", L"2"}) {
    list.get_object(L"ListMembers").call(L"Add", std::wstring(name) + key, kLongText, key);
  }
  return list;
}

Object named_dimension(const wchar_t* name) {
  const Object dimension = create(L"CDimension");
  dimension.put(L"Caption", std::wstring(L"A dimension that is not short: ") + name);
  for (const wchar_t* key : {L"1", L"2"}) {
    dimension.get_object(L"Units").call(L"Add", key, std::wstring(kLongText) + name + key, 2.0,
                                        1.0);
  }
  return dimension;
}

Object first_member(const Object& collection) { return collection.get_object(L"Item", 1); }

TEST(Copying, LeavesTheDestinationAsItWasWithoutMemory) {
  const std::vector<std::function<Pair()>> pairs = {
      [] {
        const Object items = two_items();
        return Pair{items.get_object(L"Item", 1), items.get_object(L"Item", 2)};
      },
      [] {
        return Pair{named_version(L"one"), named_version(L"two")};
      },
      [] {
        return Pair{named_list(L"one"), named_list(L"two")};
      },
      [] {
        return Pair{named_dimension(L"one"), named_dimension(L"two")};
      },
      [] {
        return Pair{first_member(named_version(L"a long one").get_object(L"VerItems")),
                    first_member(named_version(L"two").get_object(L"VerItems"))};
      },
      [] {
        return Pair{first_member(named_list(L"a long one").get_object(L"ListMembers")),
                    first_member(named_list(L"two").get_object(L"ListMembers"))};
      }};
  for (const auto& pair : pairs) {
    EXPECT_GT(fail_everywhere({[&] {
                                 const Pair made = pair();
                                 return Scene{made.source, {made.destination}};
                               },
                               L"Copy"}),
              2);
  }
}

TEST(TakingAChunk, CutsTheTextOnlyWhenItGivesTheChunk) {
  EXPECT_GT(
      fail_everywhere({[] {
                         const auto text = std::make_shared<Value>(kLongText);
                         return Scene{create(L"CComUtility"), {Value(by_ref(*text)), 12}, text};
                       },
                       L"GetChunk"}),
      2);
}

TEST(AFullHistory, KeepsItsOldestRecordWithoutMemory) {
  const auto history = [] {
    const Object full = create(L"CComHistory");
    full.put(L"Maximum", 2);
    for (const wchar_t* text : {L"1", L"2"}) {
      const Object record = create(L"CComDetail");
      record.put(L"CmdString", text);
      full.call(L"Add", record);
    }
    return full;
  };
  EXPECT_GT(fail_everywhere(history, L"Add", {create(L"CComDetail")}), 0);
}

}  // namespace
}  // namespace pv::test
