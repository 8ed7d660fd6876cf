// The input box: texts, masked texts, dates and times, and the value that stays until it is closed.

#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <cmath>
#include <iterator>

#include "tests/dialogs/driver/dialog_driver.h"

namespace pv::dialogs_test {
namespace {

using test::Object;
using test::Value;

constexpr wchar_t kForm[] = L"frmInputBox";
constexpr int kOk = 1000, kCancel = 1001, kPrompt = 1010, kScrolledPrompt = 1011;
constexpr int kText = 1020, kUnit = 1021, kDate = 1022, kTime = 1023;
constexpr double kSecond = 1.0 / 86400;

class InputBox : public testing::Test {
 protected:
  InputBox() {
    utility_.set_language(1);
    box_.call(L"CloseMe");
  }
  ~InputBox() override {
    box_.call(L"CloseMe");
    utility_.set_language(1);
  }

  template <class... A>
  bool ask(const Script& script, const wchar_t* method, const A&... arguments) {
    bool answer = false;
    drive(
        kForm, [&] { answer = box_.call(method, arguments...).boolean(); }, script);
    return answer;
  }
  Value value() const { return box_.get(L"Value"); }

  /// The moment that a box with this default gives when it is confirmed unchanged.
  Value moment_of(const Value& initial) {
    EXPECT_TRUE(
        ask([](const Dialog& dialog) { dialog.click(kOk); }, L"ShowMeDT", L"When?", L"", initial));
    return value();
  }

  Utility utility_;
  Object box_ = Object::create(L"pvItems32.CInputBox");
};

void enter(const Dialog& dialog, const std::wstring& text) {
  dialog.type(kText, text);
  dialog.click(kOk);
  EXPECT_TRUE(dialog.wait_closed());
}

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

std::wstring decimal_separator() {
  wchar_t text[8] = L"";
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text, static_cast<int>(std::size(text)));
  return text;
}

TEST_F(InputBox, AsksForAText) {
  const std::wstring ok = utility_.text(200);
  const std::wstring cancel = utility_.text(201);
  EXPECT_TRUE(ask(
      [&](const Dialog& dialog) {
        EXPECT_EQ(dialog.title(), L"Input & more");
        EXPECT_EQ(dialog.text(kPrompt), L"Flow & rate?");
        EXPECT_EQ(dialog.text(kUnit), L"l/s");
        EXPECT_EQ(dialog.text(kText), L"12" + decimal_separator() + L"5");
        EXPECT_EQ(dialog.ask(kText, EM_GETPASSWORDCHAR), 0);
        EXPECT_EQ(dialog.selection(kText), (std::pair{0, 4}));
        EXPECT_EQ(dialog.focused(), kText);
        EXPECT_EQ(dialog.caption(kOk), ok);
        EXPECT_EQ(dialog.caption(kCancel), cancel);
        EXPECT_FALSE(dialog.shows(kDate));
        EXPECT_FALSE(dialog.shows(kTime));
        enter(dialog, L"13,75");
      },
      L"ShowMe", L"Flow & rate?", L"Input & more", 12.5, L"l/s"));
  EXPECT_EQ(value(), L"13,75");
}

TEST_F(InputBox, EnterConfirms) {
  EXPECT_TRUE(ask([](const Dialog& dialog) { dialog.press_key(VK_RETURN); }, L"ShowMe", L"?", L"",
                  L"as it was"));
  EXPECT_EQ(value(), L"as it was");
}

TEST_F(InputBox, AnEmptyTextIsAText) {
  EXPECT_TRUE(ask([](const Dialog& dialog) { enter(dialog, L""); }, L"ShowMe", L"?", L"", L"x"));
  EXPECT_EQ(value(), L"");
}

TEST_F(InputBox, WithoutATitleItHasOneOfItsOwn) {
  std::wstring omitted;
  std::wstring empty;
  ask([&](const Dialog& dialog) { omitted = dialog.title(); }, L"ShowMe", L"?");
  ask([&](const Dialog& dialog) { empty = dialog.title(); }, L"ShowMe", L"?", L"");
  EXPECT_FALSE(omitted.empty());
  EXPECT_EQ(omitted, empty);
}

TEST_F(InputBox, TitleTextUnitAndMaskOfTheLastShowAreGone) {
  std::wstring own_title;
  ask([&](const Dialog& dialog) { own_title = dialog.title(); }, L"ShowMe", L"?");
  ask([](const Dialog&) {}, L"ShowMePW", L"?", L"Title", L"secret", L"m");
  ask(
      [&](const Dialog& dialog) {
        EXPECT_EQ(dialog.title(), own_title);
        EXPECT_EQ(dialog.text(kText), L"");
        EXPECT_EQ(dialog.text(kUnit), L"");
        EXPECT_EQ(dialog.ask(kText, EM_GETPASSWORDCHAR), 0);
      },
      L"ShowMe", L"?");
}

TEST_F(InputBox, AMaskedTextIsShownInStars) {
  EXPECT_TRUE(ask(
      [](const Dialog& dialog) {
        EXPECT_EQ(dialog.ask(kText, EM_GETPASSWORDCHAR), L'*');
        EXPECT_EQ(dialog.text(kText), L"old");
        EXPECT_EQ(dialog.text(kUnit), L"m");
        enter(dialog, L"secret");
      },
      L"ShowMePW", L"Code?", L"Title", L"old", L"m"));
  EXPECT_EQ(value(), L"secret");
}

TEST_F(InputBox, EveryWayOfCancellingGivesFalse) {
  const Script ways[] = {
      [](const Dialog& dialog) { dialog.click(kCancel); },
      [](const Dialog& dialog) { dialog.close(); },
      [](const Dialog& dialog) { dialog.press_close_box(); },
      [](const Dialog& dialog) { dialog.press_key(VK_ESCAPE); },
  };
  for (const wchar_t* method : {L"ShowMe", L"ShowMePW", L"ShowMeDT"}) {
    for (const Script& way : ways) {
      EXPECT_FALSE(ask(
          [&](const Dialog& dialog) {
            way(dialog);
            EXPECT_TRUE(dialog.wait_closed());
          },
          method, L"?"));
    }
  }
}

TEST_F(InputBox, ACancelledBoxForgetsTheValueBefore) {
  ask([](const Dialog& dialog) { enter(dialog, L"first"); }, L"ShowMe", L"?");
  EXPECT_EQ(value(), L"first");
  EXPECT_FALSE(ask([](const Dialog& dialog) { dialog.click(kCancel); }, L"ShowMe", L"?"));
  EXPECT_EQ(value(), Value());
}

TEST_F(InputBox, TheValueIsEmptyBeforeAnyShowAndAfterClosing) {
  EXPECT_EQ(value(), Value());
  ask([](const Dialog& dialog) { enter(dialog, L"text"); }, L"ShowMe", L"?");
  EXPECT_EQ(value(), L"text");
  EXPECT_EQ(value(), L"text") << "reading changes nothing";
  box_.call(L"CloseMe");
  EXPECT_EQ(value(), Value());
  box_.call(L"CloseMe");  // closing twice does no harm
}

TEST_F(InputBox, TwoObjectsShareOneForm) {
  const Object second = Object::create(L"pvItems32.CInputBox");
  ask([](const Dialog& dialog) { enter(dialog, L"text"); }, L"ShowMe", L"?");
  EXPECT_EQ(second.get(L"Value"), L"text");
  second.call(L"CloseMe");
  EXPECT_EQ(value(), Value());
}

TEST_F(InputBox, TheOwnerIsBlocked) {
  const HostWindow host;
  HostObject owner;
  owner.answer(L"hWnd", static_cast<long>(reinterpret_cast<LONG_PTR>(host.window())));
  ask(
      [&](const Dialog& dialog) {
        EXPECT_EQ(GetWindow(dialog.window(), GW_OWNER), host.window());
        EXPECT_FALSE(IsWindowEnabled(host.window()));
      },
      L"ShowMe", L"?", L"", L"", L"", owner.get());
  EXPECT_TRUE(IsWindowEnabled(host.window()));
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

TEST_F(InputBox, RelabellingKeepsWhatWasTyped) {
  const HostWindow host;
  utility_.set_language(3);
  const std::wstring cancel = utility_.text(201);
  utility_.set_language(1);
  EXPECT_TRUE(ask(
      [&](const Dialog& dialog) {
        dialog.type(kText, L"typed");
        host.send([&] { utility_.set_language(3); });
        EXPECT_EQ(dialog.caption(kCancel), cancel);
        EXPECT_EQ(dialog.text(kText), L"typed");
        dialog.click(kOk);
      },
      L"ShowMe", L"?"));
  EXPECT_EQ(value(), L"typed");
}

TEST_F(InputBox, ClosingFromOutsideWhileItIsOpenEndsItLikeCancel) {
  const HostWindow host;
  EXPECT_FALSE(ask(
      [&](const Dialog& dialog) {
        host.post([&] { box_.call(L"CloseMe"); });
        EXPECT_TRUE(dialog.wait_closed());
      },
      L"ShowMe", L"?"));
}

std::wstring repeated(const std::wstring& text, int times) {
  std::wstring result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

TEST_F(InputBox, APromptOfAnyLengthLeavesFieldsAndButtonsOnTheScreen) {
  const std::wstring words = repeated(L"many words ", 400);
  const std::wstring lines = repeated(L"line\n", 300);
  for (const int dpi : {96, 192}) {
    const Resolution resolution(dpi);
    for (const wchar_t* method : {L"ShowMe", L"ShowMeDT"}) {
      for (const std::wstring& prompt : {std::wstring(), words, lines}) {
        ask([](const Dialog& dialog) { EXPECT_EQ(dialog.layout_faults(), ""); }, method, prompt);
      }
    }
  }
}

TEST_F(InputBox, APromptThatIsHigherThanTheScreenScrolls) {
  EXPECT_TRUE(ask(
      [](const Dialog& dialog) {
        EXPECT_FALSE(dialog.shows(kPrompt));
        EXPECT_TRUE(dialog.shows(kScrolledPrompt));
        EXPECT_EQ(dialog.text(kScrolledPrompt), repeated(L"line\r\n", 300));
        EXPECT_EQ(dialog.ask(kScrolledPrompt, EM_GETFIRSTVISIBLELINE), 0);
        EXPECT_EQ(dialog.focused(), kText);
        dialog.click(kOk);
      },
      L"ShowMe", repeated(L"line\n", 300)));
  ask(
      [](const Dialog& dialog) {
        EXPECT_TRUE(dialog.shows(kPrompt));
        EXPECT_FALSE(dialog.shows(kScrolledPrompt));
      },
      L"ShowMe", L"short again");
}

TEST_F(InputBox, ALongUnitBreaks) {
  for (const wchar_t* method : {L"ShowMe", L"ShowMeDT"}) {
    ask([](const Dialog& dialog) { EXPECT_EQ(dialog.layout_faults(), ""); }, method, L"Rate?", L"",
        L"", repeated(L"litres per second ", 6));
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
