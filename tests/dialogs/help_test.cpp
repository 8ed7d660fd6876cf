// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// F1 in every form: the help viewer is asked for the form's topic, or for nothing.

#include <gtest/gtest.h>

#include <iterator>

#include "tests/dialogs/driver/every_form.h"

namespace pv::dialogs_test {
namespace {

constexpr wchar_t kCall[] = L"PV_HELP_CALL";  // where the stand-in of the viewer notes its call

std::wstring program_folder() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::wstring program(path);
  return program.substr(0, program.find_last_of(L'\\') + 1);
}

class Help : public testing::Test {
 protected:
  Help() {
    SetDllDirectoryW((program_folder() + L"help_viewer").c_str());
    const HMODULE viewer = LoadLibraryW(L"hhctrl.ocx");
    EXPECT_TRUE(viewer && GetProcAddress(viewer, "NotesCalls"))
        << "the stand-in is not found; Wine needs WINEDLLOVERRIDES=hhctrl.ocx=n,b";
    before_ = utility_.object().get(L"AppHelpFileName");
    wchar_t folder[MAX_PATH];
    wchar_t name[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    GetTempFileNameW(folder, L"hlp", 0, name);
    file_ = name;
  }
  ~Help() override {
    DeleteFileW(file_.c_str());
    utility_.object().put(L"AppHelpFileName", before_);
    SetDllDirectoryW(nullptr);
  }

  /// What the viewer is asked for when F1 is pressed in the form; empty for nothing.
  std::wstring asked_by(const FormKind& kind, const std::wstring& help_file) const {
    utility_.object().put(L"AppHelpFileName", help_file);
    SetEnvironmentVariableW(kCall, nullptr);
    kind.show(utility_, [&](const Dialog& dialog) {
      dialog.press_key(VK_F1);
      dialog.drain();
      EXPECT_TRUE(dialog.open());
    });
    return call();
  }
  static std::wstring call() {
    wchar_t text[2 * MAX_PATH] = L"";
    GetEnvironmentVariableW(kCall, text, static_cast<DWORD>(std::size(text)));
    return text;
  }

  Utility utility_;
  std::wstring file_;
  test::Value before_;
};

bool is_password_dialog(const FormKind& kind) { return kind.form == std::wstring(L"frmPW"); }

TEST_F(Help, OpensTheTopicOfThePasswordDialogAndOfNoOther) {
  for (const FormKind& kind : every_form()) {
    const std::wstring topic = is_password_dialog(kind) ? L"15 158 " + file_ : L"";
    EXPECT_EQ(asked_by(kind, file_), topic) << kind.name;
  }
}

TEST_F(Help, DoesNothingWithoutAFileThatExists) {
  for (const FormKind& kind : every_form()) {
    if (!is_password_dialog(kind)) continue;
    EXPECT_EQ(asked_by(kind, L""), L"");
    EXPECT_EQ(asked_by(kind, file_ + L".none"), L"");
    EXPECT_EQ(asked_by(kind, program_folder()), L"") << "a folder is no help file";
  }
}

TEST_F(Help, OpensByARealKey) {
  utility_.object().put(L"AppHelpFileName", file_);
  SetEnvironmentVariableW(kCall, nullptr);
  for (const FormKind& kind : every_form()) {
    if (!is_password_dialog(kind)) continue;
    kind.show(utility_, [](const Dialog& dialog) {
      EXPECT_TRUE(dialog.stroke(VK_F1, 0, [] { return !call().empty(); }));
    });
  }
}

}  // namespace
}  // namespace pv::dialogs_test
