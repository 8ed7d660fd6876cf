#pragma once

#include <string>

namespace pv {

/// Initialisation files, through the platform's private-profile functions. Names and values are
/// converted to the ANSI code page. A bare file name means the Windows folder.
std::wstring read_profile(const std::wstring& file, const std::wstring& section,
                          const std::wstring& key, const std::wstring& fallback);
bool write_profile(const std::wstring& file, const std::wstring& section, const std::wstring& key,
                   const std::wstring& value);
bool clear_profile_section(const std::wstring& file, const std::wstring& section);

}  // namespace pv
