// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

#include "core/text/profile_text.h"

namespace pv {

/// Initialisation files, through the platform's private-profile functions. Names and values are
/// converted to the ANSI code page. A bare file name means the Windows folder.
std::wstring read_profile(const std::wstring& file, const std::wstring& section,
                          const std::wstring& key, const std::wstring& fallback);
bool write_profile(const std::wstring& file, const std::wstring& section, const std::wstring& key,
                   const std::wstring& value);
bool clear_profile_section(const std::wstring& file, const std::wstring& section);

/// Many changes of one initialisation file, which is read once and replaced once. The file becomes
/// what the functions above would have made of it, one by one. Where that cannot be told
/// beforehand, they are called after all:
/// - for a bare name: the platform may keep such settings elsewhere;
/// - for a name that the code page lacks, or that is too long for a file beside it;
/// - for a file that is read-only or cannot be read;
/// - for content that is not in the code page: with a byte order mark, with NULs, or with bytes
/// that
///   do not come back.
class ProfileChanges {
 public:
  explicit ProfileChanges(std::wstring file);

  /// As read_profile, write_profile and clear_profile_section. Sections and keys are named in
  /// ASCII, without blanks around them.
  std::wstring read(const std::wstring& section, const std::wstring& key,
                    const std::wstring& fallback) const;
  bool write(const std::wstring& section, const std::wstring& key, const std::wstring& value);
  bool clear_section(const std::wstring& section);

  /// Puts the changes into the file. False when the former file stayed.
  bool save();

 private:
  std::wstring file_;
  std::optional<ProfileText> text_;  // none where each change is the platform's
};

}  // namespace pv
