// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

#include "com/automation.h"
#include "com/ref.h"

namespace pv::dialogs_test {

/// What happened to the picture-editor controls of this process.
struct PictureControlLog {
  std::vector<std::wstring> calls;  // of the contract, in order: "NewSymbol", "Symbol=text", ...
  std::wstring symbol;
  long setting1 = -1;
  long setting2 = -1;
  int living = 0;
  int activations = 0;
  HWND window = nullptr;             // while it is active in place
  std::wstring typed;                // characters that its window received
  std::vector<WPARAM> accelerators;  // keys that it was asked about before the dialog
};

/// Registers a small picture-editor control, implemented here, as pvPicEdit32.pvPicEdit for as long
/// as it lives. Its symbol texts are whatever they are; a picture is as large as it is asked for.
class RegisteredPictureControl {
 public:
  enum class Kind { kWhole, kWithoutPictures, kCannotBeCreated, kFails };

  explicit RegisteredPictureControl(Kind kind = Kind::kWhole);
  ~RegisteredPictureControl();
  RegisteredPictureControl(const RegisteredPictureControl&) = delete;
  RegisteredPictureControl& operator=(const RegisteredPictureControl&) = delete;

  const PictureControlLog& log() const;

 private:
  Ref<IClassFactory> factory_;
  DWORD registration_ = 0;
};

}  // namespace pv::dialogs_test
