// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The framing of the settings files, over memory: lines "[section]" and "key=value".
//
// Files are bytes in the system's ANSI code page; texts are wide. Opening, replacing and appending
// files is the caller's work.
#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/text/text_codec.h"

namespace pv {

/// Who wrote a file: written to the "Version" and "Date" keys of its first section.
struct FileStamp {
  std::wstring version;   ///< like "2.05.07"
  std::wstring comments;  ///< what build it is; deliberately not a date
};

/// Reads a file front to back. Lines end with LF (one CR before it is dropped), the last one may
/// lack its end; there is no limit of length, and any byte is harmless. Views the bytes: the caller
/// keeps them alive. A view that a search gives is good until the next search.
class SettingsReader {
 public:
  SettingsReader(std::string_view bytes, const TextCodec& codec);

  void rewind();

  /// Reads on to the first line that begins with "[" section "]". Stands after that line, or at the
  /// end when false.
  bool find_section(std::wstring_view section);

  /// Reads on, past any section header, to the first line that begins with key "=", and gives the
  /// text after the line's first "=". Stands after that line, or at the end when there is none.
  std::optional<std::wstring_view> find_key(std::wstring_view key);

  /// The two-step search: the section first when `search_section_first` (from the start when
  /// `reset`, which has no effect alone), then the key from there on. `fallback` when either is not
  /// found.
  std::wstring value(std::wstring_view section, std::wstring_view key, std::wstring_view fallback,
                     bool reset, bool search_section_first);

  /// The second step alone: the next value of `key` in the file's order, or `fallback`.
  std::wstring_view next_value(std::wstring_view key, std::wstring_view fallback);

  /// Bytes read so far.
  std::size_t offset() const { return offset_; }

 private:
  std::optional<std::string_view> find_line(std::wstring_view open, std::wstring_view name,
                                            std::wstring_view close);
  std::optional<std::string_view> find_text(std::wstring_view start);

  std::string_view bytes_;
  const TextCodec* codec_;
  std::size_t offset_ = 0;
  std::wstring value_;
};

/// Answers searches that start at the top of the file without reading it again: what value() gives
/// is what SettingsReader::value(section, key, fallback, true, true) gives. Views the bytes: the
/// caller keeps them alive.
class SettingsIndex {
 public:
  SettingsIndex(std::string_view bytes, const TextCodec& codec);

  std::wstring value(std::wstring_view section, std::wstring_view key,
                     std::wstring_view fallback) const;

  /// The same search without a fallback: nullopt when it finds nothing.
  std::optional<std::wstring> find(std::wstring_view section, std::wstring_view key) const;

  std::size_t line_count() const { return lines_.size(); }

  /// Whether any line of the file begins with key "=".
  bool has_key(std::wstring_view key) const;

 private:
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view text) const {
      return std::hash<std::wstring_view>{}(text);
    }
  };
  using LineNumbers = std::vector<std::size_t>;
  using Lines = std::unordered_map<std::wstring, LineNumbers, TextHash, std::equal_to<>>;

  std::wstring line(std::size_t number) const;
  std::optional<std::size_t> first_line(const Lines& lines, std::wstring_view open,
                                        std::wstring_view name, wchar_t close,
                                        std::size_t from) const;

  const TextCodec* codec_;
  std::vector<std::string_view> lines_;
  Lines headers_;  ///< by the text between "[" and the line's first "]"
  Lines keys_;     ///< by the text before the line's first "="
};

/// Names of lines that are numbered, like "VAR1", made in one place.
class NumberedKey {
 public:
  explicit NumberedKey(std::wstring_view name) : name_size_(name.size()), key_(name) {}

  /// Good until the next one.
  std::wstring_view with(long number);

 private:
  std::size_t name_size_;
  std::wstring key_;
};

/// Writes sections and values, every line ended by CR LF, with an empty line before each section
/// but the file's first.
class SettingsWriter {
 public:
  /// `continues_a_file`: the text will be appended to a file, so its first section gets an empty
  /// line too.
  explicit SettingsWriter(const TextCodec& codec, bool continues_a_file = false);

  void section(std::wstring_view name);
  void value(std::wstring_view key, std::wstring_view value);
  /// A value of fields, each followed by the separator.
  void record(std::wstring_view key, std::span<const std::wstring_view> fields);

  /// The value "Count".
  void count(std::size_t count);

  /// The opening section of a file: "Count", "Version" and "Date".
  void head(std::wstring_view name, std::size_t count, const FileStamp& stamp);

  /// The bytes written so far; what is written later continues them.
  std::string take();
  /// How many bytes that would be.
  std::size_t size() const { return bytes_.size(); }

 private:
  void append(std::initializer_list<std::wstring_view> texts);

  const TextCodec* codec_;
  bool empty_line_first_;
  std::string bytes_;
};

/// What ends each field of a record.
inline constexpr wchar_t kRecordSeparator = L'|';

/// The fields of a record: n separators give n + 1 fields, the empty text gives one empty field.
/// Only the first `most` fields are kept.
std::vector<std::wstring> split_record(std::wstring_view record,
                                       wchar_t separator = kRecordSeparator,
                                       std::size_t most = static_cast<std::size_t>(-1));

/// The same without copies: fills `fields`, which sets the most, and gives the number of fields
/// found.
std::size_t split_record(std::wstring_view record, wchar_t separator,
                         std::span<std::wstring_view> fields);

/// "[name]" and "key=value", without a line end.
std::wstring format_section_line(std::wstring_view name);
std::wstring format_value_line(std::wstring_view key, std::wstring_view value);

}  // namespace pv
