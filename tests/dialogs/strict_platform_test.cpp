// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What Windows is stricter about than other platforms: its documented demands, put before the
// library's calls.

#include <gtest/gtest.h>

#include <cstdint>

#include "tests/dialogs/driver/dialog_state.h"
#include "tests/dialogs/driver/every_form.h"
#include "tests/dialogs/driver/platform_call.h"

namespace pv::dialogs_test {
namespace {

// Of the platform's own pictures, only shared ones can be loaded by number.
HANDLE WINAPI strict_load_image(HINSTANCE module, LPCWSTR name, UINT type, int width, int height,
                                UINT flags) {
  if (!module && IS_INTRESOURCE(name) && !(flags & LR_SHARED)) {
    SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return nullptr;
  }
  return LoadImageW(module, name, type, width, height, flags);
}

// Templates begin where a double word may stand.
HWND WINAPI strict_create_dialog(HINSTANCE module, LPCDLGTEMPLATEW content, HWND owner,
                                 DLGPROC procedure, LPARAM parameter) {
  if (reinterpret_cast<std::uintptr_t>(content) % sizeof(DWORD) != 0) return nullptr;
  return CreateDialogIndirectParamW(module, content, owner, procedure, parameter);
}

SIZE size_of(HICON icon) {
  ICONINFO parts{};
  EXPECT_TRUE(GetIconInfo(icon, &parts));
  BITMAP mask{};
  GetObjectW(parts.hbmMask, sizeof mask, &mask);
  DeleteObject(parts.hbmMask);
  if (parts.hbmColor) DeleteObject(parts.hbmColor);
  return {mask.bmWidth, parts.hbmColor ? mask.bmHeight : mask.bmHeight / 2};
}

TEST(StrictPlatform, TheIconsOfMessagesAreLoadedInTheirSize) {
  constexpr int kIcon = 1020;
  const Utility utility;
  for (const int dpi : {96, 120, 144, 192}) {
    const Resolution resolution(dpi);
    // One object at a time: what the library loads is loaded while a box opens.
    const PlatformCall loading("LoadImageW", &strict_load_image);
    show(utility, {.prompt = L"Question"}, [&](const Dialog& box) {
      for (int icon = kIcon; icon < kIcon + 4; ++icon) {
        const auto shown = reinterpret_cast<HICON>(box.ask(icon, STM_GETICON));
        ASSERT_NE(shown, nullptr) << "icon " << icon << ", dpi " << dpi;
        EXPECT_EQ(size_of(shown).cx, dpi / 3);
        EXPECT_EQ(size_of(shown).cy, dpi / 3);
      }
    });
  }
}

TEST(StrictPlatform, EveryFormIsMadeFromAnAlignedTemplate) {
  const Utility utility;
  const PlatformCall creating("CreateDialogIndirectParamW", &strict_create_dialog);
  for (const FormKind& kind : every_form())
    EXPECT_TRUE(kind.show(utility, [](const Dialog& dialog) { dialog.click(kConfirmButton); }))
        << kind.name;
}

// The height of a list's window counts for the list when it is open, too.
TEST(StrictPlatform, ListsDropToTheirFullHeight) {
  const Utility utility;
  for (const FormKind& kind : every_form()) {
    kind.show(utility, [](const Dialog& dialog) {
      for (const int id : control_ids(dialog)) {
        if (class_of(dialog.control(id)) != L"ComboBox") continue;
        RECT open{};
        dialog.ask(id, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&open));
        const LRESULT entries = dialog.ask(id, CB_GETCOUNT) * dialog.ask(id, CB_GETITEMHEIGHT, 0);
        EXPECT_GT(entries, 0);
        EXPECT_GE(open.bottom - open.top, entries) << "control " << id;
      }
    });
  }
}

}  // namespace
}  // namespace pv::dialogs_test
