// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/list/keyed_list.h"

#include <gtest/gtest.h>

#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/unit/list/latin_case.h"

namespace pv {
namespace {

using test::latin_case;

const KeyCase& keys = latin_case();

template <class T>
struct ListOf : KeyedList<T> {
  ListOf() : KeyedList<T>(keys) {}
};
using List = ListOf<std::wstring>;

std::vector<std::wstring> content_of(const List& list) {
  std::vector<std::wstring> content;
  for (const std::wstring& member : list) content.push_back(member);
  return content;
}

List three() {
  List list;
  list.append(L"one", L"A");
  list.append(L"two", L"B");
  list.append(L"three", L"C");
  return list;
}

template <class Step>
void expect_error(ErrorCode code, Step&& step) {
  try {
    step();
    ADD_FAILURE() << "no error was raised";
  } catch (const automation_error& error) {
    EXPECT_EQ(error.code(), code);
  }
}

TEST(KeyedList, IsEmptyAtFirst) {
  const List list;
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(list.size(), 0);
  EXPECT_EQ(list.begin(), list.end());
  EXPECT_FALSE(list.contains(L"A"));
}

TEST(KeyedList, KeepsTheOrderOfAppending) {
  const List list = three();
  EXPECT_EQ(content_of(list), (std::vector<std::wstring>{L"one", L"two", L"three"}));
  EXPECT_EQ(list.size(), 3);
  EXPECT_FALSE(list.empty());
}

TEST(KeyedList, PositionsStartAtOne) {
  const List list = three();
  EXPECT_EQ(list.at(1), L"one");
  EXPECT_EQ(list.at(3), L"three");
}

TEST(KeyedList, BadPositionIsASubscriptError) {
  List list = three();
  for (long position : {0L, -1L, 4L, 2147483647L, -2147483647L - 1}) {
    expect_error(ErrorCode::kSubscript, [&] { list.at(position); });
    expect_error(ErrorCode::kSubscript, [&] { list.remove(position); });
    expect_error(ErrorCode::kSubscript, [&] { list.insert(position, L"x"); });
  }
  EXPECT_EQ(list.size(), 3);
}

TEST(KeyedList, KeysCompareWithoutRegardToCase) {
  List list;
  list.append(L"value", L"FlowRate");
  EXPECT_EQ(list.at(L"flowrate"), L"value");
  EXPECT_EQ(list.at(L"FLOWRATE"), L"value");
  EXPECT_TRUE(list.contains(L"fLOWrATE"));
}

TEST(KeyedList, UnknownKeyIsAnInvalidCall) {
  List list = three();
  for (const wchar_t* key : {L"D", L"", L"1", L"A "}) {
    expect_error(ErrorCode::kInvalidCall, [&] { list.at(key); });
    expect_error(ErrorCode::kInvalidCall, [&] { list.remove(key); });
  }
  EXPECT_EQ(list.size(), 3);
}

TEST(KeyedList, DuplicateKeyIsRefusedAndNothingChanges) {
  List list = three();
  expect_error(ErrorCode::kKeyInUse, [&] { list.append(L"other", L"a"); });
  expect_error(ErrorCode::kKeyInUse, [&] { list.insert(1, L"other", L"B"); });
  EXPECT_EQ(content_of(list), (std::vector<std::wstring>{L"one", L"two", L"three"}));
  EXPECT_EQ(list.at(L"a"), L"one");
  EXPECT_EQ(list.at(L"b"), L"two");
}

TEST(KeyedList, EmptyKeyMeansNoneAndMayRepeat) {
  List list;
  list.append(L"x");
  list.append(L"y", L"");
  list.append(L"z");
  EXPECT_EQ(list.size(), 3);
  EXPECT_FALSE(list.contains(L""));
  list.remove(2);
  EXPECT_EQ(content_of(list), (std::vector<std::wstring>{L"x", L"z"}));
}

TEST(KeyedList, NumericTextIsAKey) {
  List list = three();
  list.append(L"four", L"1");
  EXPECT_EQ(list.at(L"1"), L"four");
  EXPECT_EQ(list.at(1), L"one");
}

TEST(KeyedList, InsertsBeforeAPosition) {
  List list = three();
  list.insert(1, L"zero", L"Z");
  list.insert(3, L"one and a half");
  EXPECT_EQ(content_of(list),
            (std::vector<std::wstring>{L"zero", L"one", L"one and a half", L"two", L"three"}));
  EXPECT_EQ(list.at(L"z"), L"zero");
  EXPECT_EQ(list.at(L"c"), L"three");
}

TEST(KeyedList, InsertIntoAnEmptyListHasNoPosition) {
  List list;
  expect_error(ErrorCode::kSubscript, [&] { list.insert(1, L"x"); });
  EXPECT_TRUE(list.empty());
}

TEST(KeyedList, ReplacesAMemberUnderANewKeyAtANewPosition) {
  const struct {
    long position, new_position;
    std::vector<std::wstring> content;
  } rows[] = {{1, 1, {L"new", L"two", L"three"}},
              {1, 3, {L"two", L"three", L"new"}},
              {3, 1, {L"new", L"one", L"two"}},
              {2, 3, {L"one", L"three", L"new"}}};
  for (const auto& row : rows) {
    List list = three();
    list.replace(row.position, L"new", L"N", row.new_position);
    EXPECT_EQ(content_of(list), row.content);
    EXPECT_EQ(list.at(L"n"), L"new");
    EXPECT_EQ(list.contains(L"A"), row.position != 1);
  }
}

TEST(KeyedList, ReplacesAMemberUnderItsOwnKeyOrNone) {
  List list = three();
  list.replace(2, L"new", L"b", 2);
  EXPECT_EQ(list.at(L"B"), L"new");
  list.replace(2, L"newer", L"", 2);
  EXPECT_FALSE(list.contains(L"B"));
  EXPECT_EQ(content_of(list), (std::vector<std::wstring>{L"one", L"newer", L"three"}));
}

TEST(KeyedList, FailedReplacementChangesNothing) {
  List list = three();
  expect_error(ErrorCode::kKeyInUse, [&] { list.replace(1, L"new", L"c", 1); });
  expect_error(ErrorCode::kSubscript, [&] { list.replace(4, L"new", L"N", 1); });
  expect_error(ErrorCode::kSubscript, [&] { list.replace(1, L"new", L"N", 0); });
  EXPECT_EQ(content_of(list), content_of(three()));
  EXPECT_EQ(list.at(L"A"), L"one");
  EXPECT_FALSE(list.contains(L"N"));
}

TEST(KeyedList, ReplacesAmongMany) {
  List list;
  for (int i = 1; i <= 100; ++i) list.append(std::to_wstring(i), L"K" + std::to_wstring(i));
  list.replace(50, L"new", L"N", 100);
  EXPECT_EQ(list.at(100), L"new");
  EXPECT_EQ(list.at(L"n"), L"new");
  EXPECT_FALSE(list.contains(L"K50"));
  EXPECT_EQ(list.at(50), L"51");
  EXPECT_EQ(list.at(L"k100"), L"100");
}

TEST(KeyedList, TakesOverTheMembersWhoseKeysAreFree) {
  for (const int many : {0, 100}) {
    List list = three();
    List others;
    others.append(L"other b", L"b");
    others.append(L"other d", L"D");
    others.append(L"no key");
    for (int i = 0; i < many; ++i) others.append(L"x", L"K" + std::to_wstring(i));
    list.take_over(std::move(others));
    EXPECT_EQ(list.size(), 5 + many);
    EXPECT_EQ(list.at(L"B"), L"two");
    EXPECT_EQ(list.at(L"d"), L"other d");
    EXPECT_EQ(list.at(5), L"no key");
    EXPECT_EQ(list.contains(L"k99"), many == 100);
  }
}

TEST(KeyedList, IsEmptyOnceItIsTakenOver) {
  List list;
  List others = three();
  list.take_over(std::move(others));
  EXPECT_EQ(content_of(list), content_of(three()));
  EXPECT_TRUE(others.empty());
  others.append(L"again", L"A");
  EXPECT_EQ(others.at(L"a"), L"again");
}

TEST(KeyedList, RemovesByPositionAndForgetsTheKey) {
  List list = three();
  list.remove(2);
  EXPECT_EQ(content_of(list), (std::vector<std::wstring>{L"one", L"three"}));
  EXPECT_FALSE(list.contains(L"B"));
  list.append(L"new", L"B");
  EXPECT_EQ(list.at(L"b"), L"new");
}

TEST(KeyedList, RemovesByKeyWhateverItsCase) {
  List list = three();
  list.remove(L"c");
  list.remove(L"A");
  EXPECT_EQ(content_of(list), (std::vector<std::wstring>{L"two"}));
  EXPECT_FALSE(list.contains(L"a"));
}

TEST(KeyedList, RemovingAMemberWithoutKeyKeepsTheOtherKeys) {
  List list = three();
  list.append(L"four");
  list.remove(4);
  for (const wchar_t* key : {L"A", L"B", L"C"}) EXPECT_TRUE(list.contains(key));
}

TEST(KeyedList, ClearForgetsMembersAndKeys) {
  List list = three();
  list.clear();
  EXPECT_TRUE(list.empty());
  EXPECT_FALSE(list.contains(L"A"));
  list.append(L"again", L"A");
  EXPECT_EQ(list.at(L"A"), L"again");
}

// Objects that look at their list when they go, as released host objects may.
struct Watcher {
  explicit Watcher(KeyedList<std::shared_ptr<Watcher>>* list) : list_(list) {}
  ~Watcher() {
    if (list_) seen = list_->size();
  }
  KeyedList<std::shared_ptr<Watcher>>* list_;
  static inline long seen = -1;
};

TEST(KeyedList, MembersThatGoSeeTheListWithoutThem) {
  ListOf<std::shared_ptr<Watcher>> list;
  list.append(std::make_shared<Watcher>(&list), L"A");
  list.append(std::make_shared<Watcher>(&list), L"B");
  list.remove(L"A");
  EXPECT_EQ(Watcher::seen, 1);
  Watcher::seen = -1;
  list.clear();
  EXPECT_EQ(Watcher::seen, 0);
}

TEST(KeyedList, ReorderGivesMembersThatMoveTheKeysThatTheyHaveNow) {
  List list = three();
  list.reorder({1, 0, 2}, [](const std::wstring& member) { return L"key of " + member; });
  EXPECT_EQ(content_of(list), (std::vector<std::wstring>{L"two", L"one", L"three"}));
  EXPECT_EQ(list.at(L"KEY OF ONE"), L"one");
  EXPECT_EQ(list.at(L"key of two"), L"two");
  EXPECT_EQ(list.at(L"C"), L"three");
  EXPECT_FALSE(list.contains(L"A"));
  EXPECT_FALSE(list.contains(L"key of three"));
  list.remove(L"C");
  EXPECT_EQ(content_of(list), (std::vector<std::wstring>{L"two", L"one"}));
}

TEST(KeyedList, ReorderToAKeyInUseChangesNothing) {
  for (const wchar_t* key : {L"c", L"same"}) {
    List list = three();
    expect_error(ErrorCode::kKeyInUse, [&] {
      list.reorder({1, 0, 2}, [&](const std::wstring&) { return key; });
    });
    EXPECT_EQ(content_of(list), (std::vector<std::wstring>{L"one", L"two", L"three"}));
    EXPECT_EQ(list.at(L"A"), L"one");
    EXPECT_EQ(list.at(L"B"), L"two");
  }
}

TEST(KeyedList, MembersStayWhereTheyAreWhileOthersComeAndGo) {
  List list = three();
  const std::wstring* two = &list.at(L"B");
  for (int i = 0; i < 1000; ++i) list.append(L"more", L"k" + std::to_wstring(i));
  list.remove(1);
  list.insert(1, L"first");
  EXPECT_EQ(&list.at(L"B"), two);
}

TEST(KeyedList, MoveTakesMembersAndKeysAlong) {
  List from = three();
  const List list = std::move(from);
  EXPECT_EQ(list.at(L"b"), L"two");
  EXPECT_EQ(list.size(), 3);
}

// Long lists find their keys another way than short ones.
TEST(KeyedList, KeysStayKnownWhileTheListGrowsAndShrinks) {
  ListOf<int> list;
  const auto key_of = [](int i) { return L"Key" + std::to_wstring(i); };
  constexpr int kCount = 40;
  for (int i = 0; i < kCount; ++i) {
    i % 5 == 0 ? list.append(i) : list.append(i, key_of(i));
    for (int k = 0; k <= i; ++k) EXPECT_EQ(list.contains(key_of(k)), k % 5 != 0);
    if (i % 5 != 0) expect_error(ErrorCode::kKeyInUse, [&] { list.append(0, key_of(i)); });
    EXPECT_EQ(list.size(), i + 1);
  }
  for (int i = 0; i < kCount; ++i) {
    list.remove(1);
    for (int k = 0; k < kCount; ++k) EXPECT_EQ(list.contains(key_of(k)), k > i && k % 5 != 0);
  }
}

TEST(KeyedList, ManyMembersKeepPositionsAndKeysTogether) {
  ListOf<int> list;
  constexpr int kCount = 20000;
  for (int i = 0; i < kCount; ++i) list.append(i, L"Key" + std::to_wstring(i));
  for (int i = 0; i < kCount; i += 997) {
    EXPECT_EQ(list.at(i + 1L), i);
    EXPECT_EQ(list.at(L"KEY" + std::to_wstring(i)), i);
  }
  std::vector<std::size_t> backwards(kCount);
  std::iota(backwards.rbegin(), backwards.rend(), std::size_t{0});
  list.reorder(backwards, [](int i) { return L"New" + std::to_wstring(i); });
  EXPECT_EQ(list.at(1), kCount - 1);
  EXPECT_EQ(list.at(L"new0"), 0);
  EXPECT_FALSE(list.contains(L"key0"));
}

// A value that cannot be moved in: the list must stay as it was.
struct Stubborn {
  Stubborn() = default;
  Stubborn(const Stubborn&) = default;
  Stubborn(Stubborn&& other) : refuses(other.refuses) {
    if (refuses) throw std::runtime_error("refused");
  }
  Stubborn& operator=(const Stubborn&) = default;
  bool refuses = false;
};

TEST(KeyedList, FailedAppendChangesNothing) {
  ListOf<Stubborn> list;
  list.append(Stubborn(), L"A");
  Stubborn refusing;
  refusing.refuses = true;
  EXPECT_THROW(list.append(refusing, L"B"), std::runtime_error);
  EXPECT_EQ(list.size(), 1);
  EXPECT_FALSE(list.contains(L"B"));
  list.append(Stubborn(), L"B");
  EXPECT_EQ(list.size(), 2);
}

}  // namespace
}  // namespace pv
