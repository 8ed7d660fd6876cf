// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Changes of the active language, as listeners at the connection point hear of them.

#include <gtest/gtest.h>

#include "tests/automation/utility/language_support.h"

namespace pv::test {
namespace {

using Heard = std::vector<long>;

struct LanguageEvents : testing::Test {
  const Object languages = Object::create(L"pvItems32.CLanguages");
  LanguageListener listener, other;
};

TEST_F(LanguageEvents, TellTheNewLanguage) {
  listener.connect(languages);
  languages.put(L"ActiveLanguageID", 3);
  languages.put(L"ActiveLanguageID", 6);
  EXPECT_EQ(listener.heard(), (Heard{3, 6}));
}

TEST_F(LanguageEvents, ComeAlsoWhenTheLanguageStaysTheSame) {
  listener.connect(languages);
  languages.put(L"ActiveLanguageID", 1);
  languages.put(L"ActiveLanguageID", 1);
  EXPECT_EQ(listener.heard(), (Heard{1, 1}));
}

TEST_F(LanguageEvents, ComeForNumbersOfNoLanguageToo) {
  listener.connect(languages);
  languages.put(L"ActiveLanguageID", -7);
  EXPECT_EQ(listener.heard(), (Heard{-7}));
}

TEST_F(LanguageEvents, ComeWhenTheLanguagesAreRegisteredAnew) {
  languages.put(L"ActiveLanguageID", 4);
  listener.connect(languages);
  languages.call(L"RegisterLanguages");
  EXPECT_EQ(listener.heard(), (Heard{1}));
}

TEST_F(LanguageEvents, ComeAfterTheChange) {
  listener.connect(languages);
  long active = 0, count = 0;
  listener.on_change([&](long) {
    active = languages.get(L"ActiveLanguageID").number();
    count = languages.get(L"Count").number();
  });
  languages.put(L"ActiveLanguageID", 5);
  EXPECT_EQ(active, 5);
  languages.call(L"RegisterLanguages");
  EXPECT_EQ(active, 1);
  EXPECT_EQ(count, 6);
}

TEST_F(LanguageEvents, DoNotComeForOtherMembers) {
  listener.connect(languages);
  languages.call(L"Add", L"k", L"x", 1, L"x");
  languages.call(L"Remove", 7);
  languages.call(L"Clear");
  languages.get(L"ActiveLanguageID");
  EXPECT_EQ(listener.heard(), Heard{});
}

TEST_F(LanguageEvents, ReachListenersThatHaveOnlyAutomation) {
  LanguageListener simple(LanguageListener::Kind::kAutomation);
  simple.connect(languages);
  languages.put(L"ActiveLanguageID", 2);
  EXPECT_EQ(simple.heard(), (Heard{2}));
}

TEST_F(LanguageEvents, ReachEveryListenerInOrder) {
  std::string order;
  listener.on_change([&](long) { order += "first "; });
  other.on_change([&](long) { order += "second "; });
  listener.connect(languages);
  other.connect(languages);
  languages.put(L"ActiveLanguageID", 2);
  EXPECT_EQ(order, "first second ");
}

TEST_F(LanguageEvents, EndWithTheConnection) {
  listener.connect(languages);
  languages.put(L"ActiveLanguageID", 2);
  listener.disconnect();
  languages.put(L"ActiveLanguageID", 3);
  EXPECT_EQ(listener.heard(), (Heard{2}));
}

TEST_F(LanguageEvents, ListenerMayDisconnectItselfWhileItIsCalled) {
  listener.on_change([&](long) { listener.disconnect(); });
  listener.connect(languages);
  other.connect(languages);
  languages.put(L"ActiveLanguageID", 2);
  languages.put(L"ActiveLanguageID", 3);
  EXPECT_EQ(listener.heard(), (Heard{2}));
  EXPECT_EQ(other.heard(), (Heard{2, 3}));
}

TEST_F(LanguageEvents, ListenerMayDisconnectTheNextOne) {
  listener.on_change([&](long) { other.disconnect(); });
  listener.connect(languages);
  other.connect(languages);
  languages.put(L"ActiveLanguageID", 2);
  EXPECT_EQ(other.heard(), (Heard{2})) << "those that were connected hear of this change";
  listener.on_change([](long) {});
  languages.put(L"ActiveLanguageID", 3);
  EXPECT_EQ(listener.heard(), (Heard{2, 3}));
  EXPECT_EQ(other.heard(), (Heard{2}));
}

TEST_F(LanguageEvents, ListenerMayDisconnectTheOneBefore) {
  other.on_change([&](long) { listener.disconnect(); });
  listener.connect(languages);
  other.connect(languages);
  languages.put(L"ActiveLanguageID", 2);
  other.on_change([](long) {});
  languages.put(L"ActiveLanguageID", 3);
  EXPECT_EQ(listener.heard(), (Heard{2}));
  EXPECT_EQ(other.heard(), (Heard{2, 3}));
}

TEST_F(LanguageEvents, ListenerMayConnectAnotherWhichHearsTheNextChange) {
  listener.on_change([&](long language) {
    if (language == 2) other.connect(languages);
  });
  listener.connect(languages);
  languages.put(L"ActiveLanguageID", 2);
  languages.put(L"ActiveLanguageID", 3);
  EXPECT_EQ(other.heard(), (Heard{3}));
}

TEST_F(LanguageEvents, ListenerMayChangeTheLanguageAgain) {
  listener.on_change([&](long language) {
    if (language == 2) languages.put(L"ActiveLanguageID", 5);
  });
  listener.connect(languages);
  languages.put(L"ActiveLanguageID", 2);
  EXPECT_EQ(languages.get(L"ActiveLanguageID"), 5);
  EXPECT_EQ(listener.heard(), (Heard{2, 5}));
}

TEST_F(LanguageEvents, ListenerMayReleaseTheRegistryWhileItIsCalled) {
  const ULONG before = references_of(listener.sink());
  Object doomed = Object::create(L"pvItems32.CLanguages");
  DWORD cookie = 0;
  ASSERT_EQ(language_events_of(doomed)->Advise(listener.sink(), &cookie), S_OK);
  listener.on_change([&](long) { doomed = Object(); });
  doomed.put(L"ActiveLanguageID", 2);
  EXPECT_EQ(listener.heard(), (Heard{2}));
  EXPECT_EQ(references_of(listener.sink()), before) << "the registry has gone with its listeners";
}

TEST_F(LanguageEvents, ListenerThatFailsDoesNotKeepOthersFromHearing) {
  listener.fail_with(E_FAIL);
  listener.connect(languages);
  other.connect(languages);
  EXPECT_TRUE(languages.try_put(L"ActiveLanguageID", 2).worked());
  EXPECT_EQ(other.heard(), (Heard{2}));
  EXPECT_EQ(languages.get(L"ActiveLanguageID"), 2);
}

TEST_F(LanguageEvents, OneListenerMayBeConnectedTwice) {
  const auto point = language_events_of(languages);
  DWORD first = 0, second = 0;
  ASSERT_EQ(point->Advise(listener.sink(), &first), S_OK);
  ASSERT_EQ(point->Advise(listener.sink(), &second), S_OK);
  EXPECT_NE(first, second);
  languages.put(L"ActiveLanguageID", 2);
  EXPECT_EQ(listener.heard(), (Heard{2, 2}));
  EXPECT_EQ(point->Unadvise(first), S_OK);
  languages.put(L"ActiveLanguageID", 3);
  EXPECT_EQ(listener.heard(), (Heard{2, 2, 3}));
  EXPECT_EQ(point->Unadvise(second), S_OK);
}

TEST_F(LanguageEvents, BadConnectionsAreRefused) {
  const auto point = language_events_of(languages);
  DWORD cookie = 0;
  EXPECT_EQ(point->Advise(nullptr, &cookie), E_POINTER);
  EXPECT_EQ(point->Advise(listener.sink(), nullptr), E_POINTER);
  EXPECT_EQ(point->Unadvise(12345), CONNECT_E_NOCONNECTION);
  IID iid{};
  EXPECT_EQ(point->GetConnectionInterface(&iid), S_OK);
  EXPECT_TRUE(iid == __uuidof(__CLanguages));
  const auto container = languages.as<IConnectionPointContainer>();
  Ref<IConnectionPoint> none;
  EXPECT_EQ(container->FindConnectionPoint(__uuidof(__CItems), none.put()), CONNECT_E_NOCONNECTION);
}

TEST_F(LanguageEvents, RegistryReleasesItsListenersWhenItGoes) {
  const ULONG before = references_of(listener.sink());
  {
    const Object doomed = Object::create(L"pvItems32.CLanguages");
    DWORD cookie = 0;
    ASSERT_EQ(language_events_of(doomed)->Advise(listener.sink(), &cookie), S_OK);
    EXPECT_GT(references_of(listener.sink()), before);
  }
  EXPECT_EQ(references_of(listener.sink()), before);
}

TEST_F(LanguageEvents, OfOneRegistryAreNotThoseOfAnother) {
  listener.connect(languages);
  Object::create(L"pvItems32.CLanguages").put(L"ActiveLanguageID", 2);
  EXPECT_EQ(listener.heard(), Heard{});
}

TEST_F(LanguageEvents, OfTheSharedRegistryReachItsListeners) {
  const Object utility = Object::create(L"pvItems32.CUtility");
  listener.connect(utility.get_object(L"Languages"));
  std::wstring yes;
  listener.on_change([&](long) { yes = utility.get(L"pvString", 205).text(); });
  const ActiveLanguage german(3);
  EXPECT_EQ(listener.heard(), (Heard{3}));
  EXPECT_EQ(yes, L"Ja") << "texts are in the new language already";
}

}  // namespace
}  // namespace pv::test
