// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/items/CDLists.h"

#include "classes/items/CDListMembers.h"
#include "core/text/library_version.h"
#include "host/late_bound.h"
#include "platform/code_page.h"
#include "platform/files.h"

namespace pv {

template ClassEntry class_entry<CDLists>();

namespace {

Ref<CDListMembers> members_of(const ListRecord& record) {
  auto members = make<CDListMembers>();
  for (const ListMemberRecord& member : record.members) {
    attempt([&] { members->add(member); });  // the first of a key stands
  }
  return members;
}

}  // namespace

STDMETHODIMP CDLists::LoadSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    const auto bytes = read_file(std::wstring(view_of(file_name)));
    const auto lists = bytes ? parse_list_file(*bytes, ansi_codec()) : std::nullopt;
    if (!lists) return false;
    Members loaded = no_members();
    for (const ListRecord& record : *lists) {
      const auto list = make<CDList>(record.caption, record.caption, members_of(record));
      attempt([&] { loaded.append(list, record.caption); });
    }
    list_.take_over(std::move(loaded));
    changed_ = false;
    return true;
  });
}

STDMETHODIMP CDLists::SaveSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    std::vector<ListRecord> records;
    for (const auto& list : list_) records.push_back(list->record());
    const bool saved = replace_file(std::wstring(view_of(file_name)),
                                    format_list_file(records, library_stamp(), ansi_codec()));
    if (saved) changed_ = false;
    return saved;
  });
}

STDMETHODIMP CDLists::Add(BSTR key, _CDListMembers* members, BSTR caption,
                          _CDList** result) noexcept {
  return method_with_result(result, [&] {
    const Ref<_CDListMembers> own =
        members ? Ref<_CDListMembers>(members) : Ref<_CDListMembers>(make<CDListMembers>());
    auto list = make<CDList>(view_of(key), view_of(caption), own);
    list_.append(list, view_of(key));
    return list;
  });
}

STDMETHODIMP CDLists::ChangeTitle(short index, BSTR new_name, VARIANT_BOOL* result) noexcept {
  return method_with_result(
      result, [&] { return attempt([&] { rename_member(list_, index, view_of(new_name)); }); });
}

STDMETHODIMP CDLists::FillList(short index, IDispatch* control, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    const LateBound list_box{Ref<IDispatch>(control)};
    bool filled = attempt([&] { list_box.call(L"Clear"); });
    filled &= attempt([&] {
      for (const ListMemberRecord& member : list_.at(index)->record().members) {
        const Bstr caption(member.caption);
        filled &= attempt([&] { list_box.call(L"AddItem", {value(caption)}); });
      }
    });
    return filled;
  });
}

}  // namespace pv
