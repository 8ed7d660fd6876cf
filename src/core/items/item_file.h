// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The item file: a whole item database as text.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/items/item_record.h"
#include "core/text/settings_text.h"

namespace pv {

/// Reads a file front to back: each item, followed by its variables. Missing lines give default
/// records, so a key may come more than once: which items and variables their collections refuse is
/// the caller's matter. Views the bytes: the caller keeps them alive.
///
/// Counts that the file does not keep cannot exhaust memory: the first missing line takes the
/// search to the end of the file, and behind it each further item has one default variable. So at
/// most 32767 records each of items and of the item that met the end are defaults, and every other
/// record has a line of its own.
class ItemFileReader {
 public:
  ItemFileReader(std::string_view bytes, const TextCodec& codec, BooleanConversion booleans,
                 wchar_t decimal = L',');

  /// How many items there are to read; below 1 when the bytes are no item file.
  long count() const { return count_; }

  /// Reads the next item; false after the last one. Variables that were not read are passed over.
  bool next(ItemRecord& item);

  /// How many variables the item has that are still to be read.
  int variables_left() const { return variable_count_ - variables_read_; }

  /// Reads the next variable of the item; false after the last one. Its texts are good until
  /// something else is read.
  bool next_variable(VariableRecordView& variable);

 private:
  SettingsReader reader_;
  BooleanConversion booleans_;
  wchar_t decimal_;
  long count_;
  long read_ = 0;
  int variable_count_ = 0;  // of the item that was read last
  int variables_read_ = 0;
  NumberedKey variable_key_{L"VAR"};
};

struct LoadedItem {
  ItemRecord item;
  std::vector<VariableRecord> variables;
};

/// All items of a file; nullopt when the bytes are none.
std::optional<std::vector<LoadedItem>> parse_item_file(std::string_view bytes,
                                                       const TextCodec& codec,
                                                       BooleanConversion booleans);

/// Makes the text of a file: each item, followed by its variables.
class ItemFileWriter {
 public:
  ItemFileWriter(std::size_t count, const FileStamp& stamp, const TextCodec& codec,
                 wchar_t decimal);

  void item(const ItemRecord& item, std::size_t variable_count);
  void variable(const VariableRecordView& variable);

  /// The bytes of the file that were made since the last take, and how many they are.
  std::string take() { return writer_.take(); }
  std::size_t size() const { return writer_.size(); }

 private:
  SettingsWriter writer_;
  wchar_t decimal_;
  NumberedKey item_section_{L"ITEM"};
  NumberedKey variable_key_{L"VAR"};
  long items_ = 0;
  long variables_ = 0;
};

std::string format_item_file(const std::vector<LoadedItem>& items, const FileStamp& stamp,
                             const TextCodec& codec, wchar_t decimal);

}  // namespace pv
