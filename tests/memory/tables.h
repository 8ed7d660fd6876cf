// Tables with a little in them, and texts that take memory.
#pragma once

#include "tests/memory/portrait.h"

namespace pv::test {

inline constexpr const wchar_t* kLongText = L"a text that takes memory of its own";

Object two_items();
Object a_version();
Object a_list();
Object a_dimension();

}  // namespace pv::test
