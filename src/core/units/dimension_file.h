// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The table of dimensions and units as text, and the record of a unit.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/text/settings_text.h"

namespace pv {

struct UnitRecord {
  std::wstring caption;
  double slope = 0;
  double offset = 0;
};

struct ParsedUnit {
  UnitRecord unit;
  bool complete = false;  ///< the text has all three fields
};

struct DimensionRecord {
  std::wstring caption;
  std::vector<UnitRecord> units;
};

/// Reads a unit record: fields that are there replace those of `initial`; text that is no number is
/// 0. Besides '.' and ',', `decimal` is read as the decimal separator.
ParsedUnit parse_unit(std::wstring_view text, UnitRecord initial = {}, wchar_t decimal = L',');
std::wstring format_unit(const UnitRecord& unit, wchar_t decimal);

/// A settings file with a table of dimensions. Every dimension may take its units from later
/// sections, so that a small file can announce a thousand million of them: the units of a dimension
/// are read when they are asked for, and opening takes time and memory by the size of the file.
class DimensionFile {
 public:
  /// Null when the file announces no dimension.
  static std::unique_ptr<const DimensionFile> open(std::string bytes, const TextCodec& codec,
                                                   wchar_t decimal = L',');

  std::size_t size() const { return dimensions_.size(); }
  const std::wstring& caption(std::size_t index) const { return dimensions_[index].caption; }
  /// Captions may come more than once, with one exception: a dimension holds the default unit that
  /// stands for missing lines only once, its caption being in use from then on.
  std::vector<UnitRecord> units(std::size_t index) const;

 private:
  struct Announced {
    std::wstring caption;
    int unit_count = 0;
  };

  DimensionFile(std::string bytes, const TextCodec& codec, wchar_t decimal);
  Announced announced(std::size_t index) const;

  std::string bytes_;
  SettingsIndex index_;
  wchar_t decimal_;
  std::vector<Announced> dimensions_;
  std::vector<int> unit_numbers_;  ///< those that have a line anywhere; all others have the default
};

/// The whole table at once; nullopt when the file announces no dimension.
std::optional<std::vector<DimensionRecord>> parse_dimension_file(std::string bytes,
                                                                 const TextCodec& codec,
                                                                 wchar_t decimal = L',');

/// `continues_a_file`: the text is to be appended to a file that holds something already.
std::string format_dimension_file(const std::vector<DimensionRecord>& dimensions,
                                  const FileStamp& stamp, const TextCodec& codec, wchar_t decimal,
                                  bool continues_a_file);

}  // namespace pv
