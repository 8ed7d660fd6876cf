// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/CUtility.h"
#include "com/call.h"
#include "core/text/number_text.h"
#include "dialogs/symbol_editor.h"
#include "host/image_list.h"
#include "platform/resources.h"

// The symbols of item variables: their keys and pictures, and the editor.
namespace pv {
namespace {

constexpr const wchar_t* kNoSymbolKey = L"NOSYMBOL";
constexpr short kNoSymbolPicture = 201;

std::wstring key_of(_CTxm* txm, _CItem* item, short variable) {
  if (result_of(item, &_CItem::get_Symbol, variable).empty()) return kNoSymbolKey;
  return L"SYM" + format_integer(result_of(txm, &_CTxm::get_TxmType)) + L"." +
         format_integer(result_of(item, &_CItem::get_ItemID)) + L"." + format_integer(variable);
}

std::wstring symbol_key(_CTxm* txm, _CItem* item, short variable) {
  std::wstring key = kNoSymbolKey;
  attempt([&] { key = key_of(txm, item, variable); });
  return key;
}

// A symbol whose editor is not installed is shown as no symbol; an editor that fails gives Nothing.
Ref<IPictureDisp> picture_of(_CItem* item, short variable) {
  std::wstring symbol;
  attempt([&] { symbol = result_of(item, &_CItem::get_Symbol, variable); });
  if (symbol.empty()) return resource_bitmap(kNoSymbolPicture);
  Ref<IPictureDisp> picture;
  const bool answered = attempt([&] { picture = picture_of_symbol(symbol); });
  return answered && !picture ? resource_bitmap(kNoSymbolPicture) : picture;
}

bool edit(_CItem* item, short index) {
  Ref<_CVariable> variable;
  std::wstring symbol;
  const bool found = attempt([&] {
    variable =
        result_of(result_of(item, &_CItem::get_Variables), &_CVariables::get_Item, Variant(index));
    symbol = result_of(variable, &_CVariable::get_Symbol);
  });
  if (!found || !edit_symbol(symbol)) return false;
  call(variable, &_CVariable::put_Symbol, Bstr(symbol));
  return true;
}

// A picture that the image list already has is not added again.
std::wstring manage(const ImageList& images, _CTxm* txm, _CItem* item, short variable) {
  if (!images.has(kNoSymbolKey)) {
    images.add(kNoSymbolKey, resource_bitmap(kNoSymbolPicture).get());
  }
  std::wstring key = symbol_key(txm, item, variable);
  if (images.has(key)) return key;
  const auto picture = picture_of(item, variable);
  if (!picture) return kNoSymbolKey;
  images.add(key, picture.get());
  return key;
}

}  // namespace

STDMETHODIMP CUtility::GetSymbolKey(_CTxm* txm, _CItem* item, short variable,
                                    BSTR* result) noexcept {
  return method_with_result(result, [&] { return symbol_key(txm, item, variable); });
}

STDMETHODIMP CUtility::GetNoSymbolKey(BSTR* result) noexcept {
  return method_with_result(result, [] { return kNoSymbolKey; });
}

STDMETHODIMP CUtility::GetNoSymbolPicture(IPictureDisp** result) noexcept {
  return method_with_result(result, [] { return resource_bitmap(kNoSymbolPicture); });
}

STDMETHODIMP CUtility::ItemSymbolGetPicture(_CItem* item, short variable,
                                            IPictureDisp** result) noexcept {
  return method_with_result(result, [&] { return picture_of(item, variable); });
}

STDMETHODIMP CUtility::ItemSymbolEdit(_CItem* item, short variable, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return edit(item, variable); });
}

STDMETHODIMP CUtility::SymbolManager(IDispatch* images, _CTxm* txm, _CItem* item, short variable,
                                     BSTR* result) noexcept {
  return method_with_result(result, [&] { return manage(ImageList(images), txm, item, variable); });
}

}  // namespace pv
