// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/items/CVersions.h"

#include <limits>

#include "core/text/library_version.h"
#include "platform/code_page.h"
#include "platform/files.h"

namespace pv {

template ClassEntry class_entry<CVersions>();

namespace {

// The first of a key stands.
Ref<CVersion> version_of(const VersionRecord& record) {
  auto version = make<CVersion>(record.name, record.item_count);
  for (const VersionEntry& entry : record.entries) {
    attempt([&] { version->entries().add(entry); });
  }
  return version;
}

}  // namespace

STDMETHODIMP CVersions::LoadSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    const auto bytes = read_file(std::wstring(view_of(file_name)));
    const auto file = bytes ? parse_version_file(*bytes, ansi_codec()) : std::nullopt;
    if (!file) return false;
    // A version whose name is taken is passed over with its entries.
    Members loaded = no_members();
    for (const VersionRecord& record : file->versions) {
      attempt([&] { loaded.append(version_of(record), record.name); });
    }
    list_.take_over(std::move(loaded));
    if (file->complete) changed_ = false;
    return file->complete;
  });
}

STDMETHODIMP CVersions::SaveSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    std::vector<VersionRecord> records;
    for (const auto& version : list_) records.push_back(version->record());
    const bool saved = replace_file(std::wstring(view_of(file_name)),
                                    format_version_file(records, library_stamp(), ansi_codec()));
    if (saved) changed_ = false;
    return saved;
  });
}

STDMETHODIMP CVersions::Add(BSTR name, long item_count, _CVersion** result) noexcept {
  return method_with_result(result, [&] {
    using Limits = std::numeric_limits<short>;
    if (item_count < Limits::min() || item_count > Limits::max()) {
      throw automation_error(ErrorCode::kOverflow, L"ItemCount " + std::to_wstring(item_count));
    }
    auto version = make<CVersion>(view_of(name), static_cast<short>(item_count));
    list_.append(version, view_of(name));
    return version;
  });
}

STDMETHODIMP CVersions::ChangeTitle(short index, BSTR new_name, VARIANT_BOOL* result) noexcept {
  return method_with_result(
      result, [&] { return attempt([&] { rename_member(list_, index, view_of(new_name)); }); });
}

}  // namespace pv
