// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/symbol/picture_editor.h"

#include "dialogs/symbol/hosted_picture_editor.h"
#include "dialogs/symbol/pixel_editor.h"

namespace pv {

std::unique_ptr<PictureEditor> make_picture_editor(Form& form) {
  if (auto hosted = HostedPictureEditor::create(form)) return hosted;
  return std::make_unique<PixelEditor>(form);
}

}  // namespace pv
