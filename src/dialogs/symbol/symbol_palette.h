// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

#include "dialogs/kit/canvas.h"
#include "dialogs/symbol/picture_editor.h"

namespace pv {

/// The colours to draw with. The first button chooses the first colour, the second button the
/// second; the keys do the same with and without the shift key.
class Palette : public Canvas {
 public:
  Palette(Form& form, int id, std::function<void()> changed);

  const EditorSettings& colours() const { return colours_; }
  /// A number that is no colour becomes the one that editors begin with.
  void choose(const EditorSettings& colours);

 protected:
  TwipSize measure(const Metrics& metrics, Twips width) const override;
  AccessibleDescription describe() const override;
  void paint(HDC device, const SIZE& size) override;
  void pointer_down(POINT at, bool second) override;
  bool key_down(WPARAM key) override;

 private:
  void change(bool second, long colour);
  void paint_swatch(HDC device, int colour, int side) const;

  std::function<void()> changed_;
  EditorSettings colours_;
};

}  // namespace pv
