// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/kit/form.h"
#include "pvItems32.h"

namespace pv {

/// The access editor. Its control ids: 1000 OK, 1001 Cancel, 1010 frame, 1020 and 1021 read level,
/// 1022 and 1023 write level (label and list), 1030 update box, 1031 mask box.
class frmAccessEdit final : public Form {
 public:
  frmAccessEdit();

  /// True when everything could be filled in; what could not stays as it was.
  bool prepare(_CTxm* txm, _CItem* item);

 protected:
  void layout() override;
  Control* first_focus() override { return &cmbReadPW_; }

 private:
  void confirm();

  Frame fraMisc_;
  FieldLabel lblMisc0_;
  DropDownList cmbReadPW_;
  FieldLabel lblMisc1_;
  DropDownList cmbWritePW_;
  CheckBox chkPWUpdate_;
  CheckBox chkPWMask_;
  Button cmdOK_;
  Button cmdCancel_;

  Ref<_CTxm> txm_;
  Ref<_CItem> item_;
};

}  // namespace pv
