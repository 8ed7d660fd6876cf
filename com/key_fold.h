#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace pv {

/// The form of a collection key in which keys that differ only by case are equal.
std::wstring fold_key(std::wstring_view key);

/// A number that is the same for keys that differ only by case.
std::size_t key_hash(std::wstring_view key);

/// Whether fold_key(key) is `folded`.
bool folds_to(std::wstring_view key, std::wstring_view folded);

}  // namespace pv
