// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

// Reaching pvItems32 from C++: the header that comes out of its type library declares bare COM
// interfaces; the few functions here make them read like ordinary C++.

#include <comdef.h>
#include <wrl/client.h>

#include <stdexcept>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "pvItems32.h"

namespace fluxor {

using Microsoft::WRL::ComPtr;

/// A failed call: its code, and what the object said about it.
class CallFailure : public std::exception {
 public:
  explicit CallFailure(HRESULT code);  // takes the text that the failed object left behind
  CallFailure(HRESULT code, std::wstring text) : code_(code), text_(std::move(text)) {}

  HRESULT code() const { return code_; }
  const std::wstring& text() const { return text_; }
  const char* what() const noexcept override { return "a call of an automation object failed"; }

 private:
  HRESULT code_;
  std::wstring text_;
};

inline void check(HRESULT result) {
  if (FAILED(result)) throw CallFailure(result);
}

/// A new object of the library: create<_CItems>(CLSID_CItems).
template <class Interface>
ComPtr<Interface> create(REFCLSID clsid) {
  ComPtr<Interface> object;
  check(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface),
                         reinterpret_cast<void**>(object.GetAddressOf())));
  return object;
}

/// Makes objects of one class. The system looks the class up once, which takes some hundred times
/// as long as making an object.
template <class Interface>
class Factory {
 public:
  explicit Factory(REFCLSID clsid) {
    check(CoGetClassObject(clsid, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                           reinterpret_cast<void**>(factory_.GetAddressOf())));
  }

  ComPtr<Interface> create() const {
    ComPtr<Interface> object;
    check(factory_->CreateInstance(nullptr, __uuidof(Interface),
                                   reinterpret_cast<void**>(object.GetAddressOf())));
    return object;
  }

 private:
  ComPtr<IClassFactory> factory_;
};

template <class Interface>
ComPtr<Interface> query(IUnknown* object) {
  ComPtr<Interface> result;
  if (object) {
    object->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(result.GetAddressOf()));
  }
  return result;
}

/// Storage for the result of a call, and what the caller gets of it: texts as std::wstring, objects
/// as ComPtr, everything else as it is.
template <class T>
struct Result {
  T value{};
  T* room() { return &value; }
  T take() { return value; }
};
template <>
struct Result<BSTR> {
  _bstr_t value;
  BSTR* room() { return value.GetAddress(); }
  std::wstring take() { return value.length() == 0 ? L"" : std::wstring(value, value.length()); }
};
template <>
struct Result<VARIANT> {
  _variant_t value;
  VARIANT* room() { return &value; }
  _variant_t take() { return value; }
};
template <class I>
requires std::is_base_of_v<IUnknown, I>
struct Result<I*> {
  ComPtr<I> value;
  I** room() { return value.GetAddressOf(); }
  ComPtr<I> take() { return std::move(value); }
};

/// Calls a method or reads a property and returns its result:
///   get(item, &_CItem::get_ItemID)           get(item, &_CItem::get_Value, short(1))
template <class I, class J, class... P, class... A>
auto get(const ComPtr<I>& object, HRESULT (STDMETHODCALLTYPE J::*member)(P...), A&&... arguments) {
  using Room = std::tuple_element_t<sizeof...(P) - 1, std::tuple<P...>>;
  Result<std::remove_pointer_t<Room>> result;
  check((object.Get()->*member)(std::forward<A>(arguments)..., result.room()));
  return result.take();
}

/// Sets a property, or calls a method that returns nothing:
///   put(item, &_CItem::put_Dirty, short(1), VARIANT_TRUE)
template <class I, class J, class... P, class... A>
void put(const ComPtr<I>& object, HRESULT (STDMETHODCALLTYPE J::*member)(P...), A&&... arguments) {
  check((object.Get()->*member)(std::forward<A>(arguments)...));
}

inline VARIANT_BOOL boolean(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }
inline _bstr_t bstr(const std::wstring& text) {
  return _bstr_t(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())), false);
}
inline _variant_t text_value(const std::wstring& text) { return _variant_t(bstr(text)); }
/// A value as another type; throws when it cannot be that.
_variant_t converted(_variant_t value, VARTYPE type);
std::wstring text_of(const _variant_t& value);

inline _variant_t object_value(IDispatch* object) { return _variant_t(object, true); }

}  // namespace fluxor
