// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/text_codec.h"

#include <gtest/gtest.h>

#include <string>

namespace pv {
namespace {

using namespace std::string_literals;

// A code page of one letter beyond ASCII, which takes two bytes; '?' for all others.
std::wstring widen_two_bytes(std::string_view bytes) {
  std::wstring text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const bool leads = bytes[i] == '\x81' && i + 1 < bytes.size();
    text += leads ? L'\u3042' : static_cast<wchar_t>(bytes[i]);
    if (leads) ++i;
  }
  return text;
}

std::string narrow_two_bytes(std::wstring_view text) {
  std::string bytes;
  for (const wchar_t c : text) bytes += c < 0x80 ? std::string(1, static_cast<char>(c)) : "\x81|"s;
  return bytes;
}

constexpr TextCodec kTwoBytes{widen_two_bytes, narrow_two_bytes};

TEST(TextCodec, LeavesAsciiAsItIs) {
  const std::string bytes = "k=1|caption|~\x7f"s + '\0' + "after NUL";
  const std::wstring text = L"k=1|caption|~\x7f"s + L'\0' + L"after NUL";
  for (const TextCodec* codec : {&latin1_codec(), &kTwoBytes}) {
    EXPECT_EQ(codec->widen(bytes), text);
    EXPECT_EQ(codec->narrow(text), bytes);
    EXPECT_EQ(codec->widen(""), L"");
    EXPECT_EQ(codec->narrow(L""), "");
  }
}

TEST(TextCodec, AsksItsCodePageForEverythingElse) {
  EXPECT_EQ(kTwoBytes.widen("a\x81|b"), L"a\u3042b");
  EXPECT_EQ(kTwoBytes.narrow(L"a\u3042b"), "a\x81|b");
  EXPECT_EQ(latin1_codec().widen("m\xb3/h"), L"m\u00b3/h");
  EXPECT_EQ(latin1_codec().narrow(L"m\u00b3/h \u20ac"), "m\xb3/h ?");
}

TEST(TextCodec, ReplacesTheTextThatIsThere) {
  std::wstring text = L"a longer text than the next ones";
  kTwoBytes.widen("short", text);
  EXPECT_EQ(text, L"short");
  kTwoBytes.widen("\x81|", text);
  EXPECT_EQ(text, L"\u3042");
}

TEST(TextCodec, AppendsTextsOneBehindTheOther) {
  for (const std::wstring_view last : {L"c", L"\u3042"}) {
    std::string bytes = "k=";
    const std::wstring_view texts[] = {L"a", L"", L"|", last};
    kTwoBytes.append_narrowed(texts, bytes);
    EXPECT_EQ(bytes, "k=a|" + kTwoBytes.narrow(last));
  }
}

TEST(TextCodec, EndsEachTextWithTheSeparator) {
  for (const std::wstring_view last : {L"c", L"\u3042"}) {
    std::string bytes = "k=";
    const std::wstring_view texts[] = {L"a", L"", last};
    kTwoBytes.append_separated(texts, ';', bytes);
    EXPECT_EQ(bytes, "k=a;;" + kTwoBytes.narrow(last) + ";");
  }
  std::string bytes = "k=";
  kTwoBytes.append_separated({}, ';', bytes);
  EXPECT_EQ(bytes, "k=");
}

TEST(TextCodec, AppendsToTheBytesThatAreThere) {
  std::string bytes = "k=";
  kTwoBytes.append_narrowed(L"a", bytes);
  kTwoBytes.append_narrowed(L"\u3042", bytes);
  kTwoBytes.append_narrowed(L"", bytes);
  EXPECT_EQ(bytes, "k=a\x81|");
}

TEST(TextCodec, KnowsAscii) {
  EXPECT_TRUE(is_ascii(L""));
  EXPECT_TRUE(is_ascii(L"\x01 ~\x7f"));
  EXPECT_FALSE(is_ascii(L"a\u0080"));
  EXPECT_FALSE(is_ascii(L"\u20ac"));
}

}  // namespace
}  // namespace pv
