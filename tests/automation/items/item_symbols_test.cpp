// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The pictures of the items' symbols in an image list of the host.

#include <gtest/gtest.h>
#include <ocidl.h>

#include "tests/automation/items/item_support.h"
#include "tests/support/fake_object.h"
#include "tests/support/image_list.h"

namespace pv::test {
namespace {

void append(std::string& bytes, std::size_t size, unsigned number) {
  for (; size > 0; --size, number >>= 8) bytes += static_cast<char>(number & 255);
}

/// A black bitmap of 24 bits per point, one point high.
std::string bitmap(unsigned width) {
  const unsigned row = (width * 3 + 3) / 4 * 4;
  std::string bytes = "BM";
  for (unsigned number : {54 + row, 0u, 54u, 40u, width, 1u}) append(bytes, 4, number);
  append(bytes, 2, 1);
  append(bytes, 2, 24);
  for (unsigned number : {0u, row, 0u, 0u, 0u, 0u}) append(bytes, 4, number);
  return bytes + std::string(row, '\0');
}

long width_of(const Value& picture) {
  OLE_XSIZE_HIMETRIC width = 0;
  const auto held = query<IPicture>(picture.punkVal);
  EXPECT_TRUE(held && SUCCEEDED(held->get_Width(&width)));
  return width;
}

class ItemSymbols : public testing::Test {
 protected:
  Object add_item_with(const wchar_t* key, const Texts& symbols) const {
    const Object item = add_item(items_, key, ++ids_, static_cast<int>(symbols.size()));
    int variable = 0;
    for (const std::wstring& symbol : symbols) item.put(L"Symbol", ++variable, symbol);
    return item;
  }
  Value load(const Value& control) const {
    return items_.call(L"LoadItemSymbols", control, pictures_.path());
  }
  /// Whether a control of such a type is taken for an image list.
  bool takes(const ImageListControl::Type& type) const {
    const ImageListControl control(type);
    const long result = load(control).number();
    EXPECT_EQ(control.images().size(), result == -1 ? 1u : 0u);
    return result == -1;
  }

  const Object items_ = Object::create(L"pvItems32.CItems");
  const TestFolder pictures_;
  mutable int ids_ = 0;
};

TEST_F(ItemSymbols, OfEveryVariableGoToTheImageListUnderTheirNamesInCapitals) {
  pictures_.write(L"FLOW.BMP", bitmap(8));
  pictures_.write(L"HEAT.BMP", bitmap(16));
  pictures_.write(L"DOOR.BMP", bitmap(24));
  add_item_with(L"1", {L"flow", L"Heat"});
  add_item_with(L"2", {L"DOOR"});
  const ImageListControl control;
  const Value result = load(control);
  EXPECT_EQ(result, -1);
  EXPECT_EQ(result.vt, VT_I4);
  EXPECT_EQ(control.keys(), (Texts{L"FLOW", L"HEAT", L"DOOR"}));
  const long unit = width_of(control.images()[0].picture);
  EXPECT_GT(unit, 0);
  EXPECT_NEAR(width_of(control.images()[1].picture), 2 * unit, 2);
  EXPECT_NEAR(width_of(control.images()[2].picture), 3 * unit, 2);
}

TEST_F(ItemSymbols, AreAddedAtTheEnd) {
  pictures_.write(L"FLOW.BMP", bitmap(8));
  add_item_with(L"1", {L"FLOW"});
  const ImageListControl control;
  EXPECT_EQ(load(control), -1);
  ASSERT_EQ(control.images().size(), 1u);
  EXPECT_TRUE(is_missing(control.images()[0].index));
}

TEST_F(ItemSymbols, AreFoundWithoutASeparatorBehindThePath) {
  const TestFolder folder;
  folder.write(L"symFLOW.BMP", bitmap(8));
  add_item_with(L"1", {L"flow"});
  const ImageListControl control, other;
  EXPECT_EQ(items_.call(L"LoadItemSymbols", control, folder.file(L"sym")), -1);
  EXPECT_EQ(control.keys(), Texts{L"FLOW"});
  EXPECT_EQ(items_.call(L"LoadItemSymbols", other, folder.file(L"")), 0);
  EXPECT_EQ(other.keys(), Texts{});
}

TEST_F(ItemSymbols, WhoseFileIsMissingAreLeftOutAndTheResultIsZero) {
  pictures_.write(L"FLOW.BMP", bitmap(8));
  pictures_.write(L"DOOR.BMP", bitmap(8));
  add_item_with(L"1", {L"FLOW", L"HEAT"});
  add_item_with(L"2", {L"DOOR"});
  const ImageListControl control;
  EXPECT_EQ(load(control), 0);
  EXPECT_EQ(control.keys(), (Texts{L"FLOW", L"DOOR"}));
}

TEST_F(ItemSymbols, ThatAreEmptyHaveNoFile) {
  pictures_.write(L"FLOW.BMP", bitmap(8));
  add_item_with(L"1", {L"", L"FLOW"});
  const ImageListControl control;
  EXPECT_EQ(load(control), 0);
  EXPECT_EQ(control.keys(), Texts{L"FLOW"});
}

TEST_F(ItemSymbols, WhoseFileIsNoPictureAreLeftOutAndTheResultIsZero) {
  pictures_.write(L"EMPTY.BMP", "");
  pictures_.write(L"TEXT.BMP", "this is no picture");
  pictures_.write(L"SHORT.BMP", bitmap(8).substr(0, 20));
  pictures_.write(L"CUT.BMP", bitmap(8).substr(0, 70));
  pictures_.write(L"FLOW.BMP", bitmap(8));
  add_item_with(L"1", {L"EMPTY", L"TEXT", L"SHORT", L"CUT", L"FLOW"});
  const ImageListControl control;
  EXPECT_EQ(load(control), 0);
  EXPECT_EQ(control.keys(), Texts{L"FLOW"});
}

TEST_F(ItemSymbols, UsedTwiceAreAddedOnceAndTheResultIsZero) {
  pictures_.write(L"FLOW.BMP", bitmap(8));
  pictures_.write(L"DOOR.BMP", bitmap(8));
  add_item_with(L"1", {L"FLOW", L"flow", L"DOOR"});
  const ImageListControl control;
  EXPECT_EQ(load(control), 0);
  EXPECT_EQ(control.keys(), (Texts{L"FLOW", L"DOOR"}));
  EXPECT_EQ(load(control), 0);
  EXPECT_EQ(control.images().size(), 2u);
}

TEST_F(ItemSymbols, MayHaveAnyLetters) {
  const std::wstring name = L"GRÖSSE.BMP";
  if (!pictures_.takes(name)) GTEST_SKIP() << "the file system has no such names";
  pictures_.write(name, bitmap(8));
  add_item_with(L"1", {L"größe"});  // small sharp s has no capital
  add_item_with(L"2", {L"grösse"});
  const ImageListControl control;
  EXPECT_EQ(load(control), 0);
  EXPECT_EQ(control.keys(), Texts{L"GRÖSSE"});
}

TEST_F(ItemSymbols, WithEmbeddedNulHaveNoFile) {
  using namespace std::string_literals;
  pictures_.write(L"FLOW.BMP", bitmap(8));
  pictures_.write(L"FLOW", bitmap(8));
  add_item_with(L"1", {L"FLOW\0X"s});
  const ImageListControl control;
  EXPECT_EQ(load(control), 0);
  EXPECT_EQ(control.keys(), Texts{});
}

TEST_F(ItemSymbols, OfNoItemsAreAllThere) {
  EXPECT_EQ(load(ImageListControl()), -1);
  add_item(items_, L"1", 1);
  EXPECT_EQ(load(ImageListControl()), -1);
}

TEST_F(ItemSymbols, OfAllItemsAreLoadedWhateverTheVersion) {
  pictures_.write(L"FLOW.BMP", bitmap(8));
  pictures_.write(L"DOOR.BMP", bitmap(8));
  add_item_with(L"1", {L"FLOW"});
  add_item_with(L"2", {L"DOOR"});
  items_.get_object(L"Versions").call(L"Add", L"V", 1);
  items_.put(L"Version", L"V");
  const ImageListControl control;
  EXPECT_EQ(load(control), -1);
  EXPECT_EQ(control.keys(), (Texts{L"FLOW", L"DOOR"}));
}

// --- The type of the control

TEST_F(ItemSymbols, NeedAControlWhoseClassOrInterfaceIsNamedImageList) {
  pictures_.write(L"FLOW.BMP", bitmap(8));
  add_item_with(L"1", {L"FLOW"});
  EXPECT_TRUE(takes({L"ImageList", L"IImageList"}));
  EXPECT_TRUE(takes({L"ImageList", L""}));
  EXPECT_TRUE(takes({L"ImageList", L"IListView"}));
  EXPECT_TRUE(takes({L"", L"IImageList"}));
  EXPECT_TRUE(takes({L"", L"_ImageList"}));
  EXPECT_TRUE(takes({L"", L"ImageList"}));
}

TEST_F(ItemSymbols, RefuseControlsOfOtherTypes) {
  pictures_.write(L"FLOW.BMP", bitmap(8));
  add_item_with(L"1", {L"FLOW"});
  EXPECT_FALSE(takes({L"ListView", L"IListView"}));
  EXPECT_FALSE(takes({L"ListView", L"IImageList"}));
  EXPECT_FALSE(takes({L"ImageLists", L""}));
  EXPECT_FALSE(takes({L"imagelist", L""}));
  EXPECT_FALSE(takes({L"IImageList", L""}));
  EXPECT_FALSE(takes({L"_ImageList", L""}));
  EXPECT_FALSE(takes({L"", L"IImageList2"}));
  EXPECT_FALSE(takes({L"", L"MyImageList"}));
  EXPECT_FALSE(takes({L"", L"mageList"}));
  EXPECT_FALSE(takes({L"", L"_"}));
  EXPECT_FALSE(takes({L"", L"I"}));
  EXPECT_FALSE(takes({L"", L""}));
}

TEST_F(ItemSymbols, RefuseWhatHasNoTypeInformation) {
  add_item_with(L"1", {L"FLOW"});
  const FakeObject compiled, script(FakeObject::Kind::kScript);  // fail the test for any call
  EXPECT_EQ(load(compiled), 0);
  EXPECT_EQ(load(script), 0);
  EXPECT_EQ(load(Value::nothing()), 0);
  EXPECT_EQ(load(items_), 0);
}

TEST_F(ItemSymbols, GiveZeroWhenTheImageListFails) {
  pictures_.write(L"FLOW.BMP", bitmap(8));
  add_item_with(L"1", {L"FLOW"});
  // The control calls its collection by another name.
  class Renamed final : public DispatchObject {
   public:
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
      return like_.get()->GetTypeInfo(index, locale, info);
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override {
      return E_NOTIMPL;
    }

   private:
    DISPID id_of(std::wstring_view) override { return DISPID_UNKNOWN; }
    const ImageListControl like_;
  };
  const Ref<IDispatch> control(new Renamed);
  EXPECT_EQ(load(control), 0);
}

}  // namespace
}  // namespace pv::test
