// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Versions and their lookup entries: collections, renaming, copying.

#include <gtest/gtest.h>

#include "tests/automation/items/item_support.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

Object make_versions(const Texts& names = {}) {
  const Object versions = Object::create(L"pvItems32.CVersions");
  int count = 0;
  for (const std::wstring& name : names) versions.call(L"Add", name, ++count);
  return versions;
}

Object make_entries(const Texts& keys = {}) {
  const Object entries = Object::create(L"pvItems32.CVerItems");
  for (const std::wstring& key : keys) entries.call(L"Add", key, L"to " + key);
  return entries;
}

Texts names_of(const Object& versions) { return texts_of(versions, L"Name"); }

// --- One entry

TEST(VersionEntry, StartsEmptyAndKeepsItsTexts) {
  const Object entry = Object::create(L"pvItems32.CVerItem");
  for (const wchar_t* property : {L"Key", L"IndexKey"}) {
    EXPECT_EQ(entry.get(property), L"");
    for (const std::wstring& text : {L"59"s, L"\u0151|\0x"s, L""s}) {
      entry.put(property, text);
      EXPECT_EQ(entry.get(property), text);
    }
  }
}

TEST(VersionEntry, CopiesItselfIntoAnother) {
  const Object source = Object::create(L"pvItems32.CVerItem");
  const Object target = Object::create(L"pvItems32.CVerItem");
  source.put(L"Key", L"32");
  source.put(L"IndexKey", L"160");
  EXPECT_EQ(source.call_object(L"Copy", target), target);
  EXPECT_EQ(target.get(L"Key"), L"32");
  EXPECT_EQ(target.get(L"IndexKey"), L"160");
  EXPECT_EQ(source.call_object(L"Copy", source), source);
  EXPECT_EQ(source.get(L"Key"), L"32");
}

TEST(VersionEntry, NeedsADestinationForACopy) {
  const Object entry = Object::create(L"pvItems32.CVerItem");
  EXPECT_EQ(entry.try_call(L"Copy", Value::nothing()).number(), 91);
  EXPECT_EQ(entry.try_call(L"Copy", make_entries()).result, DISP_E_TYPEMISMATCH);
}

// --- Entries

TEST(VersionEntries, AreFoundByPositionAndKey) {
  const Object entries = make_entries({L"32", L"104", L"Flow"});
  EXPECT_EQ(entries.get(L"Count"), 3);
  EXPECT_EQ(entries.id_of(L"Item"), DISPID_VALUE);
  EXPECT_EQ(entries.get_object(L"Item", 2).get(L"Key"), L"104");
  EXPECT_EQ(entries.get_object(L"Item", 2.0).get(L"Key"), L"104");
  EXPECT_EQ(entries.get_object(L"Item", L"32").get(L"IndexKey"), L"to 32");
  EXPECT_EQ(Object(item_by_variable(entries, L"FLOW").value).get(L"Key"), L"Flow");
  EXPECT_EQ(Object(item_by_variable(entries, 1).value).get(L"Key"), L"32");
}

TEST(VersionEntries, ThatAreNotThereAreNothing) {
  const Object entries = make_entries({L"32"});
  for (const Value& index : {Value(0), Value(2), Value(L"1"), Value(L""), Value(), Value::null()}) {
    EXPECT_TRUE(entries.get(L"Item", index).is_nothing()) << testing::PrintToString(index);
    EXPECT_TRUE(entries.try_call(L"Remove", index).worked()) << testing::PrintToString(index);
  }
  EXPECT_EQ(entries.get(L"Count"), 1);
}

TEST(VersionEntries, AddGivesTheNewEntry) {
  const Object entries = make_entries();
  const Object entry = entries.call_object(L"Add", L"32", L"160");
  EXPECT_EQ(entries.get_object(L"Item", 1), entry);
  EXPECT_EQ(entry.get(L"Key"), L"32");
  EXPECT_EQ(entry.get(L"IndexKey"), L"160");
}

TEST(VersionEntries, AddUnderAKeyInUseRaisesAnError) {
  const Object entries = make_entries({L"Flow"});
  const Outcome outcome = entries.try_call(L"Add", L"FLOW", L"1");
  EXPECT_EQ(outcome.number(), 457);
  EXPECT_EQ(outcome.source, L"pvItems32.CVerItems");
  EXPECT_EQ(entries.get(L"Count"), 1);
}

TEST(VersionEntries, WithoutKeyAreReachedByPositionOnly) {
  const Object entries = make_entries({L"", L""});
  EXPECT_EQ(entries.get(L"Count"), 2);
  EXPECT_TRUE(entries.get(L"Item", L"").is_nothing());
}

TEST(VersionEntries, AreRemovedAndCleared) {
  const Object entries = make_entries({L"a", L"b", L"c"});
  entries.call(L"Remove", L"B");
  entries.call(L"Remove", 1);
  EXPECT_EQ(texts_of(entries), (Texts{L"c"}));
  entries.call(L"Clear");
  EXPECT_EQ(entries.get(L"Count"), 0);
}

TEST(VersionEntries, GetANewKeyInTheirPlace) {
  const Object entries = make_entries({L"a", L"b", L"c"});
  const Object old = entries.get_object(L"Item", L"b");
  EXPECT_EQ(entries.call(L"ChangeKey", 2, L"B2"), true);
  EXPECT_EQ(texts_of(entries), (Texts{L"a", L"B2", L"c"}));
  EXPECT_EQ(texts_of(entries, L"IndexKey"), (Texts{L"to a", L"to b", L"to c"}));
  EXPECT_TRUE(entries.get(L"Item", L"b").is_nothing());
  EXPECT_FALSE(entries.get_object(L"Item", L"b2") == old);
  EXPECT_EQ(old.get(L"Key"), L"b");
}

TEST(VersionEntries, GetANewKeyAtEitherEnd) {
  const Object entries = make_entries({L"a", L"b", L"c"});
  EXPECT_EQ(entries.call(L"ChangeKey", 1, L"first"), true);
  EXPECT_EQ(entries.call(L"ChangeKey", 3, L"last"), true);
  EXPECT_EQ(texts_of(entries), (Texts{L"first", L"b", L"last"}));
}

TEST(VersionEntries, GetTheirOwnKeyAgain) {
  const Object entries = make_entries({L"a", L"b"});
  EXPECT_EQ(entries.call(L"ChangeKey", 1, L"A"), true);
  EXPECT_EQ(texts_of(entries), (Texts{L"A", L"b"}));
}

TEST(VersionEntries, TakeNewKeysOfAnyKindAsText) {
  const Object entries = make_entries({L"a"});
  EXPECT_EQ(entries.call(L"ChangeKey", 1, 59), true);
  EXPECT_EQ(entries.get_object(L"Item", L"59").get(L"IndexKey"), L"to a");
  Value key(L"variable");
  EXPECT_EQ(entries.call(L"ChangeKey", 1, by_ref(key)), true);
  EXPECT_EQ(texts_of(entries), (Texts{L"variable"}));
  EXPECT_EQ(entries.call(L"ChangeKey", 1, Value::null()), false);
  EXPECT_EQ(entries.call(L"ChangeKey", 1, Value::nothing()), false);
  EXPECT_EQ(texts_of(entries), (Texts{L"variable"}));
}

TEST(VersionEntries, LoseTheEntryThatIsGivenAKeyInUse) {
  const Object entries = make_entries({L"a", L"b", L"c"});
  EXPECT_EQ(entries.call(L"ChangeKey", 1, L"C"), false);
  EXPECT_EQ(texts_of(entries), (Texts{L"b", L"c"}));
  EXPECT_EQ(entries.get_object(L"Item", L"c").get(L"IndexKey"), L"to c");
}

TEST(VersionEntries, StayAsTheyAreWhenAPositionDoesNotExist) {
  const Object entries = make_entries({L"a"});
  for (const int position : {0, 2, -1}) {
    EXPECT_EQ(entries.call(L"ChangeKey", position, L"x"), false) << position;
  }
  EXPECT_EQ(texts_of(entries), (Texts{L"a"}));
}

// --- One version

TEST(Version, StartsEmpty) {
  const Object version = Object::create(L"pvItems32.CVersion");
  EXPECT_EQ(version.get(L"Name"), L"");
  EXPECT_EQ(version.get(L"ItemCount"), 0);
  EXPECT_EQ(version.get(L"ItemCount").vt, VT_I2);
  EXPECT_EQ(version.get_object(L"VerItems").get(L"Count"), 0);
  EXPECT_EQ(version.get_object(L"VerItems"), version.get_object(L"VerItems"));
}

TEST(Version, KeepsItsProperties) {
  const Object version = Object::create(L"pvItems32.CVersion");
  version.put(L"Name", L"2.30 \u0151");
  version.put(L"ItemCount", -1);
  EXPECT_EQ(version.get(L"Name"), L"2.30 \u0151");
  EXPECT_EQ(version.get(L"ItemCount"), -1);
  EXPECT_EQ(version.try_put(L"ItemCount", 40'000).result, DISP_E_OVERFLOW);
  EXPECT_FALSE(version.try_set(L"VerItems", make_entries()).worked());
}

TEST(Version, CopiesItselfWithItsEntries) {
  const Object versions = make_versions({L"V"});
  const Object source = versions.get_object(L"Item", 1),
               target = Object::create(L"pvItems32.CVersion");
  source.get_object(L"VerItems").call(L"Add", L"32", L"160");
  source.get_object(L"VerItems").call(L"Add", L"", L"no key");
  target.get_object(L"VerItems").call(L"Add", L"old", L"old");
  EXPECT_EQ(source.call_object(L"Copy", target), target);
  EXPECT_EQ(target.get(L"Name"), L"V");
  EXPECT_EQ(target.get(L"ItemCount"), 1);
  EXPECT_EQ(texts_of(target.get_object(L"VerItems")), (Texts{L"32", L""}));
  EXPECT_EQ(texts_of(target.get_object(L"VerItems"), L"IndexKey"), (Texts{L"160", L"no key"}));
  target.get_object(L"VerItems").get_object(L"Item", L"32").put(L"IndexKey", L"changed");
  EXPECT_EQ(source.get_object(L"VerItems").get_object(L"Item", 1).get(L"IndexKey"), L"160");
}

TEST(Version, ThatCannotBeCopiedLeavesTheDestinationAsItWas) {
  const Object source = make_versions({L"V"}).get_object(L"Item", 1);
  const Object entries = source.get_object(L"VerItems");
  for (const wchar_t* key : {L"31", L"32"}) entries.call(L"Add", key, L"160");
  entries.get_object(L"Item", 2).put(L"Key", L"31");  // the copies would have the same key
  const Object target = Object::create(L"pvItems32.CVersion");
  target.put(L"Name", L"kept");
  target.get_object(L"VerItems").call(L"Add", L"old", L"old");
  EXPECT_EQ(source.try_call(L"Copy", target).number(), 457);
  EXPECT_EQ(target.get(L"Name"), L"kept");
  EXPECT_EQ(texts_of(target.get_object(L"VerItems")), Texts{L"old"});
}

TEST(Version, CopiedToItselfStaysAsItIs) {
  const Object version = make_versions({L"V"}).get_object(L"Item", 1);
  version.get_object(L"VerItems").call(L"Add", L"32", L"160");
  EXPECT_EQ(version.call_object(L"Copy", version), version);
  EXPECT_EQ(version.get_object(L"VerItems").get(L"Count"), 1);
}

TEST(Version, NeedsADestinationForACopy) {
  const Object version = Object::create(L"pvItems32.CVersion");
  EXPECT_EQ(version.try_call(L"Copy", Value::nothing()).number(), 91);
}

// --- Versions

TEST(Versions, StartEmpty) {
  const Object versions = make_versions();
  EXPECT_EQ(versions.get(L"Count"), 0);
  EXPECT_EQ(versions.get(L"Changed"), false);
  versions.put(L"Changed", true);
  EXPECT_EQ(versions.get(L"Changed"), true);
}

TEST(Versions, AddGivesTheNewVersion) {
  const Object versions = make_versions();
  const Object version = versions.call_object(L"Add", L"2.30", 64);
  EXPECT_EQ(versions.get_object(L"Item", L"2.30"), version);
  EXPECT_EQ(version.get(L"Name"), L"2.30");
  EXPECT_EQ(version.get(L"ItemCount"), 64);
}

TEST(Versions, KeepItemCountsOfSixteenBits) {
  const Object versions = make_versions();
  EXPECT_EQ(versions.call_object(L"Add", L"high", 32767).get(L"ItemCount"), 32767);
  EXPECT_EQ(versions.call_object(L"Add", L"low", -32768).get(L"ItemCount"), -32768);
  for (const int count : {32768, -32769, 2'000'000'000}) {
    const Outcome outcome = versions.try_call(L"Add", L"beyond", count);
    EXPECT_EQ(outcome.number(), 6) << count;
    EXPECT_EQ(outcome.source, L"pvItems32.CVersions");
  }
  EXPECT_EQ(versions.get(L"Count"), 2);
}

TEST(Versions, AreFoundByPositionAndName) {
  const Object versions = make_versions({L"1", L"V", L"2"});
  EXPECT_EQ(versions.id_of(L"Item"), DISPID_VALUE);
  EXPECT_EQ(versions.get_object(L"Item", 1).get(L"Name"), L"1");
  EXPECT_EQ(versions.get_object(L"Item", L"2").get(L"Name"), L"2");
  EXPECT_EQ(versions.get_object(L"Item", L"v").get(L"Name"), L"V");
  for (const Value& index : {Value(0), Value(4), Value(L"3"), Value(L""), Value(), Value::null()}) {
    EXPECT_TRUE(versions.get(L"Item", index).is_nothing()) << testing::PrintToString(index);
  }
}

TEST(Versions, AddUnderANameInUseRaisesAnError) {
  const Object versions = make_versions({L"V"});
  const Outcome outcome = versions.try_call(L"Add", L"v", 5);
  EXPECT_EQ(outcome.number(), 457);
  EXPECT_EQ(outcome.source, L"pvItems32.CVersions");
  EXPECT_FALSE(outcome.description.empty());
  EXPECT_EQ(versions.get_object(L"Item", 1).get(L"ItemCount"), 1);
}

TEST(Versions, AreRemovedAndCleared) {
  const Object versions = make_versions({L"a", L"b", L"c"});
  versions.call(L"Remove", L"B");
  versions.call(L"Remove", 1);
  versions.call(L"Remove", 7);
  versions.call(L"Remove", L"x");
  EXPECT_EQ(names_of(versions), (Texts{L"c"}));
  versions.call(L"Clear");
  EXPECT_EQ(versions.get(L"Count"), 0);
}

TEST(Versions, AreRenamedInTheirPlace) {
  const Object versions = make_versions({L"a", L"b", L"c"});
  versions.get_object(L"Item", 2).get_object(L"VerItems").call(L"Add", L"32", L"160");
  EXPECT_EQ(versions.call(L"ChangeTitle", 2, L"new"), true);
  EXPECT_EQ(names_of(versions), (Texts{L"a", L"new", L"c"}));
  const Object renamed = versions.get_object(L"Item", L"NEW");
  EXPECT_EQ(renamed.get(L"ItemCount"), 2);
  EXPECT_EQ(renamed.get_object(L"VerItems").get_object(L"Item", L"32").get(L"IndexKey"), L"160");
  EXPECT_TRUE(versions.get(L"Item", L"b").is_nothing());
}

TEST(Versions, AreRenamedAtEitherEnd) {
  const Object versions = make_versions({L"a", L"b", L"c"});
  EXPECT_EQ(versions.call(L"ChangeTitle", 1, L"first"), true);
  EXPECT_EQ(versions.call(L"ChangeTitle", 3, L"last"), true);
  EXPECT_EQ(names_of(versions), (Texts{L"first", L"b", L"last"}));
}

TEST(Versions, RenamedToTheirOwnNameStayAtTheirPosition) {
  const Object versions = make_versions({L"a", L"b", L"c"});
  for (const int position : {1, 2, 3}) {
    const std::wstring name = names_of(versions)[static_cast<std::size_t>(position - 1)];
    EXPECT_EQ(versions.call(L"ChangeTitle", position, name), true);
  }
  EXPECT_EQ(versions.call(L"ChangeTitle", 2, L"B"), true);
  EXPECT_EQ(names_of(versions), (Texts{L"a", L"B", L"c"}));
}

TEST(Versions, LoseTheVersionThatIsGivenANameInUse) {
  const Object versions = make_versions({L"a", L"b", L"c"});
  EXPECT_EQ(versions.call(L"ChangeTitle", 1, L"B"), false);
  EXPECT_EQ(names_of(versions), (Texts{L"b", L"c"}));
  EXPECT_EQ(versions.call(L"ChangeTitle", 2, L"b"), false);
  EXPECT_EQ(names_of(versions), (Texts{L"b"}));
}

TEST(Versions, StayAsTheyAreWhenAPositionDoesNotExist) {
  const Object versions = make_versions({L"a"});
  for (const int position : {0, 2, -1, 32767}) {
    EXPECT_EQ(versions.call(L"ChangeTitle", position, L"x"), false) << position;
  }
  EXPECT_EQ(names_of(versions), (Texts{L"a"}));
}

TEST(Versions, AreEnumeratedAsObjects) {
  const Object versions = make_versions({L"a", L"b"});
  Texts names;
  for (const Object& version : members_of(versions)) {
    names.push_back(version.get(L"Name").text());
    versions.call(L"Clear");
  }
  EXPECT_EQ(names, (Texts{L"a", L"b"}));
}

}  // namespace
}  // namespace pv::test
