// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Windows file names taken apart and put together: drive, folder, name, extension.
#pragma once

#include <string>
#include <string_view>

namespace pv {

struct FileName {
  std::wstring full_name;
  std::wstring drive;  ///< without the colon
  std::wstring
      path;  ///< folder without drive and without the backslash at its end; empty for a root folder
  std::wstring name;       ///< up to the first '.'
  std::wstring extension;  ///< behind the last '.'
};

std::wstring drive_of(std::wstring_view full_name);
std::wstring path_of(std::wstring_view full_name);
std::wstring name_of(std::wstring_view full_name);
std::wstring extension_of(std::wstring_view full_name);

/// All five parts of `full_name`.
FileName parse_file_name(std::wstring_view full_name);

/// The full name that drive, path, name and extension make.
std::wstring make_full_name(const FileName& parts);

/// Name "." extension, the dot also without an extension; empty when both are.
std::wstring file_title(const FileName& parts);

/// Folder and title joined by one backslash; the title alone without a folder, and "*.*" without
/// either.
std::wstring create_file_name(std::wstring_view drive_and_path,
                              std::wstring_view title_and_extension);

/// Drive and path of a new location, name and extension empty; full_name holds the placeholder file
/// "X.Y" there.
FileName at_path(std::wstring_view new_drive_and_path);

}  // namespace pv
