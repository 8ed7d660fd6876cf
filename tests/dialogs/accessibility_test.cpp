// What screen readers are told: the platform names a field by the label before it.

#include <gtest/gtest.h>

#include <windows.h>

#include <oleacc.h>

#include "com/ref.h"
#include "tests/dialogs/driver/dialog_state.h"
#include "tests/dialogs/driver/every_form.h"

namespace pv::dialogs_test {
namespace {

class Reader {
 public:
  Reader()
      : library_(LoadLibraryW(L"oleacc.dll")),
        object_from_window_(reinterpret_cast<decltype(object_from_window_)>(
            reinterpret_cast<void*>(GetProcAddress(library_, "AccessibleObjectFromWindow")))) {}
  ~Reader() { FreeLibrary(library_); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  std::wstring name_of(HWND window) const {
    Ref<IAccessible> object;
    if (FAILED(object_from_window_(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                   reinterpret_cast<void**>(object.put()))))
      return L"no object";
    test::Value self(0L);
    BSTR name = nullptr;
    object->get_accName(self, &name);
    const std::wstring text(name ? name : L"");
    SysFreeString(name);
    return text;
  }

 private:
  HMODULE library_;
  HRESULT(WINAPI* object_from_window_)(HWND, DWORD, REFIID, void**);
};

TEST(Accessibility, EveryTextFieldHasTheNameOfItsLabel) {
  const Reader reader;
  const Utility utility;
  for (const FormKind& kind : every_form()) {
    kind.show(utility, [&](const Dialog& dialog) {
      const Apartment apartment;
      int label = 0;
      for (const int id : control_ids(dialog)) {
        if (!dialog.shows(id)) continue;
        if (class_of(dialog.control(id)) == L"Edit") {
          EXPECT_EQ(reader.name_of(dialog.control(id)), dialog.caption(label))
              << kind.name << ", control " << id;
        }
        label = id;
      }
    });
  }
}

}  // namespace
}  // namespace pv::dialogs_test
