// The table of dimensions and units as text, and the record of a unit.
#pragma once

#include <cstddef>
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
/// 0.
ParsedUnit parse_unit(std::wstring_view text, UnitRecord initial = {});
std::wstring format_unit(const UnitRecord& unit, wchar_t decimal);

/// Unit lines that a small file may make its dimensions read, all together. Each dimension may take
/// its units from later sections, so such a file could otherwise ask for a thousand million of
/// them.
inline constexpr std::size_t kMostUnitReads = 2'000'000;

/// Reads the table; nullopt when the file announces no dimension, or when its dimensions ask for
/// more than `most_unit_reads` unit lines and for more than the file has lines: a table that was
/// saved is read whatever its size. Captions may come more than once, with one exception: a
/// dimension holds the default unit that stands for missing lines only once, its caption being in
/// use from then on.
std::optional<std::vector<DimensionRecord>> parse_dimension_file(
    std::string_view bytes, const TextCodec& codec, std::size_t most_unit_reads = kMostUnitReads);

/// `continues_a_file`: the text is to be appended to a file that holds something already.
std::string format_dimension_file(const std::vector<DimensionRecord>& dimensions,
                                  const FileStamp& stamp, const TextCodec& codec, wchar_t decimal,
                                  bool continues_a_file);

}  // namespace pv
