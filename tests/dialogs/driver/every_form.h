// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "tests/dialogs/driver/dialog_driver.h"

namespace pv::dialogs_test {

/// One way in which a host opens a form. What tests of all forms have in common goes over the list
/// of these, and so does the gallery.
struct FormKind {
  /// Also the name of its pictures: the form and what is special about this way.
  std::string name;
  const wchar_t* form;
  /// Opens the form on the thread that calls, in any apartment, and tells whether the host learned
  /// that the user confirmed. Everything that the host needs is made anew.
  std::function<bool(const Utility&, HWND owner)> ask;
  /// Whether `ask` hands the owner to the form.
  bool takes_owner = false;
  /// Title and prompt come from the host and stay when the language changes.
  bool has_host_texts = false;
  /// What is done with the open form before it is as its name says.
  Script ready = [](const Dialog&) {};
  /// Some message boxes can be answered with their buttons only.
  bool can_be_cancelled = true;

  /// Asks while the script acts for the user, on another thread.
  bool show(const Utility& utility, const Script& script, HWND owner = nullptr) const;
};
void PrintTo(const FormKind& kind, std::ostream* out);

/// Confirms every form.
inline constexpr int kConfirmButton = 1000;

const std::vector<FormKind>& every_form();

}  // namespace pv::dialogs_test
