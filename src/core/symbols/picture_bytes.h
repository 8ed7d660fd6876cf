// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The files of pictures, looked at before the platform decodes them.
#pragma once

#include <string_view>

namespace pv {

/// Whether all that the headers of a picture file announce is there. The platform's decoders of
/// bitmaps and icons trust the headers and read behind the end of a file that was cut off; other
/// formats are decoded with care, so everything else that is long enough passes.
bool is_whole_picture(std::string_view bytes);

}  // namespace pv
