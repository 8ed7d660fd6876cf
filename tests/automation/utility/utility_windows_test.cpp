// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Window positions: what a host's forms are asked, in which order, and what is kept of it.

#include <gtest/gtest.h>

#include "tests/automation/utility/utility_support.h"
#include "tests/support/fake_object.h"

namespace pv::test {
namespace {

// Host forms measure in twips, 1440 to the inch.
double screen_twips(int metric, int dots_per_inch) {
  const HDC screen = GetDC(nullptr);
  const double dpi = GetDeviceCaps(screen, dots_per_inch);
  ReleaseDC(nullptr, screen);
  return GetSystemMetrics(metric) * 1440.0 / dpi;
}
double screen_width() { return screen_twips(SM_CXSCREEN, LOGPIXELSX); }
double screen_height() { return screen_twips(SM_CYSCREEN, LOGPIXELSY); }

struct WindowPositions : testing::Test {
  const Object utility = Object::create(L"pvItems32.CUtility");
  const OwnFile file;

  std::wstring record(const wchar_t* section, const wchar_t* key = L"Window") const {
    return utility.call(L"pvGetSetting", file, section, key, L"none").text();
  }
  void keep(const std::wstring& record, const wchar_t* key = L"Window") const {
    ASSERT_EQ(utility.call(L"pvSaveSetting", file, L"Main", key, record), true);
  }
};
using SaveWindowPos = WindowPositions;
using RestoreWindowPos = WindowPositions;

void expect_bounds_asked(FakeObject& form, Value left, Value top, Value width, Value height) {
  form.expect_get(L"Left").returns(std::move(left));
  form.expect_get(L"Top").returns(std::move(top));
  form.expect_get(L"Width").returns(std::move(width));
  form.expect_get(L"Height").returns(std::move(height));
}

TEST_F(SaveWindowPos, WritesTheBoundsAndTheState) {
  FakeObject form;
  form.expect_get(L"WindowState").returns(0);
  expect_bounds_asked(form, 120.0F, 240.0F, 4800.0F, 3600.0F);
  EXPECT_EQ(utility.call(L"SaveWindowPos", form, file, L"Main"), true);
  EXPECT_EQ(record(L"Main"), L"120|240|4800|3600|0|");
}

TEST_F(SaveWindowPos, TakesTheKeyThatIsGiven) {
  FakeObject form;
  form.expect_get(L"WindowState").returns(0);
  expect_bounds_asked(form, 1, 2, 3, 4);
  EXPECT_EQ(utility.call(L"SaveWindowPos", form, file, L"Main", L"Editor"), true);
  EXPECT_EQ(record(L"Main", L"Editor"), L"1|2|3|4|0|");
  EXPECT_EQ(record(L"Main"), L"none");
}

TEST_F(SaveWindowPos, OfAMaximisedFormWritesItsStateAndLeavesItNormal) {
  FakeObject form;
  form.expect_get(L"WindowState").returns(short{2});
  form.expect_put(L"WindowState", {0});
  expect_bounds_asked(form, 120.0F, 240.0F, 4800.0F, 3600.0F);
  EXPECT_EQ(utility.call(L"SaveWindowPos", form, file, L"Main"), true);
  EXPECT_EQ(record(L"Main"), L"120|240|4800|3600|2|");
}

TEST_F(SaveWindowPos, OfAMinimisedFormWritesItsStateAndLeavesItNormal) {
  FakeObject form;
  form.expect_get(L"WindowState").returns(1);
  form.expect_put(L"WindowState", {0});
  expect_bounds_asked(form, -15.0F, 0.0F, 4800.0F, 3600.0F);
  EXPECT_EQ(utility.call(L"SaveWindowPos", form, file, L"Main"), true);
  EXPECT_EQ(record(L"Main"), L"-15|0|4800|3600|1|");
}

TEST_F(SaveWindowPos, WritesFractionsInTheUsersLocale) {
  FakeObject form;
  form.expect_get(L"WindowState").returns(0);
  expect_bounds_asked(form, 0.1F, 2.5, L"7", as_type(VT_CY, 4));
  EXPECT_EQ(utility.call(L"SaveWindowPos", form, file, L"Main"), true);
  EXPECT_EQ(record(L"Main"), in_user_locale(L"0.1|2.5|7|4|0|"));
}

TEST_F(SaveWindowPos, WritesEachBoundAsTheFormGivesIt) {
  FakeObject form;
  form.expect_get(L"WindowState").returns(0);
  expect_bounds_asked(form, 1234.5678, 12345678L, 1234.5678F, short{-7});
  EXPECT_EQ(utility.call(L"SaveWindowPos", form, file, L"Main"), true);
  EXPECT_EQ(record(L"Main"), in_user_locale(L"1234.5678|12345678|1234.568|-7|0|"));
}

TEST_F(SaveWindowPos, AsksScriptObjectsToo) {
  FakeObject form(FakeObject::Kind::kScript);
  form.expect_get(L"WindowState").returns(2);
  form.expect_put(L"WindowState", {0});
  expect_bounds_asked(form, 1, 2, 3, 4);
  EXPECT_EQ(utility.call(L"SaveWindowPos", form, file, L"Main"), true);
  EXPECT_EQ(record(L"Main"), L"1|2|3|4|2|");
}

TEST_F(SaveWindowPos, IsFalseWhereNoFileCanBe) {
  FakeObject form;
  form.expect_get(L"WindowState").returns(0);
  expect_bounds_asked(form, 1, 2, 3, 4);
  EXPECT_EQ(utility.call(L"SaveWindowPos", form, L"Z:\\no such folder\\x.ini", L"Main"), false);
}

TEST_F(SaveWindowPos, PassesTheErrorsOfTheFormThrough) {
  FakeObject form;
  form.expect_get(L"WindowState").returns(0);
  form.expect_get(L"Left").raises(static_cast<HRESULT>(0x800A016F), L"frmMain", L"unloaded");
  const Outcome outcome = utility.try_call(L"SaveWindowPos", form, file, L"Main");
  EXPECT_EQ(outcome.number(), 0x16F);
  EXPECT_EQ(outcome.source, L"frmMain");
  EXPECT_EQ(outcome.description, L"unloaded");
  EXPECT_FALSE(file.exists());
}

TEST_F(SaveWindowPos, NeedsAForm) {
  EXPECT_EQ(utility.try_call(L"SaveWindowPos", Value::nothing(), file, L"Main").number(), 91);
  EXPECT_EQ(utility.try_call(L"SaveWindowPos", 5, file, L"Main").result, DISP_E_TYPEMISMATCH);
  EXPECT_FALSE(utility.try_call(L"SaveWindowPos", utility, file, L"Main").worked());
}

void expect_restored(FakeObject& form, int border, float left, float top, float width, float height,
                     int state) {
  form.expect_get(L"BorderStyle").returns(border);
  form.expect_put(L"Left", {left});
  form.expect_put(L"Top", {top});
  form.expect_put(L"Width", {width});
  form.expect_put(L"Height", {height});
  form.expect_put(L"WindowState", {state});
}

void expect_moved(FakeObject& form, int border, float left, float top, int state) {
  form.expect_get(L"BorderStyle").returns(border);
  form.expect_put(L"Left", {left});
  form.expect_put(L"Top", {top});
  form.expect_put(L"WindowState", {state});
}

TEST_F(RestoreWindowPos, PlacesASizeableForm) {
  keep(L"120|240|4800|3600|0|");
  FakeObject form;
  expect_restored(form, 2, 120, 240, 4800, 3600, 0);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), true);
}

// Whatever the user has set: what was written is read.
TEST_F(RestoreWindowPos, ReadsAnUnusualDecimalSeparator) {
  for (const wchar_t* separator : {L"'", L"*", L","}) {
    const UserDecimal set(separator);
    FakeObject form;
    form.expect_get(L"WindowState").returns(0);
    expect_bounds_asked(form, 120.5F, 240.25F, 4800.5, 3600.75F);
    EXPECT_EQ(utility.call(L"SaveWindowPos", form, file, L"Main"), true);
    EXPECT_EQ(record(L"Main"), in_user_locale(L"120.5|240.25|4800.5|3600.75|0|"));
    expect_restored(form, 2, 120.5F, 240.25F, 4800.5F, 3600.75F, 0);
    EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), true);
  }
}

TEST_F(RestoreWindowPos, PlacesASizeableToolWindow) {
  keep(L"120|240|4800|3600|0|");
  FakeObject form;
  expect_restored(form, 5, 120, 240, 4800, 3600, 0);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), true);
}

TEST_F(RestoreWindowPos, MovesOtherFormsWithoutSizingThem) {
  keep(L"120|240|4800|3600|0|");
  for (const int border : {0, 1, 3, 4}) {
    FakeObject form;
    expect_moved(form, border, 120, 240, 0);
    EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), true) << border;
  }
}

TEST_F(RestoreWindowPos, AppliesTheStateLast) {
  for (const int state : {0, 1, 2}) {
    keep(L"1|2|3|4|" + std::to_wstring(state) + L"|");
    FakeObject form;
    expect_restored(form, 2, 1, 2, 3, 4, state);
    EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), true) << state;
  }
}

TEST_F(RestoreWindowPos, TakesTheKeyThatIsGiven) {
  keep(L"1|2|3|4|0|", L"Editor");
  FakeObject form;
  expect_restored(form, 2, 1, 2, 3, 4, 0);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main", L"Editor"), true);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), false);
}

TEST_F(RestoreWindowPos, PlacesScriptObjectsToo) {
  keep(L"1|2|3|4|2|");
  FakeObject form(FakeObject::Kind::kScript);
  expect_restored(form, 2, 1, 2, 3, 4, 2);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), true);
}

TEST_F(RestoreWindowPos, ReadsFieldsAsTolerantNumbers) {
  keep(L"2,5|0.5|12 twips|abc|1,6|rest");
  FakeObject form;
  expect_restored(form, 2, 2.5F, 0.5F, 12, 0, 2);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), true);
}

TEST_F(RestoreWindowPos, FormThatJustFitsTheScreenIsKept) {
  const auto width = static_cast<int>(screen_width());
  const auto height = static_cast<int>(screen_height());
  keep(L"100|200|" + std::to_wstring(width - 100) + L"|" + std::to_wstring(height - 200) + L"|0|");
  FakeObject form;
  expect_restored(form, 2, 100, 200, static_cast<float>(width - 100),
                  static_cast<float>(height - 200), 0);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), true);
}

TEST_F(RestoreWindowPos, FormTooWideIsBroughtToNineTenthsOfTheScreen) {
  keep(L"100|200|" + std::to_wstring(static_cast<int>(screen_width()) - 99) + L"|3600|0|");
  FakeObject form;
  expect_restored(form, 2, 0, 200, static_cast<float>(0.9 * screen_width()), 3600, 0);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), true);
}

TEST_F(RestoreWindowPos, FormTooHighIsBroughtToEightTenthsOfTheScreen) {
  keep(L"100|200|4800|" + std::to_wstring(static_cast<int>(screen_height()) - 199) + L"|0|");
  FakeObject form;
  expect_restored(form, 2, 100, 0, 4800, static_cast<float>(0.8 * screen_height()), 0);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), true);
}

TEST_F(RestoreWindowPos, FormFarOutIsBroughtBackInBothDirections) {
  keep(L"100000|100000|4800|3600|2|");
  FakeObject form;
  expect_restored(form, 5, 0, 0, static_cast<float>(0.9 * screen_width()),
                  static_cast<float>(0.8 * screen_height()), 2);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), true);
}

TEST_F(RestoreWindowPos, FormOfFixedSizeIsBroughtBackToo) {
  keep(L"100000|100000|4800|3600|0|");
  FakeObject form;
  expect_moved(form, 1, 0, 0, 0);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), true);
}

TEST_F(RestoreWindowPos, NegativePositionsAreKept) {
  keep(L"-1200|-15|4800|3600|0|");
  FakeObject form;
  expect_restored(form, 2, -1200, -15, 4800, 3600, 0);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), true);
}

TEST_F(RestoreWindowPos, WithoutRecordChangesNothing) {
  const FakeObject form;
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), false) << "no file";
  keep(L"");
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), false) << "empty";
  EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Other"), false) << "no section";
}

TEST_F(RestoreWindowPos, ShortRecordChangesNothing) {
  for (const wchar_t* record : {L"120", L"120|240|4800|3600", L"|||", L"1|2|3|"}) {
    keep(record);
    const FakeObject form;
    EXPECT_EQ(utility.call(L"RestoreWindowPos", form, file, L"Main"), false) << printable(record);
  }
}

TEST_F(RestoreWindowPos, PutsBackWhatWasSaved) {
  FakeObject before;
  before.expect_get(L"WindowState").returns(2);
  before.expect_put(L"WindowState", {0});
  expect_bounds_asked(before, 0.5F, 240.25F, 4800.0F, 3600.0F);
  EXPECT_EQ(utility.call(L"SaveWindowPos", before, file, L"Main"), true);
  FakeObject after;
  expect_restored(after, 2, 0.5F, 240.25F, 4800, 3600, 2);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", after, file, L"Main"), true);
}

TEST_F(RestoreWindowPos, PassesTheErrorsOfTheFormThrough) {
  keep(L"120|240|4800|3600|0|");
  FakeObject form;
  form.expect_get(L"BorderStyle").returns(2);
  form.expect_put(L"Left", {120.0F})
      .raises(static_cast<HRESULT>(0x800A0180), L"frmMain", L"maximised");
  const Outcome outcome = utility.try_call(L"RestoreWindowPos", form, file, L"Main");
  EXPECT_EQ(outcome.number(), 0x180);
  EXPECT_EQ(outcome.source, L"frmMain");
}

TEST_F(RestoreWindowPos, NeedsAForm) {
  keep(L"120|240|4800|3600|0|");
  EXPECT_EQ(utility.try_call(L"RestoreWindowPos", Value::nothing(), file, L"Main").number(), 91);
  EXPECT_EQ(utility.call(L"RestoreWindowPos", Value::nothing(), file, L"Other"), false);
}

}  // namespace
}  // namespace pv::test
