// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "com/call.h"

namespace pv {

/// A text property of an object, and the text that it is to have.
template <class I>
struct TextProperty {
  HRESULT (STDMETHODCALLTYPE I::*get)(BSTR*);
  HRESULT (STDMETHODCALLTYPE I::*put)(BSTR);
  std::wstring_view text;
};

/// Sets all of them or, when one fails, none. Restoring allocates nothing: a text keeps its
/// capacity.
template <class I>
void put_together(I* object, std::initializer_list<TextProperty<I>> properties) {
  std::vector<Bstr> former, wanted;
  for (const TextProperty<I>& property : properties) {
    former.push_back(text_result_of(object, property.get));
    wanted.emplace_back(property.text);
  }
  const TextProperty<I>* const all = properties.begin();
  std::size_t done = 0;
  try {
    for (; done < properties.size(); ++done) call(object, all[done].put, wanted[done]);
  } catch (...) {
    while (done-- > 0) (object->*all[done].put)(former[done]);
    throw;
  }
}

}  // namespace pv
