#include "platform/profile.h"

#include "com/automation.h"
#include "platform/code_page.h"
#include "platform/files.h"

namespace pv {
namespace {

constexpr DWORD kBufferSize = 60000;

// A longer value would be reported as written although nothing is stored.
constexpr std::size_t kLongestValue = 32766;

std::string narrow(const std::wstring& text) { return ansi_codec().narrow(text); }

// Longer names are not known to the profile functions, which may not survive them.
bool names_fit(const std::wstring& file, const std::wstring& section, const std::wstring& key) {
  return file.size() < MAX_PATH && is_file_name(file) && section.size() <= kLongestValue &&
         key.size() <= kLongestValue;
}

// A bare name stands for a file in the Windows folder, which is not looked at here.
bool is_protected(const std::wstring& file) {
  return file.find_first_of(L"\\/:") != std::wstring::npos && is_read_only(file);
}

bool is_writable(const std::wstring& file, const std::wstring& section, const std::wstring& key) {
  return names_fit(file, section, key) && !is_protected(file);
}

}  // namespace

std::wstring read_profile(const std::wstring& file, const std::wstring& section,
                          const std::wstring& key, const std::wstring& fallback) {
  if (!names_fit(file, section, key)) return fallback;
  std::string buffer(kBufferSize, '\0');
  const DWORD length = GetPrivateProfileStringA(narrow(section).c_str(), narrow(key).c_str(),
                                                narrow(fallback).c_str(), buffer.data(),
                                                kBufferSize, narrow(file).c_str());
  buffer.resize(length);
  return ansi_codec().widen(buffer);
}

bool write_profile(const std::wstring& file, const std::wstring& section, const std::wstring& key,
                   const std::wstring& value) {
  const std::string text = narrow(value);
  if (text.size() > kLongestValue || !is_writable(file, section, key)) return false;
  return WritePrivateProfileStringA(narrow(section).c_str(), narrow(key).c_str(), text.c_str(),
                                    narrow(file).c_str()) != 0;
}

bool clear_profile_section(const std::wstring& file, const std::wstring& section) {
  return is_writable(file, section, {}) &&
         WritePrivateProfileStringA(narrow(section).c_str(), nullptr, nullptr,
                                    narrow(file).c_str()) != 0;
}

}  // namespace pv
