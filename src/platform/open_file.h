// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pv {

/// A file that the caller opened with the C run-time library of the system (msvcrt.dll), known by
/// its descriptor. The file stays open and keeps the position where an operation left it.
class OpenFile {
 public:
  explicit OpenFile(int descriptor);

  /// What stands from the current position on; nothing when the descriptor is bad.
  std::optional<std::string> rest() const;
  bool seek(unsigned long long position) const;
  unsigned long long position() const;
  /// Writes at the current position, or at the end when the file was opened for appending.
  bool write(std::string_view content) const;

 private:
  int descriptor_;
  void* handle_;
};

}  // namespace pv
