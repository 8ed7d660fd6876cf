// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The state that all objects of a thread share: who sees it, and how long it lives.

#include <gtest/gtest.h>

#include <climits>

#include "pvItems32.h"
#include "tests/automation/utility/utility_support.h"
#include "tests/support/fake_object.h"

namespace pv::test {
namespace {

Object make_utility() { return Object::create(L"pvItems32.CUtility"); }

void know_application(FakeObject& object) {
  for (const wchar_t* member : {L"Title", L"Major", L"Minor", L"Revision"}) object.knows(member);
}

TEST(SharedState, BeginsEmpty) {
  in_own_apartment([] {
    const Object utility = make_utility();
    EXPECT_EQ(utility.get(L"AppIniFileName"), L"");
    EXPECT_EQ(utility.get(L"AppHelpFileName"), L"");
    for (int slot = 0; slot <= 20; ++slot) EXPECT_EQ(utility.get(L"AppDirectory", slot), L"");
    EXPECT_TRUE(utility.get(L"Application").is_nothing());
    EXPECT_EQ(utility.get_object(L"Languages").get(L"ActiveLanguageID"), 1);
    EXPECT_EQ(utility.get_object(L"pvFile").get(L"FullName"), L"");
  });
}

TEST(SharedState, IsSeenThroughEveryFacade) {
  in_own_apartment([] {
    const std::wstring name(L"C:\\Ω\0é.ini", 10);
    make_utility().put(L"AppIniFileName", name);
    make_utility().put(L"AppHelpFileName", L"help.chm");
    make_utility().put(L"AppDirectory", 3, L"C:\\graphs");
    const Object utility = make_utility();
    EXPECT_EQ(utility.get(L"AppIniFileName"), name);
    EXPECT_EQ(utility.get(L"AppHelpFileName"), L"help.chm");
    EXPECT_EQ(utility.get(L"AppDirectory", 3), L"C:\\graphs");
  });
}

TEST(SharedState, HandsOutOneLanguageRegistryAndOneFileHelper) {
  in_own_apartment([] {
    const Object utility = make_utility(), other = make_utility();
    EXPECT_EQ(utility.get(L"Languages"), other.get(L"Languages"));
    EXPECT_EQ(utility.get(L"pvFile"), other.get(L"pvFile"));
    EXPECT_FALSE(utility.get_object(L"pvFile") == Object::create(L"pvItems32.CFile"));
    EXPECT_FALSE(utility.get_object(L"Languages") == Object::create(L"pvItems32.CLanguages"));
    utility.get_object(L"pvFile").put(L"FullName", L"C:\\a.b");
    EXPECT_EQ(other.get_object(L"pvFile").get(L"Drive"), L"C");
  });
}

TEST(SharedState, EachApartmentHasItsOwn) {
  in_own_apartment([] {
    const Object utility = make_utility();
    utility.put(L"AppIniFileName", L"mine.ini");
    utility.put(L"AppDirectory", 20, L"mine");
    utility.get_object(L"Languages").put(L"ActiveLanguageID", 2);
    in_own_apartment([] {
      const Object other = make_utility();
      EXPECT_EQ(other.get(L"AppIniFileName"), L"");
      EXPECT_EQ(other.get(L"AppDirectory", 20), L"");
      EXPECT_EQ(other.get(L"pvString", 205), L"Yes");
      other.put(L"AppIniFileName", L"other.ini");
      other.put(L"AppDirectory", 20, L"other");
      other.get_object(L"Languages").put(L"ActiveLanguageID", 3);
      EXPECT_EQ(other.get(L"pvString", 205), L"Ja");
    });
    EXPECT_EQ(utility.get(L"AppIniFileName"), L"mine.ini");
    EXPECT_EQ(utility.get(L"AppDirectory", 20), L"mine");
    EXPECT_EQ(utility.get(L"pvString", 205), L"Igen");
  });
}

TEST(SharedState, DirectoriesAreSeparateSlots) {
  in_own_apartment([] {
    const Object utility = make_utility();
    for (int slot = 0; slot <= 20; ++slot) {
      utility.put(L"AppDirectory", slot, std::to_wstring(slot));
    }
    for (int slot = 0; slot <= 20; ++slot) {
      EXPECT_EQ(utility.get(L"AppDirectory", slot), std::to_wstring(slot));
    }
  });
}

TEST(SharedState, DirectoriesBeyondTheSlotsAreASubscriptError) {
  const Object utility = make_utility();
  for (const long slot : {21L, -1L, 1000L, LONG_MAX, LONG_MIN}) {
    EXPECT_EQ(utility.try_get(L"AppDirectory", slot).number(), 9) << slot;
    EXPECT_EQ(utility.try_put(L"AppDirectory", slot, L"x").number(), 9) << slot;
  }
  EXPECT_EQ(utility.try_get(L"AppDirectory", 21).source, L"pvItems32.CUtility");
}

TEST(Application, IsKeptAndHandedOut) {
  in_own_apartment([] {
    FakeObject application;
    know_application(application);
    make_utility().set(L"Application", application);
    EXPECT_EQ(make_utility().get(L"Application"), Value(application));
    EXPECT_GE(application.references(), 1u);
    make_utility().set(L"Application", Value::nothing());
    EXPECT_TRUE(make_utility().get(L"Application").is_nothing());
    EXPECT_EQ(application.references(), 0u);
  });
}

TEST(Application, MayBeAScriptObject) {
  in_own_apartment([] {
    FakeObject application(FakeObject::Kind::kScript);
    know_application(application);
    make_utility().set(L"Application", application);
    EXPECT_EQ(make_utility().get(L"Application"), Value(application));
  });
}

TEST(Application, NeedsTitleAndVersion) {
  in_own_apartment([] {
    FakeObject application;
    know_application(application);
    const Object utility = make_utility();
    utility.set(L"Application", application);
    for (const wchar_t* left_out : {L"Title", L"Major", L"Minor", L"Revision"}) {
      FakeObject other;
      for (const wchar_t* member : {L"Title", L"Major", L"Minor", L"Revision"}) {
        if (std::wstring_view(member) != left_out) other.knows(member);
      }
      const Outcome outcome = utility.try_set(L"Application", other);
      EXPECT_EQ(outcome.number(), 13) << printable(left_out);
      EXPECT_FALSE(outcome.description.empty());
    }
    EXPECT_EQ(utility.try_set(L"Application", utility).number(), 13);
    EXPECT_EQ(utility.try_set(L"Application", L"Kalvos").result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(utility.get(L"Application"), Value(application)) << "a refused one changes nothing";
  });
}

TEST(Application, IsReplacedByTheNext) {
  in_own_apartment([] {
    FakeObject first, second;
    know_application(first);
    know_application(second);
    const Object utility = make_utility();
    utility.set(L"Application", first);
    utility.set(L"Application", second);
    EXPECT_EQ(first.references(), 0u);
    EXPECT_EQ(utility.get(L"Application"), Value(second));
  });
}

TEST(Application, IsReleasedWhenTheThreadLeavesCom) {
  FakeObject application;
  know_application(application);
  in_own_apartment([&] { make_utility().set(L"Application", application); });
  EXPECT_EQ(application.references(), 0u);
}

// Touches every part of the state.
void use(const FreshLibrary& library) {
  const Object utility = library.create(__uuidof(::CUtility));
  utility.put(L"AppIniFileName", L"x.ini");
  utility.put(L"AppDirectory", 1, L"x");
  utility.get_object(L"Languages").put(L"ActiveLanguageID", 2);
  utility.get_object(L"pvFile").put(L"FullName", L"C:\\a.b");
}

TEST(LibraryInUse, IsFreeWhenNothingWasTouched) {
  const FreshLibrary library;
  EXPECT_EQ(library.can_unload(), S_OK);
  in_own_apartment([&] {
    { const Object utility = library.create(__uuidof(::CUtility)); }
    EXPECT_EQ(library.can_unload(), S_OK) << "a facade alone shares nothing yet";
  });
}

TEST(LibraryInUse, StaysAsLongAsAThreadHasState) {
  const FreshLibrary library;
  in_own_apartment([&] {
    use(library);
    EXPECT_EQ(library.can_unload(), S_FALSE);
  });
  EXPECT_EQ(library.can_unload(), S_OK);
}

TEST(LibraryInUse, StateGoesWithTheLastLeavingOfCom) {
  const FreshLibrary library;
  in_own_apartment([&] {
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_FALSE);
    use(library);
    CoUninitialize();
    EXPECT_EQ(library.create(__uuidof(::CUtility)).get(L"AppIniFileName"), L"x.ini");
    EXPECT_EQ(library.can_unload(), S_FALSE);
  });
  EXPECT_EQ(library.can_unload(), S_OK);
}

TEST(LibraryInUse, StateBeginsAnewWithTheNextUseOfCom) {
  const FreshLibrary library;
  on_own_thread([&] {
    for (int round = 0; round < 3; ++round) {
      ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
      EXPECT_EQ(library.create(__uuidof(::CUtility)).get(L"AppIniFileName"), L"");
      use(library);
      CoUninitialize();
      EXPECT_EQ(library.can_unload(), S_OK);
    }
  });
}

TEST(LibraryInUse, StateGoesWithAThreadThatNeverLeftCom) {
  const FreshLibrary library;
  on_own_thread([&] {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    use(library);
  });
  EXPECT_EQ(library.can_unload(), S_OK);
}

TEST(LibraryInUse, StateGoesWithAThreadThatNeverJoinedCom) {
  const FreshLibrary library;
  on_own_thread([&] {
    const Object utility = library.create(__uuidof(::CUtility));
    utility.put(L"AppIniFileName", L"x.ini");
    EXPECT_EQ(utility.get(L"AppIniFileName"), L"x.ini");
  });
  EXPECT_EQ(library.can_unload(), S_OK);
}

TEST(LibraryInUse, OneThreadLeavingKeepsTheStateOfAnother) {
  const FreshLibrary library;
  in_own_apartment([&] {
    use(library);
    in_own_apartment([&] { use(library); });
    EXPECT_EQ(library.create(__uuidof(::CUtility)).get(L"AppIniFileName"), L"x.ini");
    EXPECT_EQ(library.can_unload(), S_FALSE);
  });
  EXPECT_EQ(library.can_unload(), S_OK);
}

TEST(LibraryInUse, LeavesTheProcessWhenItIsFree) {
  FreshLibrary library;
  in_own_apartment([&] { use(library); });
  ASSERT_EQ(library.can_unload(), S_OK);
  EXPECT_TRUE(library.unload());
}

TEST(LibraryInUse, ObjectsOutliveTheState) {
  const FreshLibrary library;
  Object languages;
  in_own_apartment(
      [&] { languages = library.create(__uuidof(::CUtility)).get_object(L"Languages"); });
  EXPECT_EQ(library.can_unload(), S_FALSE);
  EXPECT_EQ(languages.get(L"Count"), 6);
  languages = Object();
  EXPECT_EQ(library.can_unload(), S_OK);
}

}  // namespace
}  // namespace pv::test
