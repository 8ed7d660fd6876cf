// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/own_file.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "tests/support/module.h"

namespace pv::test {

namespace fs = std::filesystem;

namespace {

std::wstring next_folder() {
  static int count = 0;
  return scratch_folder() + L"test" + std::to_wstring(++count) + L"\\";
}

}  // namespace

TestFolder::TestFolder() : path_(next_folder()) { fs::create_directories(path_); }

std::wstring TestFolder::write(std::wstring_view name, std::string_view bytes) const {
  const std::wstring path = file(name);
  write_bytes(path, bytes);
  return path;
}

bool TestFolder::takes(const std::wstring& name) const {
  const HANDLE probe = CreateFileW(file(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                   FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (probe == INVALID_HANDLE_VALUE) return false;
  CloseHandle(probe);
  return true;
}

std::vector<std::wstring> TestFolder::names() const {
  std::vector<std::wstring> names;
  for (const auto& entry : fs::directory_iterator(path_)) {
    names.push_back(entry.path().filename().wstring());
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool OwnFile::exists() const { return fs::exists(path_); }
std::string OwnFile::bytes() const { return exists() ? bytes_of(path_) : std::string(); }
void OwnFile::fill(std::string_view bytes) const { write_bytes(path_, bytes); }

std::string bytes_of(const std::wstring& file) {
  std::ifstream stream(fs::path(file), std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + printable(file));
  return {std::istreambuf_iterator<char>(stream), {}};
}

void write_bytes(const std::wstring& file, std::string_view bytes) {
  std::ofstream stream(fs::path(file), std::ios::binary | std::ios::trunc);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!stream.flush()) throw std::runtime_error("cannot write " + printable(file));
}

LockedFile::LockedFile(const std::wstring& file, DWORD share)
    : handle_(CreateFileW(file.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr)) {
  if (handle_ == INVALID_HANDLE_VALUE) throw std::runtime_error("cannot lock " + printable(file));
}

LockedFile::~LockedFile() { CloseHandle(handle_); }

}  // namespace pv::test
