// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string>

namespace pv::dialogs_test {

/// Shows every form in every language, in the resolutions that go with this kind of screen ("usual"
/// or "wide"), and writes the pictures (BMP) into the folder, with a page that shows those of all
/// screens (index.html, which names them PNG). `progress` is called before each picture. The result
/// is the program's exit code.
int make_gallery(const std::string& folder, const std::string& screen,
                 const std::function<void(const std::string& what)>& progress);

}  // namespace pv::dialogs_test
