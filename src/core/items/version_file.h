// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The version file: which items each software version shows, and which item stands for each of
// them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/text/settings_text.h"

namespace pv {

struct VersionEntry {
  std::wstring key;        ///< an item's key, or the decimal text of its id
  std::wstring index_key;  ///< key of the item that stands for it
};

struct VersionRecord {
  std::wstring name;
  std::int16_t item_count = 0;
  std::vector<VersionEntry> entries;
};

struct VersionFile {
  std::vector<VersionRecord> versions;
  bool complete = true;  ///< false when a version without a name ended the reading
};

/// Reads the file front to back; nullopt when it announces no version.
std::optional<VersionFile> parse_version_file(std::string_view bytes, const TextCodec& codec);

std::string format_version_file(const std::vector<VersionRecord>& versions, const FileStamp& stamp,
                                const TextCodec& codec);

}  // namespace pv
