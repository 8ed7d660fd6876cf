// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "ComUtility.h"

namespace fluxor {

// How the variables of an item are encoded in the data of a telegram, one after the other.

/// Length in characters of an encoded variable of a data type; 0 for an unknown data type.
std::size_t room_of(short data_type);

std::wstring encode(const ComPtr<_CItem>& item, const ComUtility& codes);

/// Puts the data into the values of the item. False, and the item untouched, when the data is not
/// as long as the item.
bool decode(std::wstring data, const ComPtr<_CItem>& item, const ComUtility& codes);

/// Marks all values as current or not.
void set_dirty(const ComPtr<_CItem>& item, bool dirty);

}  // namespace fluxor
