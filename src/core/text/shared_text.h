// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Texts that many objects hold and nobody changes.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <string_view>
#include <utility>

namespace pv {

/// A text that does not change: its copies share one block of memory, across threads, too. As large
/// as a pointer; the empty text has no block.
class SharedText {
 public:
  SharedText() = default;
  explicit SharedText(std::wstring_view text);
  SharedText(const SharedText& other) noexcept : block_(other.block_) {
    if (block_) ++block_->references;
  }
  SharedText(SharedText&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
  // NOLINTNEXTLINE(misc-unconventional-assign-operator): by value, for both kinds of assignment.
  SharedText& operator=(SharedText other) noexcept {
    std::swap(block_, other.block_);
    return *this;
  }
  ~SharedText() {
    if (block_ && --block_->references == 0) release();
  }

  std::wstring_view view() const {
    return block_ ? std::wstring_view(block_->characters(), block_->size) : std::wstring_view();
  }
  operator std::wstring_view() const { return view(); }

 private:
  /// The characters follow it.
  struct Block {
    std::atomic<unsigned> references;
    std::size_t size;

    wchar_t* characters() { return reinterpret_cast<wchar_t*>(this + 1); }
  };

  void release() noexcept;

  Block* block_ = nullptr;
};

/// Makes shared texts of which many are equal, as those of a file are: an equal one that was made
/// not long before is shared. Texts that are all different cost a comparison each.
class RecentTexts {
 public:
  SharedText shared(std::wstring_view text);

 private:
  static constexpr std::size_t kPlaces = 256;
  std::array<SharedText, kPlaces> places_;  // each for the texts of some hashes: the latest of them
};

}  // namespace pv
