#include "core/units/dimension_file.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "core/text/number_text.h"

namespace pv {
namespace {

constexpr std::wstring_view kDefaultUnit = L"Unit#1|1.0|0.0";

std::wstring section_of(int dimension) { return L"DIM" + format_integer(dimension); }
std::wstring key_of(int unit) { return L"UNIT" + format_integer(unit); }

/// A dimension as announced: its units are still to be read.
struct Announced {
  std::wstring caption;
  int unit_count = 0;
};

Announced read_announcement(const SettingsIndex& index, int dimension) {
  const std::wstring section = section_of(dimension);
  return {index.value(section, L"Caption", L"Untitled" + format_integer(dimension)),
          lenient_integer<std::int16_t>(index.value(section, L"Count", L"1"))};
}

/// The unit numbers in 1..`most` that have a line anywhere in the file: all others have the default
/// unit.
std::vector<int> numbers_with_lines(const SettingsIndex& index, int most) {
  std::vector<int> numbers;
  for (int m = 1; m <= most; ++m) {
    if (index.has_key(key_of(m))) numbers.push_back(m);
  }
  return numbers;
}

/// How many of `numbers` (ascending) are in 1..`most`.
std::size_t numbers_up_to(const std::vector<int>& numbers, int most) {
  return static_cast<std::size_t>(std::upper_bound(numbers.begin(), numbers.end(), most) -
                                  numbers.begin());
}

/// Reads units in the order of their numbers; `numbers` are those with lines. Of the numbers
/// without one only the first is read: its caption is in use afterwards, so the collection would
/// drop the others.
std::vector<UnitRecord> read_units(const SettingsIndex& index, int dimension, int count,
                                   const std::vector<int>& numbers) {
  const std::wstring section = section_of(dimension);
  std::vector<UnitRecord> units;
  bool has_default = false;
  const auto read = [&](int number) {
    const std::optional<std::wstring> text = index.find(section, key_of(number));
    if (!text && has_default) return;
    has_default = has_default || !text;
    units.push_back(parse_unit(text ? *text : kDefaultUnit).unit);
  };
  int expected = 1;
  for (std::size_t i = 0; i < numbers_up_to(numbers, count); ++i) {
    if (numbers[i] != expected) read(expected);
    read(numbers[i]);
    expected = numbers[i] + 1;
  }
  if (expected <= count) read(expected);
  return units;
}

}  // namespace

ParsedUnit parse_unit(std::wstring_view text, UnitRecord initial) {
  std::vector<std::wstring> fields = split_record(text, kRecordSeparator, 3);
  initial.caption = std::move(fields[0]);
  if (fields.size() > 1) initial.slope = lenient_number(fields[1]);
  if (fields.size() > 2) initial.offset = lenient_number(fields[2]);
  return {std::move(initial), fields.size() > 2};
}

std::wstring format_unit(const UnitRecord& unit, wchar_t decimal) {
  return unit.caption + L"|" + format_number(unit.slope, decimal) + L"|" +
         format_number(unit.offset, decimal) + L"|";
}

std::optional<std::vector<DimensionRecord>> parse_dimension_file(std::string_view bytes,
                                                                 const TextCodec& codec,
                                                                 std::size_t most_unit_reads) {
  const SettingsIndex index(bytes, codec);
  const auto count = lenient_integer<std::int16_t>(index.value(L"Dimensions", L"Count", L"0"));
  if (count < 1) return std::nullopt;

  std::vector<Announced> announced;
  int most_units = 0;
  for (int n = 1; n <= count; ++n) {
    announced.push_back(read_announcement(index, n));
    most_units = std::max(most_units, announced.back().unit_count);
  }
  const std::vector<int> numbers = numbers_with_lines(index, most_units);
  std::size_t reads = 0;
  for (const Announced& dimension : announced) {
    reads += numbers_up_to(numbers, dimension.unit_count);
    if (reads > std::max(most_unit_reads, index.line_count())) return std::nullopt;
  }

  std::vector<DimensionRecord> dimensions;
  int n = 0;
  for (Announced& dimension : announced) {
    ++n;
    dimensions.push_back(
        {std::move(dimension.caption), read_units(index, n, dimension.unit_count, numbers)});
  }
  return dimensions;
}

std::string format_dimension_file(const std::vector<DimensionRecord>& dimensions,
                                  const FileStamp& stamp, const TextCodec& codec, wchar_t decimal,
                                  bool continues_a_file) {
  SettingsWriter writer(codec, continues_a_file);
  writer.head(L"Dimensions", dimensions.size(), stamp);
  int n = 0;
  for (const DimensionRecord& dimension : dimensions) {
    writer.section(section_of(++n));
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
