// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "core/text/settings_text.h"

namespace pv {

/// The system's ANSI code page. Characters that it lacks are written as '?': look-alikes could
/// turn into separators.
const TextCodec& ansi_codec();

/// The same text with each character replaced by its code in the ANSI code page, as bytes of
/// telegrams have it. Characters that the code page lacks keep their value.
std::wstring character_codes(std::wstring_view text);

}  // namespace pv
