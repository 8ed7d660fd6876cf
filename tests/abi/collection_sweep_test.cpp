// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Every class with an enumerator, filled through its own Add.

#include <algorithm>
#include <cstring>

#include "tests/abi/sweep.h"

namespace pv::test {
namespace {

constexpr int kMembers = 4;

bool is_collection(const ClassInfo& entry) {
  const auto functions = functions_of(entry.interface_type);
  return std::any_of(functions.begin(), functions.end(), [](const FunctionInfo& function) {
    return function.description().memid == DISPID_NEWENUM;
  });
}

std::vector<std::string> collection_names() {
  std::vector<std::string> names;
  for (const ClassInfo& entry : classes_of(Module().type_library().get())) {
    if (is_collection(entry)) names.push_back(entry.plain_name());
  }
  return names;
}

class CollectionSweep : public ClassTest {
 protected:
  // A value that tells members apart wherever it is a key.
  Value distinct_value(const ParameterInfo& parameter, int number) const {
    const PlainType type = plain_type_of(parameter);
    if (type.type == VT_BSTR) return Value(L"key" + std::to_wstring(number));
    // Text, and yet a number where one is wanted.
    if (type.type == VT_VARIANT) return Value(std::to_wstring(100 + number));
    if (parameter.is_optional()) return Value::missing();
    if (type.is_interface()) return Value(object_for(type.iid));
    return Value(1);
  }

  Object filled() const {
    const Object collection = create();
    for (const FunctionInfo& function : functions()) {
      if (function.name() != L"Add") continue;
      for (int number = 1; number <= kMembers; ++number) add(collection, function, number);
    }
    return collection;
  }

  static Ref<IEnumVARIANT> enumerator_of(const Object& collection) {
    const Outcome outcome = collection.invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET);
    EXPECT_EQ(outcome.value.vt, VT_UNKNOWN);
    return query<IEnumVARIANT>(outcome.value.punkVal);
  }

  // Where Count is only a part of the members, AllItemCount tells them all.
  static long count_of(const Object& collection) {
    const bool shows_a_part = collection.id_of(L"AllItemCount") != DISPID_UNKNOWN;
    return collection.get(shows_a_part ? L"AllItemCount" : L"Count").number();
  }

  static std::vector<Value> members_of(IEnumVARIANT* enumerator) {
    std::vector<Value> members;
    for (;;) {
      Value member;
      if (enumerator->Next(1, &member, nullptr) != S_OK) return members;
      members.push_back(member);
    }
  }

 private:
  void add(const Object& collection, const FunctionInfo& function, int number) const {
    std::vector<Value> values;
    for (const ParameterInfo& input : function.inputs()) {
      values.push_back(distinct_value(input, number));
    }
    const std::vector<VARIANT> reversed(values.rbegin(), values.rend());
    const Outcome outcome =
        collection.invoke(function.description().memid, DISPATCH_METHOD, reversed);
    EXPECT_TRUE(outcome.worked()) << testing::PrintToString(outcome);
    EXPECT_FALSE(outcome.value.is_nothing());
  }
};

TEST_P(CollectionSweep, MembersComeInOrderAsObjects) {
  const Object collection = filled();
  const std::vector<Value> members = members_of(enumerator_of(collection).get());
  ASSERT_EQ(count_of(collection), static_cast<long>(members.size()));
  EXPECT_GE(members.size(), static_cast<std::size_t>(kMembers));
  for (std::size_t i = 0; i < members.size(); ++i) {
    EXPECT_EQ(members[i].vt, VT_DISPATCH);
    EXPECT_EQ(collection.get(L"Item", static_cast<long>(i + 1)), members[i]);
  }
}

TEST_P(CollectionSweep, EveryEnumeratorIsFresh) {
  const Object collection = filled();
  const auto first = enumerator_of(collection);
  Value member;
  ASSERT_EQ(first->Next(1, &member, nullptr), S_OK);
  const auto second = enumerator_of(collection);
  EXPECT_NE(first, second);
  Value first_member;
  ASSERT_EQ(second->Next(1, &first_member, nullptr), S_OK);
  EXPECT_EQ(first_member, member);
}

TEST_P(CollectionSweep, NextGivesWhatIsLeftAndSaysSo) {
  const Object collection = filled();
  const auto all = static_cast<ULONG>(count_of(collection));
  const auto enumerator = enumerator_of(collection);
  std::vector<VARIANT> members(all + 2);
  std::memset(members.data(), 0xCC, members.size() * sizeof(VARIANT));
  ULONG fetched = 99;
  EXPECT_EQ(enumerator->Next(all + 2, members.data(), &fetched), S_FALSE);
  EXPECT_EQ(fetched, all);
  EXPECT_EQ(members[all].vt, VT_EMPTY);
  for (VARIANT& member : members) VariantClear(&member);
  EXPECT_EQ(enumerator->Next(1, members.data(), &fetched), S_FALSE);
  EXPECT_EQ(fetched, 0u);
}

TEST_P(CollectionSweep, NextRefusesNullPointers) {
  const auto enumerator = enumerator_of(filled());
  Value members[2];
  EXPECT_EQ(enumerator->Next(2, members, nullptr), E_POINTER);
  ULONG fetched = 99;
  EXPECT_EQ(enumerator->Next(1, nullptr, &fetched), E_POINTER);
  EXPECT_EQ(fetched, 0u);
  EXPECT_EQ(enumerator->Clone(nullptr), E_POINTER);
}

TEST_P(CollectionSweep, SkipResetAndCloneKeepTheirPlace) {
  const Object collection = filled();
  const auto enumerator = enumerator_of(collection);
  const std::vector<Value> members = members_of(enumerator.get());
  ASSERT_EQ(enumerator->Reset(), S_OK);
  EXPECT_EQ(enumerator->Skip(2), S_OK);
  Ref<IEnumVARIANT> copy;
  ASSERT_EQ(enumerator->Clone(copy.put()), S_OK);
  EXPECT_EQ(members_of(enumerator.get()), std::vector<Value>(members.begin() + 2, members.end()));
  EXPECT_EQ(members_of(copy.get()), std::vector<Value>(members.begin() + 2, members.end()));
  EXPECT_EQ(enumerator->Reset(), S_OK);
  EXPECT_EQ(enumerator->Skip(static_cast<ULONG>(members.size())), S_OK);
  EXPECT_EQ(enumerator->Skip(1), S_FALSE);
  EXPECT_EQ(enumerator->Reset(), S_OK);
  EXPECT_EQ(enumerator->Skip(static_cast<ULONG>(members.size()) + 1), S_FALSE);
}

TEST_P(CollectionSweep, MembersMayGoWhileTheyAreEnumerated) {
  const Object collection = filled();
  const auto enumerator = enumerator_of(collection);
  const std::vector<Value> members = members_of(enumerator.get());
  enumerator->Reset();
  Value first;
  ASSERT_EQ(enumerator->Next(1, &first, nullptr), S_OK);
  collection.call(L"Remove", 1);
  collection.call(L"Clear");
  EXPECT_EQ(count_of(collection), 0);
  EXPECT_EQ(members_of(enumerator.get()).size(), members.size() - 1);
  EXPECT_TRUE(members_of(enumerator_of(collection).get()).empty());
}

TEST_P(CollectionSweep, EnumeratorHoldsItsMembersOnlyAsLongAsItLives) {
  const Object collection = filled();
  const std::vector<Value> members = members_of(enumerator_of(collection).get());
  ASSERT_FALSE(members.empty());
  IUnknown* const member = members.front().punkVal;
  const ULONG before = references_of(member);
  {
    const auto enumerator = enumerator_of(collection);
    EXPECT_GT(references_of(member), before);
  }
  EXPECT_EQ(references_of(member), before);
}

TEST_P(CollectionSweep, PositionsOfEveryNumericTypeByValueAndByReferenceMeanTheSame) {
  const Object collection = filled();
  const Value expected = collection.get(L"Item", 2);
  for (VARTYPE type : {VT_I1, VT_UI1, VT_I2, VT_UI2, VT_I4, VT_UI4, VT_I8, VT_UI8, VT_INT, VT_UINT,
                       VT_R4, VT_R8, VT_CY, VT_DECIMAL}) {
    Value number(2), position;
    ASSERT_EQ(VariantChangeType(&position, &number, 0, type), S_OK) << type;
    EXPECT_EQ(collection.get(L"Item", position), expected) << type;
    EXPECT_EQ(collection.get(L"Item", by_ref(position)), expected) << type;
    void* payload = type == VT_DECIMAL ? static_cast<void*>(&position.decVal) : &position.lVal;
    EXPECT_EQ(collection.get(L"Item", by_ref_of(type, payload)), expected) << type;
  }
}

TEST_P(CollectionSweep, NumericTextIsNeverAPosition) {
  const Object collection = filled();
  const Outcome outcome = collection.try_get(L"Item", L"2");
  EXPECT_TRUE(outcome.number() == 5 || outcome.value.is_nothing())
      << testing::PrintToString(outcome);
}

TEST_P(CollectionSweep, EmptyCollectionEnumeratesNothing) {
  const Object collection = create();
  collection.call(L"Clear");
  const auto enumerator = enumerator_of(collection);
  Value member;
  EXPECT_EQ(enumerator->Next(1, &member, nullptr), S_FALSE);
  EXPECT_EQ(enumerator->Skip(0), S_OK);
  EXPECT_EQ(enumerator->Skip(1), S_FALSE);
  EXPECT_EQ(count_of(collection), 0);
}

INSTANTIATE_TEST_SUITE_P(Classes, CollectionSweep, testing::ValuesIn(collection_names()),
                         class_name);

}  // namespace
}  // namespace pv::test
