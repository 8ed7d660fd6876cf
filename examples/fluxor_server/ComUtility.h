// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "library.h"

namespace fluxor {

/// The conversions of telegrams, done by pvItems32.CComUtility.
class ComUtility {
 public:
  ComUtility() : codes_(create<_CComUtility>(CLSID_CComUtility)) {}

  std::wstring hex(const _variant_t& number, std::size_t digits) const {
    return get(codes_, &_CComUtility::CIntToHex, number, static_cast<short>(digits));
  }
  long number(const std::wstring& hex) const {
    return get(codes_, &_CComUtility::CHexToInt, bstr(hex));
  }
  std::wstring hex_of_real(const _variant_t& number) const {
    return get(codes_, &_CComUtility::CSngToHex, number);
  }
  double real(const std::wstring& hex) const {
    return get(codes_, &_CComUtility::CHexToSng, bstr(hex));
  }
  /// The first `count` characters of `data`, which are cut off from it.
  std::wstring chunk(std::wstring& data, std::size_t count) const {
    _variant_t rest = text_value(data);
    const _variant_t first = get(codes_, &_CComUtility::GetChunk, &rest, static_cast<short>(count));
    data = text_of(rest);
    return text_of(first);
  }
  /// `text` cut or filled up with blanks.
  std::wstring padded(const std::wstring& text, std::size_t length) const {
    return get(codes_, &_CComUtility::Pad, bstr(text), _variant_t(static_cast<long>(length)),
               bstr(L" "), _variant_t(0L));
  }

 private:
  ComPtr<_CComUtility> codes_;
};

}  // namespace fluxor
