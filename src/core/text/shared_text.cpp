// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/shared_text.h"

#include <algorithm>
#include <functional>
#include <new>

namespace pv {

SharedText::SharedText(std::wstring_view text) {
  if (text.empty()) return;
  void* const memory = ::operator new(sizeof(Block) + text.size() * sizeof(wchar_t));
  block_ = new (memory) Block{1, text.size()};
  std::copy(text.begin(), text.end(), block_->characters());
}

void SharedText::release() noexcept {
  block_->~Block();
  ::operator delete(block_);
}

SharedText RecentTexts::shared(std::wstring_view text) {
  if (text.empty()) return {};
  SharedText& latest = places_[std::hash<std::wstring_view>{}(text) % kPlaces];
  if (latest.view() != text) latest = SharedText(text);
  return latest;
}

}  // namespace pv
