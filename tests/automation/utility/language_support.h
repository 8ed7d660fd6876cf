// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <vector>

#include "pvItems32.h"
#include "tests/automation/utility/utility_support.h"

namespace pv::test {

/// Sets the language that the library shows on this thread; the destructor sets English again.
class ActiveLanguage {
 public:
  explicit ActiveLanguage(long language);
  ActiveLanguage(const ActiveLanguage&) = delete;
  ActiveLanguage& operator=(const ActiveLanguage&) = delete;
  ~ActiveLanguage();

 private:
  Object languages_;
};

/// A listener of language changes at the connection point of a registry. Remembers the languages it
/// hears of.
class LanguageListener {
 public:
  /// Which interfaces the listener has: that of the events, or automation alone.
  enum class Kind { kEvents, kAutomation };

  explicit LanguageListener(Kind kind = Kind::kEvents);
  LanguageListener(const LanguageListener&) = delete;
  LanguageListener& operator=(const LanguageListener&) = delete;
  ~LanguageListener();

  void connect(const Object& languages);
  void disconnect();
  IUnknown* sink() const;

  /// Runs whenever a language was heard of.
  void on_change(std::function<void(long language)> action);
  /// The listener fails from now on, after it has heard.
  void fail_with(HRESULT result);

  const std::vector<long>& heard() const;

 private:
  class Sink;
  Ref<Sink> sink_;
  Ref<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

Ref<IConnectionPoint> language_events_of(const Object& languages);

}  // namespace pv::test
