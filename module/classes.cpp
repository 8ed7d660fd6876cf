#include "com/module.h"
#include "util/CFile.h"

namespace pv {

std::span<const ClassEntry> class_table() {
  static constexpr ClassEntry table[] = {
      CFile::entry(),
  };
  return table;
}

}  // namespace pv
