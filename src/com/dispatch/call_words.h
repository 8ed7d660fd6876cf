// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

// The arguments of a call whose signature is known at run time only, and the thunk that passes
// them: one for each of the two calling conventions.

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "com/automation.h"

namespace pv {

#ifdef _WIN64

/// The words that a call passes: one of 64 bits for each argument. A larger value is passed by the
/// address of a copy in here, aligned as the convention has it, which the callee may change.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): only words that were pushed are read.
class CallWords {
 public:
  static constexpr std::size_t kMost = 20;

  CallWords() = default;
  CallWords(const CallWords&) = delete;
  CallWords& operator=(const CallWords&) = delete;
  ~CallWords() = default;

  void push(const void* pointer) { words_[count_++] = std::bit_cast<std::uint64_t>(pointer); }
  /// An argument that is passed by value: at most a VARIANT.
  void push_value(const void* value, std::size_t bytes) {
    if (bytes > sizeof(std::uint64_t)) {
      std::memcpy(copies_[count_].bytes, value, bytes);
      push(copies_[count_].bytes);
      return;
    }
    std::uint64_t word = 0;
    std::memcpy(&word, value, bytes);
    words_[count_++] = word;
  }
  static constexpr std::size_t words_of(std::size_t) { return 1; }
  bool has_room_for(std::size_t words) const { return count_ + words <= kMost; }

  std::size_t count() const { return count_; }
  std::uint64_t operator[](std::size_t at) const { return words_[at]; }

 private:
  struct alignas(16) Copy {
    std::byte bytes[sizeof(VARIANT)];
  };

  std::array<std::uint64_t, kMost> words_;
  std::array<Copy, kMost> copies_;
  std::size_t count_ = 0;
};

namespace detail {

// An unnamed argument of a variadic call is passed in the integer register and in the
// floating-point register of its place, so that the callee finds either kind.
template <std::size_t... I>
HRESULT call_with(const void* function, const CallWords& words, std::index_sequence<0, I...>) {
  using Function = HRESULT(STDMETHODCALLTYPE*)(void*, ...);
  return reinterpret_cast<Function>(reinterpret_cast<std::uintptr_t>(function))(
      reinterpret_cast<void*>(static_cast<std::uintptr_t>(words[0])),
      std::bit_cast<double>(words[I])...);
}

}  // namespace detail

#else

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

}  // namespace detail

#endif

}  // namespace pv
