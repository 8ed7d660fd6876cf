#pragma once

#include <functional>
#include <string>

namespace pv::dialogs_test {

/// Shows every form in every language and in two resolutions, and writes the pictures (BMP) and a
/// page that shows them (index.html, which names them PNG) into the folder. `progress` is called
/// before each picture. The result is the program's exit code.
int make_gallery(const std::string& folder,
                 const std::function<void(const std::string& what)>& progress);

}  // namespace pv::dialogs_test
