// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/type_library.h"

#include "com/failure.h"
#include "com/module.h"

namespace pv {

Ref<ITypeLib> own_type_library() {
  Ref<ITypeLib> library;
  check(LoadTypeLibEx(module_path().c_str(), REGKIND_NONE, library.put()));
  return library;
}

Ref<ITypeInfo> own_type_info(REFGUID guid) {
  Ref<ITypeInfo> info;
  check(own_type_library()->GetTypeInfoOfGuid(guid, info.put()));
  return info;
}

}  // namespace pv
