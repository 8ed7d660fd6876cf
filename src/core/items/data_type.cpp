// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/items/data_type.h"

namespace pv {

DataClass data_class(int data_type) {
  switch (data_type) {
    case 1:  // bit
    case 2:  // byte
    case 3:  // integer
    case 4:  // float
      return DataClass::kNumeric;
    case 5:   // strings of 8,
    case 7:   // 14,
    case 8:   // 6,
    case 10:  // 16,
    case 15:  // 32
    case 18:  // and 9 characters
    case 16:  // packed string
    case 11:  // application texts of class 80,
    case 12:  // 100,
    case 20:  // 120
    case 21:  // and 150
      return DataClass::kString;
    case 6:   // analog
    case 9:   // error
    case 13:  // alarm
    case 14:  // password
    case 17:  // error history
      return DataClass::kRecord;
    case -1:
      return DataClass::kSpecial;
    default:
      return DataClass::kUnknown;
  }
}

}  // namespace pv
