#include "classes/utility/CDirEntry.h"

namespace pv {

template ClassEntry class_entry<CDirEntry>();

}  // namespace pv
