// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string>

namespace pv {

/// The text of resources/text_ids.h with this English id in the active language of this thread:
/// English when the language has none, "?" when English has none either.
std::wstring localized(int id);
/// The same of the published texts only: whatever the id, the library's own ones are out of reach.
std::wstring published_text(int id);

/// Calls back whenever the active language of this thread is set, as long as it lives. For open
/// dialogs, which relabel themselves.
class LanguageWatch {
 public:
  explicit LanguageWatch(std::function<void()> changed);
  ~LanguageWatch();
  LanguageWatch(const LanguageWatch&) = delete;
  LanguageWatch& operator=(const LanguageWatch&) = delete;

  void notify() const { changed_(); }

 private:
  std::function<void()> changed_;
};

}  // namespace pv
