// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <memory>

#include "tests/support/module.h"
#include "tests/support/object.h"
#include "tests/support/own_file.h"
#include "tests/support/user_locale.h"

namespace pv::test {

/// A copy of a value in another variant type.
Value as_type(VARTYPE type, const Value& value);

/// Runs a piece of code on a thread in an apartment of its own, to its end. Exceptions fail the
/// test.
void in_own_apartment(const std::function<void()>& action);
/// The same on a thread that has not joined COM.
void on_own_thread(const std::function<void()>& action);

/// A second copy of the library, which no other test has touched: its life can be watched.
class FreshLibrary {
 public:
  FreshLibrary();
  ~FreshLibrary();
  FreshLibrary(const FreshLibrary&) = delete;
  FreshLibrary& operator=(const FreshLibrary&) = delete;

  Object create(REFCLSID clsid) const;
  HRESULT can_unload() const { return module_->can_unload(); }
  /// Takes the library out of the process; tells whether it is gone.
  bool unload();

 private:
  OwnFile file_;
  std::unique_ptr<Module> module_;
};

}  // namespace pv::test
