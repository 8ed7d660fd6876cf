// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/txm/txm_name.h"

#include "core/text/number_text.h"

namespace pv {

std::wstring formatted_name(const TxmName& name, int parts) {
  std::wstring text;
  if (parts & kNameIndex) text = L"TXM#" + format_integer(name.index);
  if (parts & kNameTitle) text += text.empty() ? name.title : L":" + name.title;
  if (parts & kNameType) text += text.empty() ? name.type : L" (" + name.type + L")";
  return text;
}

}  // namespace pv
