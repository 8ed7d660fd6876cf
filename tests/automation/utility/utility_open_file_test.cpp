// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Settings in files that the caller has opened itself: descriptors of the system's C library, which
// this program shares with the library under test.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <io.h>
#include <sys/stat.h>

#include "tests/automation/utility/utility_support.h"

namespace pv::test {
namespace {

class Descriptor {
 public:
  Descriptor(const OwnFile& file, int mode)
      : number_(_wopen(file.path().c_str(), mode, _S_IREAD | _S_IWRITE)) {
    EXPECT_GE(number_, 0);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { _close(number_); }

  int number() const { return number_; }
  operator Value() const { return Value(number_); }

 private:
  int number_;
};

constexpr int kRead = _O_RDONLY | _O_BINARY;
constexpr int kWrite = _O_WRONLY | _O_CREAT | _O_BINARY;

struct OpenSettings : testing::Test {
  const Object utility = Object::create(L"pvItems32.CUtility");

  template <class... A>
  Value setting(const A&... arguments) const {
    return utility.call(L"GetIniSettings", arguments...);
  }
};

constexpr const char* kFile =
    "Count=before\r\n"
    "[Items]\r\nCount=2\r\nName=first\r\n\r\n"
    "[ITEM1]\r\nCount=3\r\nSettings=a=b=c\r\n"
    "[ITEM2]\r\nCount=4\r\nOnly=here\r\n";

struct ReadOpenSettings : OpenSettings {
  const OwnFile file{L"items.ini", kFile};
  const Descriptor open{file, kRead};
};

TEST_F(ReadOpenSettings, SectionIsSearchedFirstWhenAskedFor) {
  EXPECT_EQ(setting(open, L"Items", L"Count", L"x", true, true), L"2");
  EXPECT_EQ(setting(open, L"ITEM2", L"Count", L"x", true, true), L"4");
  EXPECT_EQ(setting(open, L"ITEM1", L"Count", L"x", true, true), L"3");
}

TEST_F(ReadOpenSettings, ValueIsTheTextBehindTheFirstEqualsSign) {
  EXPECT_EQ(setting(open, L"ITEM1", L"Settings", L"x", true, true), L"a=b=c");
}

TEST_F(ReadOpenSettings, WithoutSectionSearchTheyAreReadInTheirOrder) {
  for (const wchar_t* count : {L"before", L"2", L"3", L"4", L"end", L"end"}) {
    EXPECT_EQ(setting(open, L"ITEM2", L"Count", L"end"), count);
  }
}

TEST_F(ReadOpenSettings, ResetAloneDoesNothing) {
  EXPECT_EQ(setting(open, L"", L"Name", L"x", true, false), L"first");
  EXPECT_EQ(setting(open, L"", L"Name", L"x", true, false), L"x");
}

TEST_F(ReadOpenSettings, WithoutResetTheSectionIsSearchedFromHereOn) {
  EXPECT_EQ(setting(open, L"ITEM1", L"Count", L"x", false, true), L"3");
  EXPECT_EQ(setting(open, L"ITEM2", L"Count", L"x", false, true), L"4");
  EXPECT_EQ(setting(open, L"ITEM1", L"Count", L"gone", false, true), L"gone");
  EXPECT_EQ(setting(open, L"ITEM1", L"Count", L"x", true, true), L"3");
}

TEST_F(ReadOpenSettings, KeySearchRunsOnPastTheSectionsEnd) {
  EXPECT_EQ(setting(open, L"Items", L"Only", L"x", true, true), L"here");
  EXPECT_EQ(setting(open, L"ITEM2", L"Settings", L"default", true, true), L"default");
}

TEST_F(ReadOpenSettings, MissingSectionGivesTheDefaultAndReadsToTheEnd) {
  EXPECT_EQ(setting(open, L"ITEM3", L"Count", L"default", true, true), L"default");
  EXPECT_EQ(setting(open, L"", L"Count", L"end"), L"end");
}

TEST_F(ReadOpenSettings, KeysAndSectionsAreComparedExactly) {
  EXPECT_EQ(setting(open, L"items", L"Count", L"x", true, true), L"x");
  EXPECT_EQ(setting(open, L"Items", L"count", L"x", true, true), L"x");
  EXPECT_EQ(setting(open, L"Items", L"Coun", L"x", true, true), L"x");
  EXPECT_EQ(setting(open, L"ITEM", L"Count", L"x", true, true), L"x");
}

TEST_F(ReadOpenSettings, PositionIsBehindTheLineThatWasFound) {
  setting(open, L"Items", L"Count", L"x", true, true);
  char next[6] = "";
  EXPECT_EQ(_read(open.number(), next, 5), 5);
  EXPECT_STREQ(next, "Name=");
}

TEST_F(ReadOpenSettings, ReadingGoesOnWhereTheCallerHasComeTo) {
  _lseek(open.number(), static_cast<long>(std::string_view(kFile).find("[ITEM2]")), SEEK_SET);
  EXPECT_EQ(setting(open, L"", L"Count", L"x"), L"4");
}

TEST_F(OpenSettings, LinesOnlyNeedToBeginWithHeaderOrKey) {
  const OwnFile file(L"x.ini", "[A] comment\r\n k=no\r\nk=yes \r\n");
  const Descriptor open(file, kRead);
  EXPECT_EQ(setting(open, L"A", L"k", L"x", true, true), L"yes ");
}

TEST_F(OpenSettings, TakeLineFeedsAloneAndAMissingLastLineEnd) {
  const OwnFile file(L"x.ini", "[A]\nk=1\n[B]\nk=2");
  const Descriptor open(file, kRead);
  EXPECT_EQ(setting(open, L"A", L"k", L"x", true, true), L"1");
  EXPECT_EQ(setting(open, L"B", L"k", L"x", true, true), L"2");
  EXPECT_EQ(setting(open, L"", L"k", L"end"), L"end");
}

TEST_F(OpenSettings, LinesHaveNoLimitOfLength) {
  const std::string value(200'000, 'v');
  const OwnFile file(L"x.ini",
                     "[A]\r\n" + std::string(100'000, '#') + "\r\nk=" + value + "\r\nl=1");
  const Descriptor open(file, kRead);
  EXPECT_EQ(setting(open, L"A", L"k", L"x", true, true).text().size(), value.size());
  EXPECT_EQ(setting(open, L"", L"l", L"x"), L"1");
}

TEST_F(OpenSettings, BytesThatAreNoTextDoNoHarm) {
  const OwnFile file(L"x.ini", std::string("\0\xFF\x1A\r\n[A]\r\nz\0=1\r\nk=a\0b\r\n", 25));
  const Descriptor open(file, kRead);
  EXPECT_EQ(setting(open, L"A", L"k", L"x", true, true), std::wstring(L"a\0b", 3));
}

TEST_F(OpenSettings, EmptyFileGivesTheDefault) {
  const OwnFile file(L"x.ini", "");
  const Descriptor open(file, kRead);
  EXPECT_EQ(setting(open, L"A", L"k", L"dé", true, true), L"dé");
  EXPECT_EQ(setting(open, L"A", L"k", L""), L"");
}

TEST_F(OpenSettings, TextIsInTheSystemsCodePage) {
  const OwnFile file(L"x.ini", in_code_page(L"[Säkt]\r\nschlüssel=é\r\n"));
  const Descriptor open(file, kRead);
  EXPECT_EQ(setting(open, L"Säkt", L"schlüssel", L"x", true, true), L"é");
}

TEST_F(OpenSettings, AreReadFromDescriptorsInTextModeToo) {
  const OwnFile file(L"items.ini", kFile);
  const Descriptor open(file, _O_RDONLY | _O_TEXT);
  EXPECT_EQ(setting(open, L"ITEM1", L"Count", L"x", true, true), L"3");
  EXPECT_EQ(setting(open, L"", L"Settings", L"x"), L"a=b=c");
}

TEST_F(OpenSettings, NeedReadableDescriptors) {
  const OwnFile file(L"items.ini", kFile);
  const Descriptor write_only(file, _O_WRONLY | _O_BINARY);
  EXPECT_EQ(setting(write_only, L"Items", L"Count", L"default", true, true), L"default");
  int closed = 0;
  {
    const Descriptor gone(file, kRead);
    closed = gone.number();
  }
  for (const int bad : {-1, closed, 2000, -32768}) {
    EXPECT_EQ(setting(bad, L"Items", L"Count", L"default", true, true), L"default") << bad;
    EXPECT_EQ(setting(bad, L"Items", L"Count", L"default"), L"default") << bad;
  }
}

TEST_F(OpenSettings, AreWrittenLineByLine) {
  const OwnFile file;
  {
    const Descriptor open(file, kWrite);
    EXPECT_EQ(utility.call(L"SaveIniSection", open, L"Items"), true);
    EXPECT_EQ(utility.call(L"SaveIniSettings", open, L"Count", L"2"), true);
    EXPECT_EQ(utility.call(L"SaveIniSettings", open, L"", L"a=b|"), true);
    EXPECT_EQ(utility.call(L"SaveIniSection", open, L""), true);
    EXPECT_EQ(utility.call(L"SaveIniSettings", open, L"k", L""), true);
  }
  EXPECT_EQ(file.bytes(), "[Items]\r\nCount=2\r\n=a=b|\r\n[]\r\nk=\r\n");
}

TEST_F(OpenSettings, AreReadBackAsTheyWereWritten) {
  const OwnFile file;
  const Descriptor open(file, _O_RDWR | _O_CREAT | _O_BINARY);
  const std::wstring value(L" é\0ü ", 5);
  utility.call(L"SaveIniSection", open, L"Ä");
  utility.call(L"SaveIniSettings", open, L"ö", value);
  EXPECT_EQ(setting(open, L"Ä", L"ö", L"x", true, true), value);
}

TEST_F(OpenSettings, CharactersOutsideTheCodePageAreMarked) {
  const OwnFile file;
  {
    const Descriptor open(file, kWrite);
    utility.call(L"SaveIniSettings", open, L"k", L"a語b");
  }
  EXPECT_EQ(file.bytes(), "k=a?b\r\n");
}

TEST_F(OpenSettings, StandBetweenWhatTheCallerWrites) {
  const OwnFile file;
  {
    const Descriptor open(file, kWrite);
    _write(open.number(), "; one\r\n", 7);
    utility.call(L"SaveIniSection", open, L"A");
    _write(open.number(), "; two\r\n", 7);
    utility.call(L"SaveIniSettings", open, L"k", L"v");
  }
  EXPECT_EQ(file.bytes(), "; one\r\n[A]\r\n; two\r\nk=v\r\n");
}

TEST_F(OpenSettings, LinesEndTheSameInTextMode) {
  const OwnFile file;
  {
    const Descriptor open(file, _O_WRONLY | _O_CREAT | _O_TEXT);
    _write(open.number(), "a\n", 2);
    EXPECT_EQ(utility.call(L"SaveIniSection", open, L"A"), true);
    _write(open.number(), "b\n", 2);
  }
  EXPECT_EQ(file.bytes(), "a\r\n[A]\r\nb\r\n");
}

TEST_F(OpenSettings, AreAppendedToFilesOpenedForAppending) {
  const OwnFile file(L"x.ini", "[Old]\r\nk=1\r\n");
  {
    const Descriptor open(file, _O_WRONLY | _O_APPEND | _O_BINARY);
    EXPECT_EQ(utility.call(L"SaveIniSection", open, L"New"), true);
    EXPECT_EQ(utility.call(L"SaveIniSettings", open, L"k", L"2"), true);
  }
  EXPECT_EQ(file.bytes(), "[Old]\r\nk=1\r\n[New]\r\nk=2\r\n");
}

TEST_F(OpenSettings, CannotBeWrittenToOtherDescriptors) {
  const OwnFile file(L"x.ini", "kept");
  const Descriptor read_only(file, kRead);
  for (const int bad : {read_only.number(), -1, 2000}) {
    EXPECT_EQ(utility.call(L"SaveIniSection", bad, L"A"), false) << bad;
    EXPECT_EQ(utility.call(L"SaveIniSettings", bad, L"k", L"v"), false) << bad;
  }
  EXPECT_EQ(file.bytes(), "kept");
}

}  // namespace
}  // namespace pv::test
