// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Constants, names, versions and dates of the utility facade, and sizes of pictures.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iomanip>
#include <sstream>

#include "pvItems32.h"
#include "tests/automation/utility/utility_support.h"
#include "tests/support/fake_object.h"

namespace pv::test {
namespace {

Object make_utility() { return Object::create(L"pvItems32.CUtility"); }

std::wstring locale_text(LCTYPE type) {
  wchar_t text[80] = L"";
  GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, ARRAYSIZE(text));
  return text;
}

TEST(UtilityConstants, AreTheirValues) {
  const Object utility = make_utility();
  EXPECT_EQ(utility.get(L"ecomDIRTY"), L"?");
  EXPECT_EQ(utility.get(L"RegSeparator"), L"|");
  EXPECT_EQ(utility.get(L"PICID_TXMCONNECTED"), 200);
  EXPECT_EQ(utility.get(L"PICID_TXMNOTCONNECTED"), 201);
  EXPECT_EQ(utility.get(L"ModemPortID"), 9);
}

TEST(UtilityConstants, CannotBePut) {
  const Object utility = make_utility();
  for (const wchar_t* member :
       {L"ecomDIRTY", L"RegSeparator", L"PICID_TXMCONNECTED", L"PICID_TXMNOTCONNECTED",
        L"ModemPortID", L"pvItem32Version", L"CurrentDate", L"Languages", L"pvFile"}) {
    EXPECT_FALSE(utility.try_put(member, 1).worked()) << printable(member);
  }
}

TEST(TxmTypeName, NamesTheModels) {
  const Object utility = make_utility();
  const wchar_t* const names[] = {L"Unknown", L"Fluxor",       L"Hydrel", L"Rivane",
                                  L"Gravix",  L"GravixTester", L"Tarola", L"Unknown"};
  for (int type = 0; type < 8; ++type) EXPECT_EQ(utility.call(L"TxmTypeName", type), names[type]);
  EXPECT_EQ(utility.call(L"TxmTypeName", -1), L"Unknown");
  EXPECT_EQ(utility.call(L"TxmTypeName", 32767), L"Unknown");
  EXPECT_EQ(utility.try_call(L"TxmTypeName", 32768).result, DISP_E_OVERFLOW);
}

struct DataTypes : testing::Test {
  const Object utility = make_utility();
  const Object item = Object::create(L"pvItems32.CItem");

  void add_variable(short data_type) const {
    item.get_object(L"Variables")
        .call(L"Add", L"", L"", L"", L"", 0, 0, 0, 0, Value(), Value(), data_type);
  }
};

TEST_F(DataTypes, HaveTheirClasses) {
  add_variable(0);
  const struct {
    int data_type;
    int expected;
  } rows[] = {
      {1, 1},   {2, 1},  {3, 1},  {4, 1},  {5, 2},  {6, 3},   {7, 2},   {8, 2},      {9, 3},
      {10, 2},  {11, 2}, {12, 2}, {13, 3}, {14, 3}, {15, 2},  {16, 2},  {17, 3},     {18, 2},
      {19, -1}, {20, 2}, {21, 2}, {-1, 4}, {0, -1}, {22, -1}, {-2, -1}, {32767, -1},
  };
  for (const auto& row : rows) {
    item.put(L"DataType", 1, row.data_type);
    EXPECT_EQ(utility.call(L"GetDataType", item), row.expected) << row.data_type;
  }
}

TEST_F(DataTypes, AreThoseOfTheVariableAskedFor) {
  add_variable(4);
  add_variable(5);
  EXPECT_EQ(utility.call(L"GetDataType", item), 1);
  EXPECT_EQ(utility.call(L"GetDataType", item, 1), 1);
  EXPECT_EQ(utility.call(L"GetDataType", item, 2), 2);
  EXPECT_EQ(utility.call(L"GetDataType", item, 3), 1) << "an index out of range means 1";
  EXPECT_EQ(utility.call(L"GetDataType", item, 0), 1);
}

TEST_F(DataTypes, NeedAnItemWithVariables) {
  EXPECT_EQ(utility.try_call(L"GetDataType", item).number(), 9);
  EXPECT_EQ(utility.try_call(L"GetDataType", Value::nothing()).number(), 91);
  EXPECT_EQ(utility.try_call(L"GetDataType", utility).result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(utility.try_call(L"GetDataType", L"1").result, DISP_E_TYPEMISMATCH);
}

// The fixed part of the version resource, as file properties show it.
VS_FIXEDFILEINFO file_version(const Module& module) {
  const HRSRC resource = FindResourceW(module.handle(), MAKEINTRESOURCEW(1), RT_VERSION);
  const auto* block =
      static_cast<const wchar_t*>(LockResource(LoadResource(module.handle(), resource)));
  constexpr std::size_t kHeader = 3 * sizeof(WORD) + sizeof L"VS_VERSION_INFO";
  VS_FIXEDFILEINFO info{};
  std::memcpy(&info, reinterpret_cast<const char*>(block) + (kHeader + 3) / 4 * 4, sizeof info);
  EXPECT_EQ(info.dwSignature, 0xFEEF04BDu);
  return info;
}

TEST(LibraryVersion, IsThatOfTheFile) {
  const VS_FIXEDFILEINFO info = file_version(Module());
  std::wostringstream version;
  version << HIWORD(info.dwFileVersionMS) << L'.' << std::setfill(L'0') << std::setw(2)
          << LOWORD(info.dwFileVersionMS) << L'.' << std::setw(4) << LOWORD(info.dwFileVersionLS);
  const std::wstring record = make_utility().get(L"pvItem32Version").text();
  const std::wstring start = L"pvItems32.dll|" + version.str() + L"|";
  EXPECT_EQ(record.substr(0, start.size()), start);
}

TEST(LibraryVersion, HasThreeFieldsWithASeparatorBehindEach) {
  const std::wstring record = make_utility().get(L"pvItem32Version").text();
  EXPECT_EQ(std::count(record.begin(), record.end(), L'|'), 3);
  EXPECT_TRUE(record.ends_with(L"|"));
  EXPECT_FALSE(record.ends_with(L"||")) << "the comments tell what build it is";
}

TEST(LibraryVersion, TellsTheBitsOfTheProcess) {
  const std::wstring record = make_utility().get(L"pvItem32Version").text();
  EXPECT_TRUE(record.ends_with(sizeof(void*) == 8 ? L" 64 bit|" : L" 32 bit|"));
}

TEST(ApplicationVersion, HasTwoDigitsForMinorAndRevision) {
  const struct {
    int major, minor, revision;
    const wchar_t* text;
  } rows[] = {{2, 5, 7, L"2.05.07"}, {10, 12, 345, L"10.12.345"}, {0, 0, 0, L"0.00.00"}};
  for (const auto& row : rows) {
    FakeObject application;
    application.expect_get(L"Major").returns(row.major);
    application.expect_get(L"Minor").returns(row.minor);
    application.expect_get(L"Revision").returns(row.revision);
    EXPECT_EQ(make_utility().call(L"AppVersion", application), row.text);
  }
}

TEST(ApplicationVersion, IsThatOfAScriptObjectToo) {
  FakeObject application(FakeObject::Kind::kScript);
  application.expect_get(L"Major").returns(L"2");
  application.expect_get(L"Minor").returns(5.0);
  application.expect_get(L"Revision").returns(short{7});
  EXPECT_EQ(make_utility().call(L"AppVersion", application), L"2.05.07");
}

TEST(ApplicationVersion, OfNothingIsAnError) {
  EXPECT_EQ(make_utility().try_call(L"AppVersion", Value::nothing()).number(), 91);
}

TEST(ApplicationVersion, OfAnotherObjectIsAnError) {
  const FakeObject other;
  EXPECT_FALSE(make_utility().try_call(L"AppVersion", other).worked());
}

TEST(ApplicationVersion, PassesTheErrorsOfTheHostThrough) {
  FakeObject application;
  application.expect_get(L"Major").raises(static_cast<HRESULT>(0x80040777), L"Kalvos", L"closed");
  const Outcome outcome = make_utility().try_call(L"AppVersion", application);
  EXPECT_EQ(outcome.code, static_cast<HRESULT>(0x80040777));
  EXPECT_EQ(outcome.source, L"Kalvos");
  EXPECT_EQ(outcome.description, L"closed");
}

std::wstring today() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  const std::wstring separator = locale_text(LOCALE_SDATE);
  std::wostringstream text;
  text << std::setfill(L'0') << std::setw(4) << now.wYear << separator
       << locale_text(LOCALE_SMONTHNAME1 + now.wMonth - 1u) << separator << std::setw(2)
       << now.wDay;
  return text.str();
}

TEST(CurrentDate, IsYearMonthNameAndDay) {
  const Object utility = make_utility();
  const std::wstring before = today();
  const std::wstring date = utility.get(L"CurrentDate").text();
  EXPECT_TRUE(date == before || date == today()) << printable(date) << ", " << printable(before);
}

class Bitmap {
 public:
  Bitmap(int width, int height) : handle_(CreateBitmap(width, height, 1, 1, nullptr)) {}
  Bitmap(const Bitmap&) = delete;
  Bitmap& operator=(const Bitmap&) = delete;
  ~Bitmap() { DeleteObject(handle_); }
  HBITMAP handle() const { return handle_; }
  long number() const { return static_cast<long>(reinterpret_cast<LONG_PTR>(handle_)); }

 private:
  HBITMAP handle_;
};

class ScreenContext {
 public:
  ScreenContext() : handle_(GetDC(nullptr)) {}
  ScreenContext(const ScreenContext&) = delete;
  ScreenContext& operator=(const ScreenContext&) = delete;
  ~ScreenContext() { ReleaseDC(nullptr, handle_); }
  HDC handle() const { return handle_; }
  long number() const { return static_cast<long>(reinterpret_cast<LONG_PTR>(handle_)); }

 private:
  HDC handle_;
};

TEST(PictureSize, IsWrittenToTypedVariables) {
  const Bitmap bitmap(37, 11);
  const ScreenContext screen;
  long height = -1, width = -1;
  make_utility().call(L"GetPictureSize", bitmap.number(), screen.number(), by_ref(height),
                      by_ref(width));
  EXPECT_EQ(height, 11);
  EXPECT_EQ(width, 37);
}

TEST(PictureSize, IsWrittenToScriptVariables) {
  const Bitmap bitmap(300, 200);
  const ScreenContext screen;
  Value height, width(L"0");
  make_utility().call(L"GetPictureSize", bitmap.number(), screen.number(), by_ref(height),
                      by_ref(width));
  EXPECT_EQ(height, 200);
  EXPECT_EQ(width, 300);
}

TEST(PictureSize, TakesLiteralsAndNoContext) {
  const Bitmap bitmap(3, 2);
  EXPECT_TRUE(make_utility().try_call(L"GetPictureSize", bitmap.number(), 0, 0, 0).worked());
}

TEST(PictureSize, LeavesTheBitmapFreeAndWhole) {
  const Bitmap bitmap(8, 8);
  const ScreenContext screen;
  long height = 0, width = 0;
  const Object utility = make_utility();
  for (int i = 0; i < 3; ++i) {
    utility.call(L"GetPictureSize", bitmap.number(), screen.number(), by_ref(height),
                 by_ref(width));
  }
  const HDC memory = CreateCompatibleDC(screen.handle());
  const HGDIOBJ former = SelectObject(memory, bitmap.handle());
  EXPECT_NE(former, nullptr) << "a bitmap goes into one context at a time";
  SelectObject(memory, former);
  DeleteDC(memory);
  EXPECT_EQ(width, 8);
}

TEST(PictureSize, LeaksNoContexts) {
  const Bitmap bitmap(8, 8);
  const ScreenContext screen;
  const Object utility = make_utility();
  long height = 0, width = 0;
  const DWORD before = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
  for (int i = 0; i < 50; ++i) {
    utility.call(L"GetPictureSize", bitmap.number(), screen.number(), by_ref(height),
                 by_ref(width));
  }
  EXPECT_LT(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), before + 10);
}

TEST(PictureSize, OfNoBitmapIsZero) {
  const ScreenContext screen;
  for (const long handle : {0L, 0x12345678L, screen.number()}) {
    long height = -1, width = -1;
    make_utility().call(L"GetPictureSize", handle, screen.number(), by_ref(height), by_ref(width));
    EXPECT_EQ(height, 0) << handle;
    EXPECT_EQ(width, 0) << handle;
  }
}

}  // namespace
}  // namespace pv::test
