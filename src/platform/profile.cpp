// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "platform/profile.h"

#include <algorithm>
#include <utility>

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
bool is_bare(const std::wstring& file) { return file.find_first_of(L"\\/:") == std::wstring::npos; }

bool is_protected(const std::wstring& file) { return !is_bare(file) && is_read_only(file); }

bool is_writable(const std::wstring& file, const std::wstring& section, const std::wstring& key) {
  return names_fit(file, section, key) && !is_protected(file);
}

// The text, as far as the code page brings it back.
bool comes_back(const std::wstring& text) { return ansi_codec().widen(narrow(text)) == text; }

bool can_be_replaced(const std::wstring& file) {
  constexpr std::size_t kLongestEnd = 32;  // of the name of the file that is written beside it
  return names_fit(file, {}, {}) && file.size() + kLongestEnd < MAX_PATH && !is_bare(file) &&
         comes_back(file) && !is_read_only(file);
}

bool has_byte_order_mark(std::string_view bytes) {
  return bytes.starts_with("\xEF\xBB\xBF") || bytes.starts_with("\xFF\xFE") ||
         bytes.starts_with("\xFE\xFF");
}

bool exists(const std::wstring& file) {
  return GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// What the file holds; nothing where only the platform knows.
std::optional<ProfileText> profile_text_of(const std::wstring& file) {
  if (!can_be_replaced(file)) return std::nullopt;
  const std::optional<std::string> bytes = read_file(file);
  if (!bytes) return exists(file) ? std::nullopt : std::optional(ProfileText(L""));
  if (has_byte_order_mark(*bytes) || bytes->find('\0') != std::string::npos) return std::nullopt;
  const std::wstring text = ansi_codec().widen(*bytes);
  if (narrow(text) != *bytes) return std::nullopt;
  return ProfileText(text);
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

ProfileChanges::ProfileChanges(std::wstring file)
    : file_(std::move(file)), text_(profile_text_of(file_)) {}

std::wstring ProfileChanges::read(const std::wstring& section, const std::wstring& key,
                                  const std::wstring& fallback) const {
  if (!text_) return read_profile(file_, section, key, fallback);
  return text_->value(section, key).value_or(fallback);
}

bool ProfileChanges::write(const std::wstring& section, const std::wstring& key,
                           const std::wstring& value) {
  if (!text_) return write_profile(file_, section, key, value);
  std::string bytes = narrow(value);
  if (bytes.size() > kLongestValue) return false;
  bytes.resize(std::min(bytes.find('\0'), bytes.size()));  // where the platform's texts end
  text_->set(section, key, ansi_codec().widen(bytes));
  return true;
}

bool ProfileChanges::clear_section(const std::wstring& section) {
  if (!text_) return clear_profile_section(file_, section);
  text_->remove_section(section);
  return true;
}

bool ProfileChanges::save() {
  return !text_ || !text_->changed() || replace_file(file_, narrow(text_->text()));
}

}  // namespace pv
