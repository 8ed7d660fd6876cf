// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What screen readers are told: the platform names a field by the label before it.

#include <gtest/gtest.h>

#include <windows.h>

#include <oleacc.h>

#include <algorithm>

#include "com/ref.h"
#include "tests/dialogs/driver/dialog_state.h"
#include "tests/dialogs/driver/every_form.h"
#include "tests/dialogs/driver/platform_call.h"

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

  Ref<IAccessible> object_of(HWND window) const {
    Ref<IAccessible> object;
    EXPECT_GE(object_from_window_(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                  reinterpret_cast<void**>(object.put())),
              0);
    return object;
  }
  std::wstring name_of(HWND window) const {
    return text(object_of(window), &IAccessible::get_accName);
  }
  std::wstring value_of(HWND window) const {
    return text(object_of(window), &IAccessible::get_accValue);
  }
  long role_of(HWND window) const {
    const auto object = object_of(window);
    test::Value role;
    if (object) object->get_accRole(test::Value(0L), &role);
    return role.vt == VT_I4 ? role.lVal : -1;
  }
  static std::wstring text(const Ref<IAccessible>& object,
                           HRESULT (STDMETHODCALLTYPE IAccessible::*member)(VARIANT, BSTR*)) {
    BSTR given = nullptr;
    if (object) (object.get()->*member)(test::Value(0L), &given);
    const std::wstring text(given ? given : L"");
    SysFreeString(given);
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

const FormKind& form(const std::string& name) {
  return *std::ranges::find(every_form(), name, &FormKind::name);
}

TEST(Accessibility, ThePickersAreNamedInEveryLanguage) {
  constexpr int kDate = 1022, kTime = 1023;
  const Reader reader;
  const Utility utility;
  for (const long language : {1, 2, 4}) {
    utility.set_language(language);
    const std::wstring date = utility.text(310), time = utility.text(311);
    form("frmInputBox-moment").show(utility, [&](const Dialog& dialog) {
      const Apartment apartment;
      EXPECT_EQ(reader.name_of(dialog.control(kDate)), date);
      EXPECT_EQ(reader.name_of(dialog.control(kTime)), time);
    });
  }
  utility.set_language(1);
}

constexpr int kDrawingLabel = 1105, kGrid = 1106, kPaletteLabel = 1107, kPalette = 1108;
constexpr int kPreviewLabel = 1109, kPreview = 1110;

TEST(Accessibility, TheDrawingTellsItsCursorAndTheColourThere) {
  const Reader reader;
  const Utility utility;
  form("frmSymbolEdit-new").show(utility, [&](const Dialog& dialog) {
    const Apartment apartment;
    const HWND grid = dialog.control(kGrid);
    EXPECT_EQ(reader.name_of(grid), dialog.caption(kDrawingLabel));
    EXPECT_EQ(reader.role_of(grid), ROLE_SYSTEM_GRAPHIC);
    EXPECT_EQ(reader.value_of(grid), L"1, 1: #FFFFFF");
    for (const WORD key : {VK_RIGHT, VK_DOWN, VK_DOWN}) dialog.press_key(key);
    dialog.drain();
    EXPECT_EQ(reader.value_of(grid), L"2, 3: #FFFFFF");
    dialog.press_key(VK_SPACE);
    dialog.drain();
    EXPECT_EQ(reader.value_of(grid), L"2, 3: #000000");
  });
}

TEST(Accessibility, ThePaletteTellsBothColours) {
  const Reader reader;
  const Utility utility;
  form("frmSymbolEdit-new").show(utility, [&](const Dialog& dialog) {
    const Apartment apartment;
    const HWND palette = dialog.control(kPalette);
    EXPECT_EQ(reader.name_of(palette), dialog.caption(kPaletteLabel));
    EXPECT_EQ(reader.role_of(palette), ROLE_SYSTEM_SPINBUTTON);
    EXPECT_EQ(reader.value_of(palette), L"#000000, #FFFFFF");
    PostMessageW(palette, WM_KEYDOWN, VK_RIGHT, 1);
    dialog.drain();
    EXPECT_EQ(reader.value_of(palette), L"#000080, #FFFFFF");
    EXPECT_EQ(reader.name_of(dialog.control(kPreview)), dialog.caption(kPreviewLabel));
    EXPECT_EQ(reader.role_of(dialog.control(kPreview)), ROLE_SYSTEM_GRAPHIC);
  });
}

std::vector<HWND> changed;

void WINAPI note(DWORD event, HWND window, LONG object, LONG child) {
  if (event == EVENT_OBJECT_VALUECHANGE && object == OBJID_CLIENT && child == CHILDID_SELF)
    changed.push_back(window);
}

TEST(Accessibility, ChangesOfDrawingAndPaletteAreTold) {
  const Utility utility;
  const PlatformCall notify("NotifyWinEvent", &note);
  form("frmSymbolEdit-new").show(utility, [&](const Dialog& dialog) {
    const HWND grid = dialog.control(kGrid), palette = dialog.control(kPalette);
    changed.clear();
    dialog.ask(kGrid, WM_KEYDOWN, VK_RIGHT, 1);
    EXPECT_EQ(changed, std::vector<HWND>{grid});
    dialog.ask(kPalette, WM_KEYDOWN, VK_RIGHT, 1);
    EXPECT_EQ(changed, (std::vector<HWND>{grid, palette}));
  });
}

// The reader lets go when it likes.
TEST(Accessibility, AnObjectMayBeHeldLongerThanItsWindowLives) {
  const Reader reader;
  const Utility utility;
  const HostWindow host;
  Ref<IAccessible> object;  // of this thread, so that no call has to wait for it
  form("frmSymbolEdit-new").show(utility, [&](const Dialog& dialog) {
    host.send([&] { object = reader.object_of(dialog.control(kGrid)); });
    host.send(
        [&] { EXPECT_EQ(Reader::text(object, &IAccessible::get_accValue), L"1, 1: #FFFFFF"); });
  });
  ASSERT_TRUE(object);
  EXPECT_EQ(Reader::text(object, &IAccessible::get_accValue), L"");
}

}  // namespace
}  // namespace pv::dialogs_test
