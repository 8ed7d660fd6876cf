// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The input box: dates and times.

#include "tests/dialogs/input_box_support.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <iterator>

namespace pv::dialogs_test {
namespace {

using test::Value;

void pick(const Dialog& dialog, int picker, const SYSTEMTIME& moment) {
  EXPECT_TRUE(dialog.ask(picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&moment)));
}

double now() {
  SYSTEMTIME moment{};
  GetLocalTime(&moment);
  double time = 0;
  SystemTimeToVariantTime(&moment, &time);
  return time;
}

Value date_value(double days) {
  Value value(days);
  value.vt = VT_DATE;
  return value;
}

TEST_F(InputBox, AsksForAMomentWithTwoPickersInPlaceOfTheText) {
  ask(
      [](const Dialog& dialog) {
        EXPECT_FALSE(dialog.shows(kText));
        EXPECT_TRUE(dialog.shows(kDate));
        EXPECT_TRUE(dialog.shows(kTime));
        EXPECT_EQ(dialog.pixels(kDate).top, dialog.pixels(kText).top);
        EXPECT_EQ(dialog.pixels(kTime).top, dialog.pixels(kText).top);
        EXPECT_EQ(dialog.text(kPrompt), L"When?");
        EXPECT_EQ(dialog.text(kUnit), L"UTC");
        EXPECT_EQ(dialog.title(), L"Title");
        EXPECT_EQ(dialog.focused(), kDate);
      },
      L"ShowMeDT", L"When?", L"Title", 45000.75, L"UTC");
}

TEST_F(InputBox, DaysComeFromTheDatePickerAndTheTimeOfDayFromTheTimePicker) {
  EXPECT_TRUE(ask(
      [](const Dialog& dialog) {
        pick(dialog, kDate, {2024, 2, 0, 29, 23, 59, 59, 0});
        pick(dialog, kTime, {1999, 7, 0, 4, 6, 30, 15, 0});
        dialog.click(kOk);
        EXPECT_TRUE(dialog.wait_closed());
      },
      L"ShowMeDT", L"When?"));
  EXPECT_EQ(value().vt, VT_R8);
  EXPECT_NEAR(value().real(), 45351 + (6 * 3600 + 30 * 60 + 15) * kSecond, kSecond / 100);
}

TEST_F(InputBox, ADefaultMayBeADateANumberOrADateText) {
  EXPECT_NEAR(moment_of(45000.75).real(), 45000.75, kSecond / 100);
  EXPECT_NEAR(moment_of(date_value(45000.25)).real(), 45000.25, kSecond / 100);
  EXPECT_EQ(moment_of(45000), Value(45000.0));
  EXPECT_NEAR(moment_of(L"2023-03-15 18:00:00").real(), 45000.75, kSecond / 100);
}

// Of a moment before day zero the days are negative, but the time of day still counts forwards.
TEST_F(InputBox, ADefaultBeforeDayZeroComesBackAsItWasShown) {
  for (const double moment : {-0.75, -1.25, -1.0, -36522.5, -0.0, 0.25}) {
    const double shown = moment == -0.75 ? 0.75 : moment;  // a day zero of its own sign
    EXPECT_NEAR(moment_of(date_value(moment)).real(), shown, kSecond / 100) << moment;
  }
}

TEST_F(InputBox, ANullDefaultIsNoDefaultInEveryKindOfBox) {
  for (const wchar_t* method : {L"ShowMe", L"ShowMePW"}) {
    EXPECT_TRUE(ask(
        [](const Dialog& dialog) {
          EXPECT_EQ(dialog.text(kText), L"");
          dialog.click(kOk);
        },
        method, L"?", L"", Value::null()));
    EXPECT_EQ(value(), L"");
  }
  const double before = now();
  EXPECT_NEAR(moment_of(Value::null()).real(), before, 10 * kSecond);
}

TEST_F(InputBox, WithoutADefaultItIsNow) {
  for (const Value& nothing :
       {Value(), Value::missing(), Value(L""), Value(L"no date"), Value(1e300), Value::null()}) {
    const double before = now();
    const double moment = moment_of(nothing).real();
    EXPECT_GE(moment, before - 2 * kSecond);
    EXPECT_LE(moment, now() + 2 * kSecond);
  }
}

/// A date or time format of the user, as set in the control panel, for as long as it lives.
class UserFormat {
 public:
  UserFormat(LCTYPE type, const wchar_t* format) : type_(type) {
    GetLocaleInfoW(LOCALE_USER_DEFAULT, type, before_, static_cast<int>(std::size(before_)));
    SetLocaleInfoW(LOCALE_USER_DEFAULT, type, format);
  }
  ~UserFormat() { SetLocaleInfoW(LOCALE_USER_DEFAULT, type_, before_); }
  UserFormat(const UserFormat&) = delete;
  UserFormat& operator=(const UserFormat&) = delete;

 private:
  LCTYPE type_;
  wchar_t before_[128] = L"";
};

constexpr SYSTEMTIME kMoment{2023, 3, 0, 15, 18, 4, 5, 0};

std::wstring user_date() {
  wchar_t text[128] = L"";
  GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &kMoment, nullptr, text,
                 static_cast<int>(std::size(text)));
  return text;
}

std::wstring user_time() {
  wchar_t text[128] = L"";
  GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &kMoment, nullptr, text,
                 static_cast<int>(std::size(text)));
  return text;
}

void expect_user_formats(const Dialog& dialog) {
  EXPECT_EQ(dialog.text(kDate), user_date());
  EXPECT_EQ(dialog.text(kTime), user_time());
  EXPECT_EQ(dialog.layout_faults(), "");
}

// The suite runs in several locales.
TEST_F(InputBox, PickersShowTheFormatsOfTheLocale) {
  for (const int dpi : {96, 120, 144, 192}) {
    const Resolution resolution(dpi);
    ask(expect_user_formats, L"ShowMeDT", L"When?", L"", user_date() + L" " + user_time());
  }
}

TEST_F(InputBox, PickersShowTheFormatsThatTheUserChose) {
  for (const wchar_t* date : {L"yyyy-MM-dd", L"dd/MM/yy", L"yyyy. M. d."}) {
    for (const wchar_t* time : {L"HH.mm.ss", L"H:mm:ss"}) {
      const UserFormat date_format(LOCALE_SSHORTDATE, date);
      const UserFormat time_format(LOCALE_STIMEFORMAT, time);
      ask(expect_user_formats, L"ShowMeDT", L"When?", L"", L"2023-03-15 18:04:05");
    }
  }
}

}  // namespace
}  // namespace pv::dialogs_test
