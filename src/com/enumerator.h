#pragma once

#include <vector>

#include "com/automation.h"
#include "com/ref.h"

namespace pv {

/// A new IEnumVARIANT over a snapshot of objects; each item is handed out as VT_DISPATCH.
Ref<IEnumVARIANT> make_enumerator(std::vector<Ref<IDispatch>> objects);

}  // namespace pv
