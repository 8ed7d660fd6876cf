// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Classes of the wire data types.
#pragma once

namespace pv {

/// The values are those of the published pvDataTypes.
enum class DataClass { kUnknown = -1, kNumeric = 1, kString = 2, kRecord = 3, kSpecial = 4 };

/// The class of a wire data type. Type 19 (a byte that holds an error) is deliberately not
/// classified.
DataClass data_class(int data_type);

}  // namespace pv
