#include "items/CVersions.h"

#include <limits>

#include "platform/code_page.h"
#include "platform/files.h"
#include "util/library_version.h"

namespace pv {

Ref<CVersion> CVersions::add(std::wstring_view name, short item_count) {
  const auto version = make<CVersion>(name, item_count);
  list_.append(version, name);
  return version;
}

// A version whose name is taken is passed over with its entries.
void CVersions::add_from_file(const VersionRecord& record) {
  attempt([&] {
    const auto version = add(record.name, record.item_count);
    for (const VersionEntry& entry : record.entries) {
      attempt([&] { version->entries().add(entry); });
    }
  });
}

STDMETHODIMP CVersions::LoadSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] {
    const auto bytes = read_file(std::wstring(view_of(file_name)));
    const auto file = bytes ? read_version_file(*bytes, ansi_codec()) : std::nullopt;
    if (!file) return false;
    for (const VersionRecord& record : file->versions) add_from_file(record);
    if (file->complete) changed_ = false;
    return file->complete;
  });
}

STDMETHODIMP CVersions::SaveSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] {
    std::vector<VersionRecord> records;
    for (const auto& version : list_) records.push_back(version->record());
    const bool saved = replace_file(std::wstring(view_of(file_name)),
                                    write_version_file(records, library_stamp(), ansi_codec()));
    if (saved) changed_ = false;
    return saved;
  });
}

STDMETHODIMP CVersions::Add(BSTR name, long item_count, _CVersion** result) noexcept {
  return returning(result, [&] {
    using Limits = std::numeric_limits<short>;
    if (item_count < Limits::min() || item_count > Limits::max()) {
      throw automation_error(ErrorCode::kOverflow, L"ItemCount " + std::to_wstring(item_count));
    }
    return add(view_of(name), static_cast<short>(item_count));
  });
}

STDMETHODIMP CVersions::ChangeTitle(short index, BSTR new_name, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] {
    return attempt([&] {
      const auto copy = make<CVersion>();
      list_.at(index)->copy_to(copy.get());
      copy->rename(view_of(new_name));
      replace_member(list_, index, copy, view_of(new_name));
    });
  });
}

}  // namespace pv
