// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/units/dimension_file.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "core/text/number_text.h"

namespace pv {
namespace {

constexpr std::wstring_view kDefaultUnit = L"Unit#1|1.0|0.0";

std::wstring section_of(std::size_t index) {
  return L"DIM" + format_integer(static_cast<long>(index) + 1);
}
std::wstring key_of(int unit) { return L"UNIT" + format_integer(unit); }

/// The unit numbers in 1..`most` that have a line anywhere in the file.
std::vector<int> numbers_with_lines(const SettingsIndex& index, int most) {
  std::vector<int> numbers;
  for (int m = 1; m <= most; ++m) {
    if (index.has_key(key_of(m))) numbers.push_back(m);
  }
  return numbers;
}

}  // namespace

ParsedUnit parse_unit(std::wstring_view text, UnitRecord initial, wchar_t decimal) {
  std::vector<std::wstring> fields = split_record(text, kRecordSeparator, 3);
  initial.caption = std::move(fields[0]);
  if (fields.size() > 1) initial.slope = lenient_number(fields[1], decimal);
  if (fields.size() > 2) initial.offset = lenient_number(fields[2], decimal);
  return {std::move(initial), fields.size() > 2};
}

std::wstring format_unit(const UnitRecord& unit, wchar_t decimal) {
  return unit.caption + L"|" + format_number(unit.slope, decimal) + L"|" +
         format_number(unit.offset, decimal) + L"|";
}

std::unique_ptr<const DimensionFile> DimensionFile::open(std::string bytes, const TextCodec& codec,
                                                         wchar_t decimal) {
  std::unique_ptr<const DimensionFile> file(new DimensionFile(std::move(bytes), codec, decimal));
  return file->size() > 0 ? std::move(file) : nullptr;
}

DimensionFile::DimensionFile(std::string bytes, const TextCodec& codec, wchar_t decimal)
    : bytes_(std::move(bytes)), index_(bytes_, codec), decimal_(decimal) {
  const auto count = lenient_integer<std::int16_t>(index_.value(L"Dimensions", L"Count", L"0"));
  int most_units = 0;
  while (std::cmp_less(size(), count)) {
    dimensions_.push_back(announced(size()));
    most_units = std::max(most_units, dimensions_.back().unit_count);
  }
  unit_numbers_ = numbers_with_lines(index_, most_units);
}

DimensionFile::Announced DimensionFile::announced(std::size_t index) const {
  const std::wstring section = section_of(index);
  const std::wstring untitled = L"Untitled" + format_integer(static_cast<long>(index) + 1);
  return {index_.value(section, L"Caption", untitled),
          lenient_integer<std::int16_t>(index_.value(section, L"Count", L"1"))};
}

// In the order of their numbers. Of the numbers without a line only the first is read.
std::vector<UnitRecord> DimensionFile::units(std::size_t index) const {
  const std::wstring section = section_of(index);
  const int count = dimensions_[index].unit_count;
  std::vector<UnitRecord> units;
  bool has_default = false;
  const auto read = [&](int number) {
    const std::optional<std::wstring> text = index_.find(section, key_of(number));
    if (!text && has_default) return;
    has_default = has_default || !text;
    units.push_back(parse_unit(text ? *text : kDefaultUnit, {}, decimal_).unit);
  };
  int expected = 1;
  for (const int number : unit_numbers_) {
    if (number > count) break;
    if (number != expected) read(expected);
    read(number);
    expected = number + 1;
  }
  if (expected <= count) read(expected);
  return units;
}

std::optional<std::vector<DimensionRecord>> parse_dimension_file(std::string bytes,
                                                                 const TextCodec& codec,
                                                                 wchar_t decimal) {
  const auto file = DimensionFile::open(std::move(bytes), codec, decimal);
  if (!file) return std::nullopt;
  std::vector<DimensionRecord> dimensions;
  for (std::size_t i = 0; i < file->size(); ++i) {
    dimensions.push_back({file->caption(i), file->units(i)});
  }
  return dimensions;
}

std::string format_dimension_file(const std::vector<DimensionRecord>& dimensions,
                                  const FileStamp& stamp, const TextCodec& codec, wchar_t decimal,
                                  bool continues_a_file) {
  SettingsWriter writer(codec, continues_a_file);
  writer.head(L"Dimensions", dimensions.size(), stamp);
  std::size_t index = 0;
  for (const DimensionRecord& dimension : dimensions) {
    writer.section(section_of(index++));
    writer.value(L"Caption", dimension.caption);
    writer.count(dimension.units.size());
    int m = 0;
    for (const UnitRecord& unit : dimension.units) {
      writer.value(key_of(++m), format_unit(unit, decimal));
    }
  }
  return writer.take();
}

}  // namespace pv
