// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/CDirEntry.h"

namespace pv {

template ClassEntry class_entry<CDirEntry>();

}  // namespace pv
