#pragma once

#include <string>
#include <string_view>

namespace pv {

/// The form of a collection key in which keys that differ only by case are equal.
std::wstring fold_key(std::wstring_view key);

}  // namespace pv
