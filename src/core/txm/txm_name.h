// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

namespace pv {

/// What a transmitter's formatted name is made of.
struct TxmName {
  short index = 1;
  std::wstring title;
  std::wstring type;
};

/// Parts of the name; the values are those of the published TxmNameTypes.
enum TxmNamePart { kNameIndex = 1, kNameTitle = 2, kNameType = 4 };

/// "TXM#1:Title (Type)" with only the parts that `parts` names.
std::wstring formatted_name(const TxmName& name, int parts);

}  // namespace pv
