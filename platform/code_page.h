#pragma once

#include "util/settings_text.h"

namespace pv {

/// The system's ANSI code page. Characters that it lacks are written as '?': look-alikes could
/// turn into separators.
const TextCodec& ansi_codec();

}  // namespace pv
