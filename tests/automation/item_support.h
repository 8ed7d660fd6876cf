// What the tests of items, versions and display lists share.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/object.h"

namespace pv::test {

/// An empty folder for one test, removed with its files at the end of the program.
class TestFolder {
 public:
  TestFolder();
  /// The full name of a file in the folder.
  std::wstring file(std::wstring_view name) const { return path_ + std::wstring(name); }
  /// Writes a file and gives its full name.
  std::wstring write(std::wstring_view name, std::string_view bytes) const;
  /// Whether the file system has room for such a name: some have none beyond ASCII.
  bool takes(const std::wstring& name) const;
  /// Names of the files in it, sorted.
  std::vector<std::wstring> names() const;

 private:
  std::wstring path_;
};

std::string bytes_of(const std::wstring& file);
std::wstring example_file(std::wstring_view name);

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

/// The decimal separator of the user's locale, as the platform tells it.
std::wstring user_decimal();

/// Members of a collection, as its enumerator gives them.
std::vector<Object> members_of(const Object& collection);
/// A text property of each of them.
std::vector<std::wstring> texts_of(const Object& collection, std::wstring_view property = L"Key");

using Texts = std::vector<std::wstring>;

/// A variable under a key; caption "Caption <key>", type edtFloat, everything else plain.
Object add_variable(const Object& variables, std::wstring_view key);
/// An item under a key, with as many variables ("1", "2", ...) as told.
Object add_item(const Object& items, std::wstring_view key, int item_id, int variables = 0);

/// The member at an index that stands in a script variable.
Outcome item_by_variable(const Object& collection, Value index);

}  // namespace pv::test
