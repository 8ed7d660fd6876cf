// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The display-list file and the record of a list member.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/text/settings_text.h"

namespace pv {

struct ListMemberRecord {
  std::wstring key;
  std::wstring caption;  ///< the text shown
  std::wstring tag;      ///< the raw value or code that the text stands for
};

struct ListRecord {
  std::wstring caption;
  std::vector<ListMemberRecord> members;
};

/// Reads a member record: fields that are there replace those of `initial`.
ListMemberRecord parse_list_member(std::wstring_view text, ListMemberRecord initial = {});
std::wstring format_list_member(const ListMemberRecord& member);

/// Reads the file front to back; nullopt when it announces no list. Captions and keys may come more
/// than once.
std::optional<std::vector<ListRecord>> parse_list_file(std::string_view bytes,
                                                       const TextCodec& codec);

std::string format_list_file(const std::vector<ListRecord>& lists, const FileStamp& stamp,
                             const TextCodec& codec);

}  // namespace pv
