#include "host/owner_window.h"

#include "host/late_bound.h"

namespace pv {

HWND owner_window(IDispatch* form) {
  if (!form) return nullptr;
  const long handle = to_long(LateBound(Ref<IDispatch>(form)).get(L"hWnd"));
  return reinterpret_cast<HWND>(handle);
}

}  // namespace pv
