// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <string>
#include <type_traits>

#include "com/automation.h"

namespace pv {

/// Lengths of the dialogs: 1440 twips are one logical inch, whatever the resolution.
using Twips = long;

struct TwipSize {
  Twips width = 0;
  Twips height = 0;
};

struct TwipBox {
  Twips left = 0;
  Twips top = 0;
  Twips width = 0;
  Twips height = 0;

  Twips right() const { return left + width; }
  Twips bottom() const { return top + height; }
};

/// Resolution and font of one shown dialog. The resolution is that of the owner's window or of the
/// screen; the environment variable PV_DIALOG_DPI replaces it, for tests and pictures.
class Metrics {
 public:
  explicit Metrics(HWND owner);

  int dpi() const { return dpi_; }
  HFONT font() const { return font_.get(); }
  int pixels(Twips length) const { return MulDiv(length, dpi_, 1440); }
  Twips twips(int length) const { return MulDiv(length, 1440, dpi_); }

  /// What `text` needs when it is drawn with the DrawText flags `format`, one line at least.
  /// Lines are broken at `width` when the flags say so.
  TwipSize text_size(const std::wstring& text, UINT format, Twips width = 0) const;
  /// The text, or as much of its beginning as fits this width before an ellipsis.
  std::wstring shortened(const std::wstring& text, Twips width) const;
  Twips line_height() const { return text_size(L"", DT_SINGLELINE).height; }

 private:
  struct FontDeleter {
    void operator()(HFONT font) const { DeleteObject(font); }
  };

  int dpi_;
  std::unique_ptr<std::remove_pointer_t<HFONT>, FontDeleter> font_;
};

}  // namespace pv
