// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace pv {

class File;

/// The platform would take the part before a NUL for the name, which is a file that nobody meant.
bool is_file_name(const std::wstring& name);

/// Not every platform refuses to write such a file, or to rename over it.
bool is_read_only(const std::wstring& name);

/// The whole file, or nothing when it cannot be opened or read, or has 2 GB or more.
std::optional<std::string> read_file(const std::wstring& name);

/// New content of a file. It is written beside the file, piece by piece, and renamed over it at the
/// end, so that whatever happens the old or the new file is there, whole. What programs that were
/// killed left beside it more than a day ago is removed.
class FileReplacement {
 public:
  explicit FileReplacement(const std::wstring& name);
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  /// Deletes the temporary file when it was not put in place.
  ~FileReplacement();

  /// A failed write (a full disk) makes the replacement fail.
  void write(std::string_view piece);
  /// The last step. False when the old file stayed.
  bool put_in_place();

 private:
  std::wstring name_;
  std::wstring beside_;
  std::unique_ptr<File> file_;  // none when the file cannot be replaced
  bool whole_ = true;
};

/// The same with all of the content at once.
bool replace_file(const std::wstring& name, std::string_view content);

/// Creates the file with this content; False when it is there already or cannot be created whole.
bool create_file(const std::wstring& name, std::string_view content);

/// Appends to the file in one write call, creating the file when there is none. False when there is
/// no space for all of it; the file is then unchanged.
bool append_file(const std::wstring& name, std::string_view content);

/// Bytes in the file; 0 when there is none.
unsigned long long file_size(const std::wstring& name);

}  // namespace pv
