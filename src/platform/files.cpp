// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "platform/files.h"

#include <algorithm>
#include <atomic>
#include <cstdint>

#include "com/automation.h"
#include "platform/folder.h"

namespace pv {

class File {
 public:
  File(const std::wstring& name, DWORD access, DWORD share, DWORD disposition)
      : handle_(is_file_name(name) ? CreateFileW(name.c_str(), access, share, nullptr, disposition,
                                                 FILE_ATTRIBUTE_NORMAL, nullptr)
                                   : INVALID_HANDLE_VALUE) {}
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() { close(); }

  bool is_open() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE handle() const { return handle_; }
  void close() {
    if (is_open()) CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
  }

  /// How many bytes were written.
  std::size_t write_some(std::string_view content) const {
    DWORD written = 0;
    WriteFile(handle_, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
    return written;
  }
  bool write(std::string_view content) const { return write_some(content) == content.size(); }

  unsigned long long size() const {
    LARGE_INTEGER size{};
    return GetFileSizeEx(handle_, &size) ? static_cast<unsigned long long>(size.QuadPart) : 0;
  }
  void cut(unsigned long long size) const {
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(size);
    if (SetFilePointerEx(handle_, end, nullptr, FILE_BEGIN)) SetEndOfFile(handle_);
  }

 private:
  HANDLE handle_;
};

namespace {

// Both builds refuse the files that the 32-bit one could not hold.
constexpr std::int64_t kMostBytes = INT32_MAX;

// Unique among all who may save the same file at the same time: other processes, other threads, and
// host objects that are asked for their content during a save.
std::wstring name_beside(const std::wstring& name) {
  static std::atomic<unsigned> count{0};
  return name + L"." + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count) +
         L".tmp";
}

bool is_old(const FILETIME& written) {
  constexpr unsigned long long kOneDay = 24ull * 60 * 60 * 10'000'000;
  const auto ticks = [](const FILETIME& time) {
    return (static_cast<unsigned long long>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
  };
  FILETIME now{};
  GetSystemTimeAsFileTime(&now);
  return ticks(written) + kOneDay < ticks(now);
}

bool is_name_beside(std::wstring_view name, std::wstring_view beside) {
  constexpr std::wstring_view kEnd = L".tmp";
  if (!beside.starts_with(name) || !beside.ends_with(kEnd)) return false;
  beside.remove_prefix(name.size());
  return beside.starts_with(L".") &&
         beside.find_first_not_of(L"0123456789-", 1) == beside.size() - kEnd.size();
}

// What programs left that were killed in the middle of a save. No save takes a day, so nobody works
// on them any more.
void remove_leftovers(const std::wstring& name) {
  const std::size_t folder = name.find_last_of(L"\\/:") + 1;
  for_each_entry(name + L".*.tmp", [&](const WIN32_FIND_DATAW& entry) {
    const std::wstring beside = name.substr(0, folder) + entry.cFileName;
    if (is_name_beside(name, beside) && is_old(entry.ftLastWriteTime)) DeleteFileW(beside.c_str());
  });
}

// Truncates an append that was written only in part, unless others have appended since.
void take_back(const std::wstring& name, unsigned long long size_before, std::size_t written) {
  const File file(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                  OPEN_EXISTING);
  if (file.is_open() && file.size() == size_before + written) file.cut(size_before);
}

}  // namespace

bool is_file_name(const std::wstring& name) { return name.find(L'\0') == std::wstring::npos; }

bool is_read_only(const std::wstring& name) {
  const DWORD attributes = GetFileAttributesW(name.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

std::optional<std::string> read_file(const std::wstring& name) {
  const File file(name, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
  LARGE_INTEGER size{};
  if (!file.is_open() || !GetFileSizeEx(file.handle(), &size)) return std::nullopt;
  if (size.QuadPart > kMostBytes) return std::nullopt;
  std::string content;
  content.resize(static_cast<std::size_t>(size.QuadPart));
  std::size_t done = 0;
  while (done < content.size()) {
    const auto wanted = static_cast<DWORD>(std::min<std::size_t>(content.size() - done, 1u << 24));
    DWORD read = 0;
    if (!ReadFile(file.handle(), content.data() + done, wanted, &read, nullptr))
      return std::nullopt;
    if (read == 0) break;
    done += read;
  }
  content.resize(done);
  return content;
}

FileReplacement::FileReplacement(const std::wstring& name)
    : name_(name), beside_(name_beside(name)) {
  if (!is_file_name(name) || is_read_only(name)) return;
  remove_leftovers(name);
  file_ = std::make_unique<File>(beside_, GENERIC_WRITE, 0, CREATE_ALWAYS);
  if (!file_->is_open()) file_.reset();
}

FileReplacement::~FileReplacement() {
  if (!file_) return;
  file_->close();
  DeleteFileW(beside_.c_str());
}

void FileReplacement::write(std::string_view piece) {
  whole_ = whole_ && file_ && file_->write(piece);
}

bool FileReplacement::put_in_place() {
  if (!whole_ || !file_ || !FlushFileBuffers(file_->handle())) return false;
  file_->close();
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (!MoveFileExW(beside_.c_str(), name_.c_str(), kHow)) return false;
  file_.reset();  // nothing is left to remove
  return true;
}

bool replace_file(const std::wstring& name, std::string_view content) {
  FileReplacement file(name);
  file.write(content);
  return file.put_in_place();
}

bool create_file(const std::wstring& name, std::string_view content) {
  File file(name, GENERIC_WRITE, 0, CREATE_NEW);
  if (!file.is_open()) return false;
  if (file.write(content)) return true;
  file.close();
  DeleteFileW(name.c_str());
  return false;
}

bool append_file(const std::wstring& name, std::string_view content) {
  const bool is_new =
      !is_file_name(name) || GetFileAttributesW(name.c_str()) == INVALID_FILE_ATTRIBUTES;
  const unsigned long long size_before = file_size(name);
  std::size_t written = 0;
  {
    const File file(name, FILE_APPEND_DATA | SYNCHRONIZE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    OPEN_ALWAYS);
    if (!file.is_open()) return false;
    written = file.write_some(content);
  }
  if (written == content.size()) return true;
  if (written > 0) take_back(name, size_before, written);
  if (is_new && file_size(name) == 0) DeleteFileW(name.c_str());
  return false;
}

unsigned long long file_size(const std::wstring& name) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!is_file_name(name) || !GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &data)) {
    return 0;
  }
  return (static_cast<unsigned long long>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

}  // namespace pv
