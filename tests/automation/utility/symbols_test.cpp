// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The symbols of items: their keys, their pictures, and image lists that are filled on demand.

#include <gtest/gtest.h>
#include <ocidl.h>

#include <random>

#include "tests/automation/items/item_support.h"
#include "tests/support/fake_object.h"
#include "tests/support/image_list.h"

namespace pv::test {
namespace {

constexpr wchar_t kBlackSymbol[] = L"S1:A1024";
constexpr wchar_t kCornerSymbol[] = L"S1:MP1022J";  // red top left, blue bottom right
constexpr long kPixels = 32;

/// What a picture shows.
class Shown {
 public:
  explicit Shown(const Value& picture) {
    const auto held = query<IPicture>(picture.punkVal);
    short type = 0;
    EXPECT_TRUE(held && SUCCEEDED(held->get_Type(&type)));
    EXPECT_EQ(type, PICTYPE_BITMAP);
    OLE_HANDLE handle = 0;
    held->get_Handle(&handle);
    GetObjectW(reinterpret_cast<HBITMAP>(static_cast<ULONG_PTR>(handle)), sizeof size_, &size_);
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HGDIOBJ former =
        SelectObject(memory, reinterpret_cast<HBITMAP>(static_cast<ULONG_PTR>(handle)));
    for (int y = 0; y < size_.bmHeight; ++y)
      for (int x = 0; x < size_.bmWidth; ++x) colours_.push_back(GetPixel(memory, x, y));
    SelectObject(memory, former);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
  }
  bool operator==(const Shown& other) const { return colours_ == other.colours_; }

  long width() const { return size_.bmWidth; }
  long height() const { return size_.bmHeight; }
  COLORREF at(long x, long y) const {
    return colours_[static_cast<std::size_t>(y * size_.bmWidth + x)];
  }

 private:
  BITMAP size_{};
  std::vector<COLORREF> colours_;
};

class Symbols : public testing::Test {
 protected:
  Object item_with(const Texts& symbols, short id = 120) const {
    const Object item =
        add_item(items_, std::to_wstring(++keys_).c_str(), id, static_cast<int>(symbols.size()));
    int variable = 0;
    for (const std::wstring& symbol : symbols) item.put(L"Symbol", ++variable, symbol);
    return item;
  }
  Object transmitter(long type) const {
    const Object txm = Object::create(L"pvItems32.CTxm");
    txm.put(L"TxmType", type);
    return txm;
  }
  Value key(const Value& txm, const Value& item, int variable = 1) const {
    return utility_.call(L"GetSymbolKey", txm, item, variable);
  }
  Shown picture(const Object& item, const Value& variable = Value::missing()) const {
    return Shown(utility_.call(L"ItemSymbolGetPicture", item, variable));
  }
  Shown no_symbol() const { return Shown(utility_.call(L"GetNoSymbolPicture")); }
  Value manage(const Value& images, const Value& txm, const Value& item, int variable = 1) const {
    return utility_.call(L"SymbolManager", images, txm, item, variable);
  }

  const Object utility_ = Object::create(L"pvItems32.CUtility");
  const Object items_ = Object::create(L"pvItems32.CItems");
  mutable int keys_ = 0;
};

TEST_F(Symbols, KeysAreMadeOfTypeItemAndVariable) {
  const Object item = item_with({L"a", L"b"});
  EXPECT_EQ(key(transmitter(1), item, 2), L"SYM1.120.2");
  EXPECT_EQ(key(transmitter(6), item, 1), L"SYM6.120.1");
  EXPECT_EQ(key(transmitter(1), item_with({L"a"}, -7)), L"SYM1.-7.1");
}

TEST_F(Symbols, TheKeyLooksAtTheSymbolOfTheVariableThatWasAskedFor) {
  const Object item = item_with({L"", L"b"});
  EXPECT_EQ(key(transmitter(1), item, 1), L"NOSYMBOL");
  EXPECT_EQ(key(transmitter(1), item, 2), L"SYM1.120.2");
}

TEST_F(Symbols, WithoutTransmitterItemOrSymbolThereIsNoKey) {
  const Object item = item_with({L"a"});
  EXPECT_EQ(key(Value::nothing(), item), L"NOSYMBOL");
  EXPECT_EQ(key(transmitter(1), Value::nothing()), L"NOSYMBOL");
  EXPECT_EQ(key(transmitter(1), item_with({L""})), L"NOSYMBOL");
  EXPECT_EQ(key(transmitter(1), item_with({})), L"NOSYMBOL");  // an error on the way
  EXPECT_EQ(utility_.call(L"GetNoSymbolKey"), L"NOSYMBOL");
}

TEST_F(Symbols, ThePictureOfNoSymbolIsABitmapOfTheLibrary) {
  EXPECT_EQ(no_symbol().width(), kPixels);
  EXPECT_EQ(no_symbol().height(), kPixels);
}

TEST_F(Symbols, APictureShowsTheSymbolPixelByPixel) {
  const Shown shown = picture(item_with({kCornerSymbol}));
  ASSERT_EQ(shown.width(), kPixels);
  ASSERT_EQ(shown.height(), kPixels);
  EXPECT_EQ(shown.at(0, 0), RGB(255, 0, 0));
  EXPECT_EQ(shown.at(31, 31), RGB(0, 0, 255));
  EXPECT_EQ(shown.at(1, 0), RGB(255, 255, 255));
  EXPECT_EQ(shown.at(31, 0), RGB(255, 255, 255));
  EXPECT_EQ(shown.at(0, 31), RGB(255, 255, 255));
}

TEST_F(Symbols, ThePictureIsOfTheVariableThatWasAskedFor) {
  const Object item = item_with({kBlackSymbol, kCornerSymbol, L""});
  EXPECT_TRUE(picture(item) == picture(item_with({kBlackSymbol})));
  EXPECT_TRUE(picture(item, 2) == picture(item_with({kCornerSymbol})));
  EXPECT_TRUE(picture(item, 3) == no_symbol());
}

TEST_F(Symbols, WithoutASymbolThePictureIsTheOneForIt) {
  EXPECT_TRUE(picture(item_with({L""})) == no_symbol());
  EXPECT_TRUE(picture(item_with({})) == no_symbol());
  EXPECT_TRUE(Shown(utility_.call(L"ItemSymbolGetPicture", Value::nothing())) == no_symbol());
}

TEST_F(Symbols, TextsThatCannotBeReadShowThePictureForNoSymbol) {
  for (const wchar_t* text : {L"FLOW", L"S2:P1024", L"|", L" "}) {
    EXPECT_TRUE(picture(item_with({text})) == no_symbol()) << printable(text);
  }
  EXPECT_FALSE(picture(item_with({L"S1:P1024"})) == no_symbol());
}

TEST_F(Symbols, TheManagerShowsThemSoUnderTheirOwnKeys) {
  const ImageListControl images;
  EXPECT_EQ(manage(images, transmitter(1), item_with({L"FLOW"})), L"SYM1.120.1");
  ASSERT_EQ(images.keys(), (Texts{L"NOSYMBOL", L"SYM1.120.1"}));
  EXPECT_TRUE(Shown(images.images()[1].picture) == no_symbol());
}

TEST_F(Symbols, AnyTextMakesAPicture) {
  const Object item = item_with({L"x"});
  const std::wstring letters = L"S1:ABPQ0123456789|\r\n abp";
  std::mt19937 random(3);
  for (int i = 0; i < 100'000; ++i) {
    std::wstring text = i % 2 ? L"S1:" : L"";
    for (auto left = random() % 30 + 1; left > 0; --left) {
      text += i % 3 ? letters[random() % letters.size()] : static_cast<wchar_t>(random() & 0xFFFF);
    }
    item.put(L"Symbol", text);
    ASSERT_FALSE(utility_.call(L"ItemSymbolGetPicture", item).is_nothing()) << printable(text);
  }
}

TEST_F(Symbols, TheManagerBeginsAnImageListWithThePictureForNoSymbol) {
  const ImageListControl images;
  EXPECT_EQ(manage(images, transmitter(1), item_with({kBlackSymbol})), L"SYM1.120.1");
  ASSERT_EQ(images.keys(), (Texts{L"NOSYMBOL", L"SYM1.120.1"}));
  EXPECT_TRUE(Shown(images.images()[0].picture) == no_symbol());
  EXPECT_TRUE(Shown(images.images()[1].picture) == picture(item_with({kBlackSymbol})));
}

TEST_F(Symbols, TheManagerAddsEachPictureOnce) {
  for (const auto lookup :
       {ImageListControl::Lookup::kByKey, ImageListControl::Lookup::kByPosition}) {
    const ImageListControl images({L"ImageList", L"IImageList"}, lookup);
    const Object item = item_with({kBlackSymbol, kCornerSymbol});
    const Object txm = transmitter(1);
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(manage(images, txm, item), L"SYM1.120.1");
      EXPECT_EQ(manage(images, txm, item, 2), L"SYM1.120.2");
    }
    EXPECT_EQ(images.keys(), (Texts{L"NOSYMBOL", L"SYM1.120.1", L"SYM1.120.2"}));
  }
}

TEST_F(Symbols, TheManagerGivesTheKeyForNoSymbol) {
  const ImageListControl images;
  EXPECT_EQ(manage(images, transmitter(1), item_with({L""})), L"NOSYMBOL");
  EXPECT_EQ(manage(images, Value::nothing(), item_with({kBlackSymbol})), L"NOSYMBOL");
  EXPECT_EQ(manage(images, transmitter(1), Value::nothing()), L"NOSYMBOL");
  EXPECT_EQ(images.keys(), (Texts{L"NOSYMBOL"}));
}

TEST_F(Symbols, TheManagerTakesAnyObjectOfThatShape) {
  const ImageListControl images({L"Whatever", L"IWhatever"});
  EXPECT_EQ(manage(images, transmitter(1), item_with({kBlackSymbol})), L"SYM1.120.1");
}

TEST_F(Symbols, ErrorsOfTheImageListReachTheCaller) {
  FakeObject broken;
  constexpr HRESULT kBroken = static_cast<HRESULT>(0x800A0000u + 4711);
  broken.expect_get(L"ListImages").raises(kBroken);
  EXPECT_EQ(
      utility_.try_call(L"SymbolManager", broken, transmitter(1), item_with({kBlackSymbol}), 1)
          .number(),
      4711);
  EXPECT_EQ(utility_
                .try_call(L"SymbolManager", Value::nothing(), transmitter(1),
                          item_with({kBlackSymbol}), 1)
                .number(),
            91);
}

}  // namespace
}  // namespace pv::test
