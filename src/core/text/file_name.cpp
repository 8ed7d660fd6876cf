// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/file_name.h"

namespace pv {
namespace {

constexpr auto kNone = std::wstring_view::npos;

/// What follows the first `mark` of `text`; nothing when there is none.
std::wstring_view after_first(std::wstring_view text, wchar_t mark) {
  const std::size_t at = text.find(mark);
  return at == kNone ? std::wstring_view() : text.substr(at + 1);
}

std::wstring_view before_first(std::wstring_view text, wchar_t mark) {
  return text.substr(0, text.find(mark));
}

bool contains(std::wstring_view text, wchar_t mark) { return text.find(mark) != kNone; }

}  // namespace

std::wstring drive_of(std::wstring_view full_name) {
  if (!contains(full_name, L':')) return {};
  return std::wstring(before_first(full_name, L':'));
}

std::wstring path_of(std::wstring_view full_name) {
  const std::size_t backslash = full_name.rfind(L'\\');
  if (backslash == kNone) return {};
  const std::wstring_view folder = full_name.substr(0, backslash);
  if (!contains(folder, L':')) return std::wstring(folder);
  return std::wstring(before_first(after_first(folder, L':'), L':'));
}

std::wstring name_of(std::wstring_view full_name) {
  const std::size_t backslash = full_name.rfind(L'\\');
  std::wstring_view title = backslash == kNone ? L"" : full_name.substr(backslash + 1);
  if (title.empty()) {
    title = contains(full_name, L':') ? after_first(full_name, L':') : full_name;
  }
  return std::wstring(before_first(title, L'.'));
}

std::wstring extension_of(std::wstring_view full_name) {
  // The whole name is searched: a dot in a folder's name counts when the file has none.
  const std::size_t dot = full_name.rfind(L'.');
  return dot == kNone ? std::wstring() : std::wstring(full_name.substr(dot + 1));
}

FileName parse_file_name(std::wstring_view full_name) {
  return {std::wstring(full_name), drive_of(full_name), path_of(full_name), name_of(full_name),
          extension_of(full_name)};
}

std::wstring make_full_name(const FileName& parts) {
  std::wstring full_name;
  if (!parts.drive.empty()) full_name = parts.drive + (parts.path.empty() ? L":\\" : L":");
  if (!parts.path.empty()) full_name += parts.path + L"\\";
  full_name += parts.name;
  if (!parts.extension.empty()) full_name += L"." + parts.extension;
  return full_name;
}

std::wstring file_title(const FileName& parts) {
  if (parts.name.empty() && parts.extension.empty()) return {};
  return parts.name + L"." + parts.extension;
}

std::wstring create_file_name(std::wstring_view drive_and_path,
                              std::wstring_view title_and_extension) {
  if (drive_and_path.empty() && title_and_extension.empty()) return L"*.*";
  std::wstring full_name(drive_and_path);
  if (!drive_and_path.empty() && !drive_and_path.ends_with(L'\\')) full_name += L'\\';
  return full_name.append(title_and_extension);
}

FileName at_path(std::wstring_view new_drive_and_path) {
  FileName location = parse_file_name(create_file_name(new_drive_and_path, L"X.Y"));
  location.name.clear();
  location.extension.clear();
  return location;
}

}  // namespace pv
