#include "classes/utility/CError.h"

namespace pv {

template ClassEntry class_entry<CError>();

}  // namespace pv
