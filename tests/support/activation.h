// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "com/automation.h"

namespace pv::test {

/// Classes are looked up in a manifest while this lives, on the thread that made it.
class Activation {
 public:
  explicit Activation(const std::wstring& manifest);
  ~Activation();
  Activation(const Activation&) = delete;
  Activation& operator=(const Activation&) = delete;

  bool is_active() const { return active_; }

 private:
  HANDLE handle_;
  ULONG_PTR cookie_ = 0;
  bool active_ = false;
};

}  // namespace pv::test
