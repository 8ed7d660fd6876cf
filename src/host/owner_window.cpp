// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "host/owner_window.h"

#include "host/late_bound.h"
#include "platform/window_handle.h"

namespace pv {

HWND owner_window(IDispatch* form) {
  if (!form) return nullptr;
  return window_of(to_long(LateBound(Ref<IDispatch>(form)).get(L"hWnd")));
}

}  // namespace pv
