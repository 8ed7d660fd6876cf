// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <tuple>
#include <utility>

#include "com/failure.h"
#include "com/floating_point.h"
#include "com/variant.h"
#include "core/errors/automation_error.h"

// Calls on the published interfaces of our own and foreign objects, in C++ terms: failures become
// exceptions, results become values that own what they hold.
namespace pv {

namespace detail {

template <class Out>
struct Result {
  Out value{};
  Out* pointer() { return &value; }
  Out take() { return value; }
};
template <>
struct Result<BSTR> {
  BSTR value = nullptr;
  Result() = default;
  Result(const Result&) = delete;
  Result& operator=(const Result&) = delete;
  ~Result() { SysFreeString(value); }
  BSTR* pointer() { return &value; }
  std::wstring take() { return std::wstring(view_of(value)); }
};
template <>
struct Result<VARIANT> {
  Variant value;
  VARIANT* pointer() { return &value; }
  Variant take() { return std::move(value); }
};
template <class I>
requires std::is_base_of_v<IUnknown, I>
struct Result<I*> {
  Ref<I> value;
  I** pointer() { return value.put(); }
  Ref<I> take() { return std::move(value); }
};

template <class... P>
using LastOf = std::remove_pointer_t<std::tuple_element_t<sizeof...(P) - 1, std::tuple<P...>>>;

}  // namespace detail

/// Calls a method that returns nothing. Error: kObjectNotSet for a null object.
template <class I, class... P, class... A>
void call(I* object, HRESULT (STDMETHODCALLTYPE I::*method)(P...), A&&... arguments) {
  if (!object) throw automation_error(ErrorCode::kObjectNotSet);
  check([&] {
    const HostFloatingPoint in_host;  // the object may be the host's
    return (object->*method)(std::forward<A>(arguments)...);
  }());
}

/// Calls a method or property get and returns what its last parameter receives.
template <class I, class... P, class... A>
auto result_of(I* object, HRESULT (STDMETHODCALLTYPE I::*method)(P...), A&&... arguments) {
  detail::Result<detail::LastOf<P...>> received;
  call(object, method, std::forward<A>(arguments)..., received.pointer());
  return received.take();
}

/// The same for a text, without converting it from a BSTR.
template <class I, class... P, class... A>
Bstr text_result_of(I* object, HRESULT (STDMETHODCALLTYPE I::*method)(P...), A&&... arguments) {
  BSTR text = nullptr;
  call(object, method, std::forward<A>(arguments)..., &text);
  return Bstr::attach(text);
}

/// An object that has to be there. Error: kObjectNotSet.
template <class I>
Ref<I> required_object(Ref<I> object) {
  if (!object) throw automation_error(ErrorCode::kObjectNotSet);
  return object;
}

template <class I, class... P, class... A>
void call(const Ref<I>& object, HRESULT (STDMETHODCALLTYPE I::*method)(P...), A&&... arguments) {
  call(object.get(), method, std::forward<A>(arguments)...);
}
template <class I, class... P, class... A>
auto result_of(const Ref<I>& object, HRESULT (STDMETHODCALLTYPE I::*method)(P...),
               A&&... arguments) {
  return result_of(object.get(), method, std::forward<A>(arguments)...);
}

}  // namespace pv
