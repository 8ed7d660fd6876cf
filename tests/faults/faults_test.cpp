// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/faults/faults_test.h"

#include <stdexcept>

#include "tests/support/module.h"

namespace pv::test {
namespace {

std::wstring number(int i) { return std::to_wstring(i); }

Object items_of(int entries) {
  const Object items = Object::create(L"pvItems32.CItems");
  for (int i = 1; i <= entries; ++i) add_item(items, number(i), i);
  return items;
}

Object versions_of(int entries) {
  const Object versions = Object::create(L"pvItems32.CVersions");
  for (int i = 1; i <= entries; ++i) versions.call(L"Add", L"Version " + number(i), i);
  return versions;
}

Object lists_of(int entries) {
  const Object lists = Object::create(L"pvItems32.CDLists");
  for (int i = 1; i <= entries; ++i) {
    const Object members = Object::create(L"pvItems32.CDListMembers");
    lists.call(L"Add", L"List " + number(i), members, L"List " + number(i));
  }
  return lists;
}

Object dimensions_of(int entries) {
  const Object dimensions = Object::create(L"pvItems32.CDimensions");
  for (int i = 1; i <= entries; ++i) {
    const Object units = Object::create(L"pvItems32.CUnits");
    dimensions.call(L"Add", L"", L"Dimension " + number(i), units);
  }
  return dimensions;
}

struct Pipe {
  HANDLE read = nullptr;
  HANDLE write = nullptr;
};

Pipe inherited_pipe() {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  Pipe pipe;
  if (!CreatePipe(&pipe.read, &pipe.write, &inherited, 0)) throw std::runtime_error("no pipe");
  return pipe;
}

}  // namespace

const TableKind& item_table() {
  static const TableKind kind{"Items", L"AllItemCount", items_of};
  return kind;
}

const TableKind& version_table() {
  static const TableKind kind{"Versions", L"Count", versions_of};
  return kind;
}

const TableKind& list_table() {
  static const TableKind kind{"Lists", L"Count", lists_of};
  return kind;
}

const TableKind& dimension_table() {
  static const TableKind kind{"Dimensions", L"Count", dimensions_of};
  return kind;
}

std::string content_of(const Object& table) {
  const TestFolder folder;
  const std::wstring file = folder.file(L"content");
  if (!save(table, file)) throw std::runtime_error("the table cannot be saved");
  return bytes_of(file);
}

OtherProcess::OtherProcess(const std::wstring& task, const std::wstring& file, int number) {
  const Pipe input = inherited_pipe();
  const Pipe output = inherited_pipe();
  SetHandleInformation(input.write, HANDLE_FLAG_INHERIT, 0);
  std::wstring command = L"\"" + program_folder() + L"faults_helper.exe\" " + task + L" \"" + file +
                         L"\" " + std::to_wstring(number);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = input.read;
  start.hStdOutput = output.write;
  start.hStdError = output.write;
  PROCESS_INFORMATION made{};
  const bool started = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                      nullptr, &start, &made);
  CloseHandle(input.read);
  CloseHandle(output.write);
  input_ = input.write;
  if (started) CloseHandle(made.hThread);
  process_ = made.hProcess;
  // The pipe also ends, and with it the waiting, when the program does.
  char first = 0;
  DWORD read = 0;
  const bool ready = started && ReadFile(output.read, &first, 1, &read, nullptr) && first == 'r';
  CloseHandle(output.read);
  if (!ready) throw std::runtime_error("the other process is not ready");
}

OtherProcess::~OtherProcess() {
  CloseHandle(input_);
  // A process that saves for ever does not look at its input.
  if (WaitForSingleObject(process_, 0) == WAIT_TIMEOUT) TerminateProcess(process_, 0);
  WaitForSingleObject(process_, 5000);
  CloseHandle(process_);
}

}  // namespace pv::test
