// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <utility>

#include "com/automation.h"
#include "com/dispatch/call_words.h"

namespace pv {
namespace detail {

using Caller = HRESULT (*)(const void*, const CallWords&);

template <std::size_t... N>
constexpr std::array<Caller, sizeof...(N)> make_callers(std::index_sequence<N...>) {
  return {[](const void* function, const CallWords& words) {
    return call_with(function, words, std::make_index_sequence<N + 1>());
  }...};
}

// By the number of words besides the object.
inline constexpr auto kCallers = make_callers(std::make_index_sequence<CallWords::kMost>());

}  // namespace detail

/// Calls a method of a COM object by its place in the vtable. The words hold the object first.
inline HRESULT call_vtable(void* object, std::size_t slot, const CallWords& words) {
  const void* const* vtable = *static_cast<const void* const* const*>(object);
  return detail::kCallers[words.count() - 1](vtable[slot], words);
}

}  // namespace pv
