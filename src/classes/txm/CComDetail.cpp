#include "classes/txm/CComDetail.h"

namespace pv {

template ClassEntry class_entry<CComDetail>();

}  // namespace pv
