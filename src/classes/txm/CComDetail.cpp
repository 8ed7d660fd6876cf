// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/txm/CComDetail.h"

namespace pv {

template ClassEntry class_entry<CComDetail>();

}  // namespace pv
