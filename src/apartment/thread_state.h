// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "com/ref.h"
#include "pvItems32.h"

namespace pv {

class LanguageWatch;

/// Something that a thread keeps until its use of the library ends, like its loaded forms.
class ThreadBound {
 public:
  virtual ~ThreadBound() = default;
};

/// What all objects of a thread share. Created when first touched, released when the thread leaves
/// COM or ends, whichever comes first; the library stays loaded as long as one exists.
struct ThreadState {
  static constexpr std::size_t kDirectories = 21;

  std::wstring ini_file;
  std::wstring help_file;
  std::array<std::wstring, kDirectories> directories;
  Ref<IDispatch> application;
  Ref<_CLanguages> languages;
  Ref<_CTxmEvents> events;
  Ref<_CFile> file;
  Ref<_CPasswords> passwords;
  std::vector<LanguageWatch*> language_watches;
  std::vector<std::unique_ptr<ThreadBound>> thread_objects;
};

ThreadState& thread_state();

/// The state of a thread that has touched it already, else null.
ThreadState* existing_thread_state();

/// Gives back what the library holds in every thread; the last thing before it is unloaded.
void free_thread_slot();

}  // namespace pv
