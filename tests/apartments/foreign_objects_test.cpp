// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Objects of one apartment in the objects of another: kept, copied, saved, enumerated. The library
// reaches them through their published interfaces alone.

#include "tests/apartments/apartment.h"
#include "tests/automation/txm/txm_support.h"
#include "tests/support/fake_object.h"
#include "tests/support/members.h"
#include "tests/support/memory/allocation_spy.h"
#include "tests/support/own_file.h"

namespace pv::test {
namespace {

Object add_variable(const Object& variables, const wchar_t* key, const Value& value) {
  return variables.call_object(L"Add", key, std::wstring(L"Caption ") + key, L"", L"", 0, 1, 1, 2,
                               value, 0, 4);
}

Object add_item(const Object& items, const wchar_t* key, const Value& variables) {
  return items.call_object(L"Add", key, std::stoi(key), true, 3, true, false, 0.5f, 8, variables);
}

/// What objects of the same apartment leave in a file is expected of all others.
std::string saved(const Object& collection) {
  const OwnFile file(L"saved.txt");
  EXPECT_EQ(collection.call(L"SaveSettingsNew", file), true);
  return file.bytes();
}

/// Two apartments: the hosting one of this free thread, and `other`.
struct ForeignObjects : FreeThreaded {
  const LostByThePlatform lost;  // the library calls foreign objects through their vtables
  ApartmentThread other;
};

struct ForeignVariables : ForeignObjects {
  const Object items = Object::create(L"pvItems32.CItems");
  const Object variables = other.create(L"pvItems32.CVariables");
};

TEST_F(ForeignVariables, AreKeptAndHandedOut) {
  add_variable(variables, L"1", 1.5);
  const Object item = add_item(items, L"1", variables);
  EXPECT_EQ(item.get_object(L"Variables"), variables);
  EXPECT_EQ(item.get(L"Caption", 1), L"Caption 1");
  item.put(L"Value", 1, 2.5);
  EXPECT_EQ(variables.get_object(L"Item", 1).get(L"Value"), 2.5);
  item.set(L"Variables", Object::create(L"pvItems32.CVariables"));
  EXPECT_EQ(item.get_object(L"Variables").get(L"Count"), 0);
}

TEST_F(ForeignVariables, AreEnumerated) {
  for (const wchar_t* const key : {L"a", L"b", L"c"}) add_variable(variables, key, 0);
  const Object item = add_item(items, L"1", variables);
  EXPECT_EQ(texts_of(item.get_object(L"Variables")), (Texts{L"a", L"b", L"c"}));
}

TEST_F(ForeignVariables, AreSavedLikeOwnOnes) {
  const Object own_items = Object::create(L"pvItems32.CItems");
  const Object own = Object::create(L"pvItems32.CVariables");
  for (const Object& each : {variables, own}) {
    add_variable(each, L"1", 1.5);
    add_variable(each, L"2", L"text");
  }
  add_item(items, L"7", variables);
  add_item(own_items, L"7", own);
  EXPECT_EQ(saved(items), saved(own_items));
  EXPECT_NE(saved(items).find("VAR2=2|Caption 2"), std::string::npos);
}

TEST_F(ForeignVariables, AreCopiedWithTheItem) {
  add_variable(variables, L"1", 1.5);
  const Object item = add_item(items, L"7", variables);
  const Object same = Object::create(L"pvItems32.CItem");
  const Object distant = other.create(L"pvItems32.CItem");
  for (const Object& target : {same, distant}) {
    add_variable(target.get_object(L"Variables"), L"old", 0);
    EXPECT_EQ(item.call_object(L"Copy", target), target);
    EXPECT_EQ(target.get(L"Key"), L"7");
    EXPECT_EQ(target.get(L"Length", 1), 8);
    EXPECT_EQ(texts_of(target.get_object(L"Variables")), Texts{L"1"});
    EXPECT_EQ(target.get(L"Value", 1), 1.5);
    EXPECT_NE(target.get_object(L"Variables"), variables);
  }
}

TEST_F(ForeignObjects, ListsAreKeptCopiedAndSaved) {
  const Object lists = Object::create(L"pvItems32.CDLists");
  const Object own_lists = Object::create(L"pvItems32.CDLists");
  const Object members = other.create(L"pvItems32.CDListMembers");
  const Object own = Object::create(L"pvItems32.CDListMembers");
  for (const Object& each : {members, own}) {
    each.call(L"Add", L"0", L"Off", L"0");
    each.call(L"Add", L"1", L"On", L"1");
  }
  const Object list = lists.call_object(L"Add", L"switch", members, L"Switch");
  own_lists.call(L"Add", L"switch", own, L"Switch");
  EXPECT_EQ(list.get_object(L"ListMembers"), members);
  EXPECT_EQ(saved(lists), saved(own_lists));

  const Object copy = other.create(L"pvItems32.CDList");
  EXPECT_EQ(list.call_object(L"Copy", copy), copy);
  EXPECT_EQ(texts_of(copy.get_object(L"ListMembers"), L"Caption"), (Texts{L"Off", L"On"}));
}

TEST_F(ForeignObjects, ListsFillAControlOfAnotherApartment) {
  const Object lists = Object::create(L"pvItems32.CDLists");
  const Object members = other.create(L"pvItems32.CDListMembers");
  members.call(L"Add", L"0", L"Off", L"0");
  lists.call(L"Add", L"switch", members, L"Switch");
  FakeObject control;
  control.expect_call(L"Clear");
  control.expect_call(L"AddItem", {L"Off"});
  EXPECT_EQ(lists.call(L"FillList", 1, control), true);
}

TEST_F(ForeignObjects, UnitsAreKeptConvertedAndSaved) {
  const Object dimensions = Object::create(L"pvItems32.CDimensions");
  const Object own_dimensions = Object::create(L"pvItems32.CDimensions");
  const Object units = other.create(L"pvItems32.CUnits");
  const Object own = Object::create(L"pvItems32.CUnits");
  for (const Object& each : {units, own}) {
    each.call(L"Add", L"1", L"m", 1.0, 0.0);
    each.call(L"Add", L"2", L"mm", 1000.0, 0.0);
  }
  const Object dimension = dimensions.call_object(L"Add", L"1", L"Length", units);
  own_dimensions.call(L"Add", L"1", L"Length", own);
  EXPECT_EQ(dimension.get_object(L"Units"), units);
  EXPECT_EQ(dimensions.call(L"ToUnit", 1.5, 1, 2, 0, 2),
            own_dimensions.call(L"ToUnit", 1.5, 1, 2, 0, 2));
  EXPECT_EQ(dimensions.call(L"ToBase", 500, 1, 2), 0.5);
  EXPECT_EQ(dimensions.call_object(L"GetUnitObject", 1, 2), units.get_object(L"Item", 2));
  EXPECT_EQ(saved(dimensions), saved(own_dimensions));

  const Object copy = other.create(L"pvItems32.CDimension");
  EXPECT_EQ(dimension.call_object(L"Copy", copy), copy);
  EXPECT_EQ(texts_of(copy.get_object(L"Units"), L"Caption"), (Texts{L"m", L"mm"}));
}

TEST_F(ForeignObjects, AreValuesAndTagsOfOthers) {
  const Object unit = other.create(L"pvItems32.CUnit");
  const Object variable = Object::create(L"pvItems32.CVariable");
  variable.put(L"Value", unit);
  EXPECT_EQ(variable.get_object(L"Value"), unit);
  const Object errors = Object::create(L"pvItems32.Cerrors");
  const Object error = errors.call_object(L"Add", 5, L"text", 45000.0, unit);
  EXPECT_EQ(error.get_object(L"Tag"), unit);
}

TEST_F(ForeignObjects, AreReleasedByTheirHolders) {
  const FakeObject held;
  Object variable = other.create(L"pvItems32.CVariable");
  variable.put(L"Value", held);
  EXPECT_GT(held.references(), 0u);
  variable = Object();
  EXPECT_TRUE(holds_soon([&] { return held.references() == 0; }));
}

// The transmitter lives in the hosting apartment, its items, dimensions and lists in another one,
// its server among the free threads.
struct ForeignTransmitter : ForeignObjects, Transmitter {
  ForeignTransmitter() {
    items = other.create(L"pvItems32.CItems");
    dimensions = other.create(L"pvItems32.CDimensions");
    lists = other.create(L"pvItems32.CDLists");
    server.answer(L"Items", items);
    server.answer(L"Dimensions", dimensions);
    server.answer(L"Lists", lists);
    device_answers(true);
    txm.put(L"Historian", 0);
  }
  ~ForeignTransmitter() override {
    for (const wchar_t* const member : {L"Items", L"Dimensions", L"Lists"}) {
      server.answer(member, Value::nothing());
    }
    items = dimensions = lists = Object();
  }
};

TEST_F(ForeignTransmitter, HandsThemOutAndReadsThem) {
  EXPECT_EQ(txm.get_object(L"Items"), items);
  EXPECT_EQ(txm.get_object(L"Dimensions"), dimensions);
  EXPECT_EQ(txm.get_object(L"Lists"), lists);
  const Object item = add_item(7);
  server.on(L"ReadTxm", [](const Arguments& given) {
    Object(given.value(1)).put(L"Value", 1, 12.5);
    return Value(true);
  });
  const ItemVariable variable(item);
  EXPECT_EQ(txm.call(L"ReadTxm", variable), true);
  EXPECT_EQ(variable.object(), item);
  EXPECT_EQ(item.get(L"Value", 1), 12.5);
  EXPECT_EQ(txm.get(L"ItemValue", item, 1, -1, -2, 0), 12.5);
}

}  // namespace
}  // namespace pv::test
