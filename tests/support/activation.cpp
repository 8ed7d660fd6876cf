// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/activation.h"

namespace pv::test {

Activation::Activation(const std::wstring& manifest) {
  ACTCTXW context{};
  context.cbSize = sizeof context;
  context.lpSource = manifest.c_str();
  handle_ = CreateActCtxW(&context);
  active_ = handle_ != INVALID_HANDLE_VALUE && ActivateActCtx(handle_, &cookie_);
}

Activation::~Activation() {
  if (active_) DeactivateActCtx(0, cookie_);
  if (handle_ != INVALID_HANDLE_VALUE) ReleaseActCtx(handle_);
}

}  // namespace pv::test
