#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

#include "com/automation.h"

namespace pv {

/// The words that a call pushes: every argument takes one, two or four 32-bit words.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): only words that were pushed are read.
class CallWords {
 public:
  static constexpr std::size_t kMost = 40;

  void push(std::uint32_t word) { words_[count_++] = word; }
  void push(const void* pointer) { push(reinterpret_cast<std::uintptr_t>(pointer)); }
  /// An argument that is passed by value: of one or two bytes, or of whole words.
  void push_value(const void* value, std::size_t bytes) {
    switch (bytes) {
      case 1:
        push(loaded<std::uint8_t>(value));
        break;
      case 2:
        push(loaded<std::uint16_t>(value));
        break;
      default:
        const auto* const words = static_cast<const std::uint32_t*>(value);
        for (std::size_t i = 0; i < words_of(bytes); ++i) push(loaded<std::uint32_t>(words + i));
    }
  }
  static constexpr std::size_t words_of(std::size_t bytes) { return (bytes + 3) / 4; }
  bool has_room_for(std::size_t words) const { return count_ + words <= kMost; }

  std::size_t count() const { return count_; }
  std::uint32_t operator[](std::size_t at) const { return words_[at]; }

 private:
  template <class T>
  static T loaded(const void* from) {
    T content;
    std::memcpy(&content, from, sizeof content);
    return content;
  }

  std::array<std::uint32_t, kMost> words_;
  std::size_t count_ = 0;
};

namespace detail {

static_assert(sizeof(void*) == sizeof(std::uint32_t), "arguments are 32-bit words");

template <std::size_t>
using Word = std::uint32_t;

template <std::size_t... I>
HRESULT call_with(const void* function, const CallWords& words, std::index_sequence<I...>) {
  using Function = HRESULT(STDMETHODCALLTYPE*)(Word<I>...);
  return reinterpret_cast<Function>(reinterpret_cast<std::uintptr_t>(function))(words[I]...);
}

template <std::size_t N>
HRESULT call_with_count(const void* function, const CallWords& words) {
  return call_with(function, words, std::make_index_sequence<N>());
}

using Caller = HRESULT (*)(const void*, const CallWords&);

template <std::size_t... N>
constexpr std::array<Caller, sizeof...(N)> make_callers(std::index_sequence<N...>) {
  return {&call_with_count<N>...};
}

inline constexpr auto kCallers = make_callers(std::make_index_sequence<CallWords::kMost + 1>());

}  // namespace detail

/// Calls a method of a COM object by its place in the vtable. The words hold the object first.
inline HRESULT call_vtable(void* object, std::size_t slot, const CallWords& words) {
  const void* const* vtable = *static_cast<const void* const* const*>(object);
  return detail::kCallers[words.count()](vtable[slot], words);
}

}  // namespace pv
