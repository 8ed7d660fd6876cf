// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <type_traits>

#include "com/variant.h"
#include "core/text/shared_text.h"

// How C++ values leave and enter automation methods. Results are cleared first and set only when
// everything worked; the caller owns what it receives.
namespace pv {

template <class T>
requires(std::is_arithmetic_v<T> || std::is_enum_v<T>) void clear_result(T* out) { *out = T{}; }
template <class I>
requires std::is_base_of_v<IUnknown, I>
void clear_result(I** out) { *out = nullptr; }
inline void clear_result(BSTR* out) { *out = nullptr; }
inline void clear_result(VARIANT* out) { out->vt = VT_EMPTY; }

template <class T, class V>
requires(std::is_arithmetic_v<T> || std::is_enum_v<T>) void set_result(T* out, V value) {
  if constexpr (std::is_same_v<V, bool>) {
    *out = value ? VARIANT_TRUE : VARIANT_FALSE;
  } else {
    *out = static_cast<T>(value);
  }
}
inline void set_result(BSTR* out, std::wstring_view value) { *out = Bstr(value).detach(); }
inline void set_result(BSTR* out, Bstr value) { *out = value.detach(); }
inline void set_result(VARIANT* out, Variant value) { *out = value.detach(); }
template <class I, class T>
void set_result(I** out, Ref<T> value) {
  *out = value.detach();
}

// A stored field takes over what a client sets.
inline void set_field(std::wstring& field, BSTR value) { field = view_of(value); }
inline void set_field(SharedText& field, BSTR value) { field = SharedText(view_of(value)); }
inline void set_field(bool& field, VARIANT_BOOL value) { field = value != VARIANT_FALSE; }
inline void set_field(Variant& field, const VARIANT& value) { field = dereferenced(value); }
template <class I, class T>
void set_field(Ref<I>& field, T* value) {
  field = value;
}
template <class T, class V>
requires(std::is_arithmetic_v<T> || std::is_enum_v<T>) void set_field(T& field, V value) {
  field = static_cast<T>(value);
}

}  // namespace pv
