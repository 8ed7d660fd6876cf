// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The registry of languages, its members and its flags.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/automation/utility/language_support.h"

namespace pv::test {
namespace {

Object make_languages() { return Object::create(L"pvItems32.CLanguages"); }

TEST(Languages, AreSixWithEnglishActive) {
  const Object languages = make_languages();
  const struct {
    const wchar_t *name, *extension;
    int picture;
  } rows[] = {
      {L"English (US)", L"us", 101}, {L"Hungarian", L"hu", 102}, {L"German", L"ger", 103},
      {L"Italian", L"ita", 104},     {L"French", L"fra", 105},   {L"Dutch", L"nl", 106},
  };
  EXPECT_EQ(languages.get(L"Count"), 6);
  for (int index = 1; index <= 6; ++index) {
    const Object language = languages.get_object(L"Item", index);
    EXPECT_EQ(language.get(L"Name"), rows[index - 1].name);
    EXPECT_EQ(language.get(L"Extension"), rows[index - 1].extension);
    EXPECT_EQ(language.get(L"PictureID"), rows[index - 1].picture);
    EXPECT_EQ(language.get(L"Index"), index);
    EXPECT_EQ(language.get(L"Key"), Value());
  }
  EXPECT_EQ(languages.get(L"ActiveLanguageID"), 1);
  EXPECT_EQ(languages.get(L"ActiveLanguage"), languages.get(L"Item", 1));
}

TEST(Languages, ActiveLanguageFollowsItsNumber) {
  const Object languages = make_languages();
  for (int index = 1; index <= 6; ++index) {
    languages.put(L"ActiveLanguageID", index);
    EXPECT_EQ(languages.get(L"ActiveLanguageID"), index);
    EXPECT_EQ(languages.get(L"ActiveLanguage"), languages.get(L"Item", index));
  }
}

TEST(Languages, NumberOfNoLanguageIsKeptButNamesNone) {
  const Object languages = make_languages();
  for (const long number : {0L, 7L, -1L, 100'000L}) {
    languages.put(L"ActiveLanguageID", number);
    EXPECT_EQ(languages.get(L"ActiveLanguageID"), number);
    EXPECT_EQ(languages.try_get(L"ActiveLanguage").number(), 9);
  }
}

TEST(Languages, ItemThatDoesNotExistIsAnError) {
  const Object languages = make_languages();
  EXPECT_EQ(languages.try_get(L"Item", 7).number(), 9);
  EXPECT_EQ(languages.try_get(L"Item", 0).number(), 9);
  EXPECT_EQ(languages.try_get(L"Item", L"us").number(), 5) << "they have no keys";
  EXPECT_EQ(languages.try_get(L"Item", L"1").number(), 5);
  EXPECT_EQ(languages.try_get(L"Item", L"").number(), 5);
}

TEST(Languages, RemoveOfWhatDoesNotExistIsAnError) {
  const Object languages = make_languages();
  EXPECT_EQ(languages.try_call(L"Remove", 7).number(), 9);
  EXPECT_EQ(languages.try_call(L"Remove", L"us").number(), 5);
  languages.call(L"Remove", 6);
  EXPECT_EQ(languages.get(L"Count"), 5);
}

TEST(Languages, MoreMayBeAddedUnderKeys) {
  const Object languages = make_languages();
  const Object added = languages.call_object(L"Add", L"dk", L"Dänisch", 107, L"da");
  EXPECT_EQ(added.get(L"Key"), L"dk");
  EXPECT_EQ(added.get(L"Name"), L"Dänisch");
  EXPECT_EQ(added.get(L"PictureID"), 107);
  EXPECT_EQ(added.get(L"Extension"), L"da");
  EXPECT_EQ(languages.get(L"Item", L"DK"), added);
  EXPECT_EQ(languages.get(L"Item", 7), added);
  languages.put(L"ActiveLanguageID", 7);
  EXPECT_EQ(languages.get(L"ActiveLanguage"), added);
}

TEST(Languages, MoreMayBeAddedWithoutKeys) {
  const Object languages = make_languages();
  for (const Value& key : {Value(), Value(L"")}) {
    EXPECT_EQ(languages.call_object(L"Add", key, L"x", 1, L"x").get(L"Name"), L"x");
  }
  EXPECT_EQ(languages.get(L"Count"), 8);
}

TEST(Languages, AddUnderAUsedKeyIsAnError) {
  const Object languages = make_languages();
  languages.call(L"Add", L"dk", L"a", 1, L"a");
  EXPECT_EQ(languages.try_call(L"Add", L"DK", L"b", 2, L"b").number(), 457);
  EXPECT_EQ(languages.get(L"Count"), 7);
}

TEST(Languages, RegisterLanguagesBeginsAnew) {
  const Object languages = make_languages();
  languages.call(L"Add", L"dk", L"a", 1, L"a");
  languages.get_object(L"Item", 1).put(L"Name", L"changed");
  languages.put(L"ActiveLanguageID", 4);
  EXPECT_EQ(languages.call(L"RegisterLanguages"), 6);
  EXPECT_EQ(languages.get(L"Count"), 6);
  EXPECT_EQ(languages.get(L"ActiveLanguageID"), 1);
  EXPECT_EQ(languages.get_object(L"Item", 1).get(L"Name"), L"English (US)");
}

TEST(Languages, ClearLeavesNone) {
  const Object languages = make_languages();
  languages.call(L"Clear");
  EXPECT_EQ(languages.get(L"Count"), 0);
  EXPECT_EQ(languages.get(L"ActiveLanguageID"), 1);
  EXPECT_EQ(languages.try_get(L"ActiveLanguage").number(), 9);
}

TEST(Languages, AreVisitedInOrder) {
  const Outcome outcome = make_languages().invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET);
  ASSERT_TRUE(outcome.worked());
  const auto enumerator = query<IEnumVARIANT>(outcome.value.punkVal);
  std::wstring extensions;
  for (Value item; enumerator->Next(1, &item, nullptr) == S_OK; item = Value()) {
    EXPECT_EQ(item.vt, VT_DISPATCH);
    extensions += Object(item).get(L"Extension").text() + L" ";
  }
  EXPECT_EQ(extensions, L"us hu ger ita fra nl ");
}

TEST(Language, KeepsWhatIsPut) {
  const Object language = Object::create(L"pvItems32.CLanguage");
  EXPECT_EQ(language.get(L"Name"), L"");
  EXPECT_EQ(language.get(L"Key"), Value());
  language.put(L"Name", std::wstring(L"Ω\0é", 3));
  language.put(L"Index", -5);
  language.put(L"PictureID", 7);
  language.put(L"Extension", L"el");
  EXPECT_EQ(language.get(L"Name"), std::wstring(L"Ω\0é", 3));
  EXPECT_EQ(language.get(L"Index"), -5);
  EXPECT_EQ(language.get(L"PictureID"), 7);
  EXPECT_EQ(language.get(L"Extension"), L"el");
}

TEST(Language, KeyMayBeAnyValue) {
  const Object language = Object::create(L"pvItems32.CLanguage");
  for (const Value& key : {Value(5), Value(L"k"), Value(2.5), Value::null(), Value()}) {
    language.put(L"Key", key);
    EXPECT_EQ(language.get(L"Key"), key);
  }
  const Object other = Object::create(L"pvItems32.CLanguage");
  language.set(L"Key", other);
  EXPECT_EQ(language.get(L"Key"), other);
}

Ref<IPicture> picture_of(const Object& language, const wchar_t* member) {
  const Value value = language.call(member);
  EXPECT_EQ(value.vt, VT_DISPATCH);
  return query<IPicture>(value.punkVal);
}

template <class Handle>
Handle handle_of(const Ref<IPicture>& picture, short expected_type) {
  short type = 0;
  EXPECT_EQ(picture->get_Type(&type), S_OK);
  EXPECT_EQ(type, expected_type);
  OLE_HANDLE handle = 0;
  EXPECT_EQ(picture->get_Handle(&handle), S_OK);
  return reinterpret_cast<Handle>(static_cast<ULONG_PTR>(handle));
}

BITMAP description_of(HBITMAP bitmap) {
  BITMAP description{};
  EXPECT_EQ(GetObjectW(bitmap, sizeof description, &description),
            static_cast<int>(sizeof description));
  return description;
}

TEST(Flags, AreBitmapsThatDiffer) {
  const Object languages = make_languages();
  std::set<std::string> contents;
  for (int index = 1; index <= 6; ++index) {
    const auto picture = picture_of(languages.get_object(L"Item", index), L"Picture");
    const BITMAP bitmap = description_of(handle_of<HBITMAP>(picture, PICTYPE_BITMAP));
    EXPECT_EQ(bitmap.bmWidth, 24);
    EXPECT_EQ(bitmap.bmHeight, 16);
    ASSERT_NE(bitmap.bmBits, nullptr);
    contents.emplace(static_cast<const char*>(bitmap.bmBits),
                     static_cast<std::size_t>(bitmap.bmWidthBytes * bitmap.bmHeight));
  }
  EXPECT_EQ(contents.size(), 6u);
}

TEST(Flags, AreIcons) {
  const Object languages = make_languages();
  for (int index = 1; index <= 6; ++index) {
    const auto picture = picture_of(languages.get_object(L"Item", index), L"Icon");
    ICONINFO info{};
    ASSERT_TRUE(GetIconInfo(handle_of<HICON>(picture, PICTYPE_ICON), &info));
    EXPECT_TRUE(info.fIcon);
    EXPECT_EQ(description_of(info.hbmColor).bmWidth, 32);
    EXPECT_EQ(description_of(info.hbmColor).bmHeight, 32);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
  }
}

TEST(Flags, AreNewPicturesOnEveryCall) {
  const Object language = make_languages().get_object(L"Item", 2);
  const Value first = language.call(L"Picture"), second = language.call(L"Picture");
  EXPECT_FALSE(first == second);
  EXPECT_EQ(references_of(first.punkVal), 1u);
}

TEST(Flags, OfAnUnknownPictureNumberAreAnError) {
  const Object language = Object::create(L"pvItems32.CLanguage");
  for (const int number : {0, 99, 107, -1}) {
    language.put(L"PictureID", number);
    EXPECT_EQ(language.try_call(L"Picture").number(), 5) << number;
    EXPECT_EQ(language.try_call(L"Icon").number(), 5) << number;
  }
}

}  // namespace
}  // namespace pv::test
