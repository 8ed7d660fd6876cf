// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "core/symbols/symbol_drawing.h"
#include "dialogs/kit/canvas.h"

namespace pv {

/// The symbol as lists show it.
class SymbolPreview : public Canvas {
 public:
  SymbolPreview(Form& form, int id, const SymbolDrawing& drawing);

 protected:
  TwipSize measure(const Metrics& metrics, Twips width) const override;
  void paint(HDC device, const SIZE& size) override;

 private:
  const SymbolDrawing& drawing_;
};

}  // namespace pv
