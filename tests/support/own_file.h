// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Files that a test makes, and what it finds in them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/value.h"

namespace pv::test {

/// An empty folder for one test, removed with its files at the end of the program.
class TestFolder {
 public:
  TestFolder();
  /// With a trailing backslash.
  const std::wstring& path() const { return path_; }
  /// The full name of a file in the folder.
  std::wstring file(std::wstring_view name) const { return path_ + std::wstring(name); }
  /// Writes a file and gives its full name.
  std::wstring write(std::wstring_view name, std::string_view bytes) const;
  /// Whether the file system can store such a name: some accept ASCII only.
  bool takes(const std::wstring& name) const;
  /// Names of the files in it, sorted.
  std::vector<std::wstring> names() const;

 private:
  std::wstring path_;
};

/// A file in an empty folder of its own, so that no test sees what another one left.
class OwnFile {
 public:
  explicit OwnFile(std::wstring_view name = L"settings.ini") : path_(folder_.file(name)) {}
  OwnFile(std::wstring_view name, std::string_view bytes) : OwnFile(name) { fill(bytes); }

  const TestFolder& folder() const { return folder_; }
  const std::wstring& path() const { return path_; }
  operator Value() const { return Value(path_); }
  bool exists() const;
  /// Empty when there is no such file.
  std::string bytes() const;
  void fill(std::string_view bytes) const;

 private:
  TestFolder folder_;
  std::wstring path_;
};

/// The content of a file that must exist.
std::string bytes_of(const std::wstring& file);
void write_bytes(const std::wstring& file, std::string_view bytes);

/// A file that others can neither write, rename nor delete as long as this lives.
class LockedFile {
 public:
  explicit LockedFile(const std::wstring& file, DWORD share = FILE_SHARE_READ);
  LockedFile(const LockedFile&) = delete;
  LockedFile& operator=(const LockedFile&) = delete;
  ~LockedFile();

 private:
  HANDLE handle_;
};

}  // namespace pv::test
