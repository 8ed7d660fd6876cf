// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/items/list_file.h"

#include <cstdint>
#include <utility>

#include "core/text/number_text.h"

namespace pv {
namespace {

// Two fields, so a missing member has "Tag#1" for its caption and no tag; that is how it is meant
// to be.
constexpr std::wstring_view kDefaultMember = L"Item#1|Tag#1";

ListRecord read_list(SettingsReader& reader, long number) {
  ListRecord list;
  list.caption = reader.next_value(L"Caption", L"Untitled" + format_integer(number));
  const auto member_count = lenient_integer<std::int16_t>(reader.next_value(L"Count", L"1"));
  for (int j = 1; j <= member_count; ++j) {
    list.members.push_back(
        parse_list_member(reader.next_value(L"ITEM" + format_integer(j), kDefaultMember)));
  }
  return list;
}

}  // namespace

ListMemberRecord parse_list_member(std::wstring_view text, ListMemberRecord initial) {
  std::vector<std::wstring> fields = split_record(text, kRecordSeparator, 3);
  initial.key = std::move(fields[0]);
  if (fields.size() > 1) initial.caption = std::move(fields[1]);
  if (fields.size() > 2) initial.tag = std::move(fields[2]);
  return initial;
}

std::wstring format_list_member(const ListMemberRecord& member) {
  return member.key + L"|" + member.caption + L"|" + member.tag + L"|";
}

std::optional<std::vector<ListRecord>> parse_list_file(std::string_view bytes,
                                                       const TextCodec& codec) {
  SettingsReader reader(bytes, codec);
  const auto count =
      lenient_integer<std::int16_t>(reader.value(L"Lists", L"Count", L"0", true, true));
  if (count < 1) return std::nullopt;
  std::vector<ListRecord> lists;
  for (int i = 1; i <= count; ++i) lists.push_back(read_list(reader, i));
  return lists;
}

std::string format_list_file(const std::vector<ListRecord>& lists, const FileStamp& stamp,
                             const TextCodec& codec) {
  SettingsWriter writer(codec);
  writer.head(L"Lists", lists.size(), stamp);
  long i = 0;
  for (const ListRecord& list : lists) {
    writer.section(L"LIST" + format_integer(++i));
    writer.value(L"Caption", list.caption);
    writer.count(list.members.size());
    long j = 0;
    for (const ListMemberRecord& member : list.members) {
      writer.value(L"ITEM" + format_integer(++j), format_list_member(member));
    }
  }
  return writer.take();
}

}  // namespace pv
