// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What the tests of saves under faults share: tables to save, and the other process.
#pragma once

#include <ostream>
#include <string>

#include "tests/automation/items/item_support.h"
#include "tests/support/object.h"

namespace pv::test {

/// A kind of settings file with its table.
struct TableKind {
  std::string name;
  const wchar_t* count;         ///< the member that tells how many entries there are
  Object (*make)(int entries);  ///< a table that takes some 30 bytes of file for each entry
};

inline void PrintTo(const TableKind& kind, std::ostream* out) { *out << kind.name; }

const TableKind& item_table();
const TableKind& version_table();
const TableKind& list_table();
/// The one whose file is appended to instead of replaced.
const TableKind& dimension_table();

inline bool save(const Object& table, const std::wstring& file) {
  return table.call(L"SaveSettingsNew", file).boolean();
}

/// What a file of the table holds, seen in a folder without faults.
std::string content_of(const Object& table);

/// The program beside this one with a task, until its input ends. Throws when it does not get
/// ready.
class OtherProcess {
 public:
  OtherProcess(const std::wstring& task, const std::wstring& file, int number);
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;
  ~OtherProcess();

 private:
  HANDLE process_ = nullptr;
  HANDLE input_ = nullptr;
};

}  // namespace pv::test
