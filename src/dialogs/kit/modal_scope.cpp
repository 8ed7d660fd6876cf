// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/kit/modal_scope.h"

#include "com/module.h"
#include "dialogs/kit/manifest_id.h"

namespace pv {

ModalScope::ModalScope(HWND owner) : active_(GetActiveWindow()) {
  if (owner) block(owner);
  EnumThreadWindows(GetCurrentThreadId(), block_each, reinterpret_cast<LPARAM>(this));
}

ModalScope::~ModalScope() {
  // Handles of windows that are gone do no harm.
  for (const HWND window : blocked_) EnableWindow(window, TRUE);
  // Before the dialog is destroyed: the platform would otherwise activate a window of another
  // program.
  if (IsWindowEnabled(active_)) SetActiveWindow(active_);
}

BOOL CALLBACK ModalScope::block_each(HWND window, LPARAM scope) {
  reinterpret_cast<ModalScope*>(scope)->block(window);
  return TRUE;
}

void ModalScope::block(HWND window) {
  if (!IsWindowVisible(window) || !IsWindowEnabled(window)) return;
  blocked_.push_back(window);
  EnableWindow(window, FALSE);
}

VisualStyles::VisualStyles() {
  ACTCTXW description{};
  const std::wstring path = module_path();
  description.cbSize = sizeof description;
  description.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
  description.lpSource = path.c_str();
  description.lpResourceName = MAKEINTRESOURCEW(PV_VISUAL_STYLES_MANIFEST);
  description.hModule = module_instance();
  context_ = CreateActCtxW(&description);
  if (context_ != INVALID_HANDLE_VALUE) ActivateActCtx(context_, &cookie_);
}

VisualStyles::~VisualStyles() {
  if (cookie_) DeactivateActCtx(0, cookie_);
  if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
}

}  // namespace pv
