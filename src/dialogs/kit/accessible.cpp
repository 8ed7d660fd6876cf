// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/kit/accessible.h"

#include <commctrl.h>

#include <utility>

#include "com/failure.h"
#include "dialogs/kit/accessible_object.h"

namespace pv {
namespace {

constexpr UINT_PTR kSubclass = 2;

// The platform's part for screen readers, loaded when the first one asks and never unloaded.
class Platform {
 public:
  static const Platform& get() {
    static const Platform platform;
    return platform;
  }

  Ref<IAccessible> standard_object(HWND window) const {
    Ref<IAccessible> object;
    if (create_) create_(window, OBJID_CLIENT, __uuidof(IAccessible), void_put(object));
    return object;
  }
  LRESULT result_of(WPARAM w, IAccessible* object) const {
    return lresult_ ? lresult_(__uuidof(IAccessible), w, object) : 0;
  }

 private:
  Platform() : library_(LoadLibraryW(L"oleacc.dll")) {
    load(create_, "CreateStdAccessibleObject");
    load(lresult_, "LresultFromObject");
  }

  static void** void_put(Ref<IAccessible>& object) {
    return reinterpret_cast<void**>(object.put());
  }
  template <class Function>
  void load(Function& function, const char* name) {
    if (library_)
      function =
          reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library_, name)));
  }

  HMODULE library_;
  HRESULT(WINAPI* create_)(HWND, LONG, REFIID, void**) = nullptr;
  LRESULT(WINAPI* lresult_)(REFIID, WPARAM, IUnknown*) = nullptr;
};

}  // namespace

AccessibleWindow::AccessibleWindow(HWND window, std::function<AccessibleDescription()> describe)
    : window_(window), describe_(std::move(describe)) {
  SetWindowSubclass(window, procedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
}

AccessibleWindow::~AccessibleWindow() {
  RemoveWindowSubclass(window_, procedure, kSubclass);
  if (object_) object_->disconnect();
}

void AccessibleWindow::tell_value() const {
  NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, window_, OBJID_CLIENT, CHILDID_SELF);
}

LRESULT AccessibleWindow::answer(WPARAM w) {
  LRESULT result = 0;
  attempt([&] {
    const Platform& platform = Platform::get();
    if (!object_) {
      const auto standard = platform.standard_object(window_);
      if (standard) object_ = make<AccessibleObject>(standard, describe_);
    }
    if (object_) result = platform.result_of(w, object_.get());
  });
  return result;
}

LRESULT CALLBACK AccessibleWindow::procedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                             UINT_PTR, DWORD_PTR self) {
  // The number of the object comes as 32 bits, whatever the size of the parameter.
  if (message == WM_GETOBJECT && static_cast<LONG>(l) == OBJID_CLIENT) {
    const LRESULT result = reinterpret_cast<AccessibleWindow*>(self)->answer(w);
    if (result != 0) return result;
  }
  return DefSubclassProc(window, message, w, l);
}

}  // namespace pv
