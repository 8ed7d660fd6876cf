// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/CError.h"

namespace pv {

template ClassEntry class_entry<CError>();

}  // namespace pv
