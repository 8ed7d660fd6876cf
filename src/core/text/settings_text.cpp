// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/settings_text.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "core/text/number_text.h"

namespace pv {
namespace {

constexpr std::wstring_view kLineEnd = L"\r\n";

/// The next line of `bytes` from `offset` on, without its end; moves `offset` past it. nullopt at
/// the end.
std::optional<std::string_view> take_line(std::string_view bytes, std::size_t& offset) {
  if (offset >= bytes.size()) return std::nullopt;
  const std::string_view rest = bytes.substr(offset);
  const std::size_t end = std::min(rest.find('\n'), rest.size());
  offset += std::min(end + 1, rest.size());
  std::string_view line = rest.substr(0, end);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

std::wstring format_section_line(std::wstring_view name) {
  std::wstring line = L"[";
  line.append(name).append(L"]");
  return line;
}

std::wstring format_value_line(std::wstring_view key, std::wstring_view value) {
  std::wstring line(key);
  line.append(L"=").append(value);
  return line;
}

std::vector<std::wstring> split_record(std::wstring_view record, wchar_t separator,
                                       std::size_t most) {
  std::vector<std::wstring> fields;
  while (fields.size() < most) {
    const std::size_t end = record.find(separator);
    fields.emplace_back(record.substr(0, end));
    if (end == std::wstring_view::npos) break;
    record.remove_prefix(end + 1);
  }
  return fields;
}

std::size_t split_record(std::wstring_view record, wchar_t separator,
                         std::span<std::wstring_view> fields) {
  std::size_t found = 0;
  const wchar_t* const end = record.data() + record.size();
  const wchar_t* begin = record.data();
  for (const wchar_t* at = begin; found < fields.size(); ++at) {
    if (at != end && *at != separator) continue;
    fields[found++] = {begin, static_cast<std::size_t>(at - begin)};
    if (at == end) break;
    begin = at + 1;
  }
  return found;
}

SettingsReader::SettingsReader(std::string_view bytes, const TextCodec& codec)
    : bytes_(bytes), codec_(&codec) {}

void SettingsReader::rewind() { offset_ = 0; }

// Names are nearly always ASCII, and such a start of a line can be told from its bytes.
std::optional<std::string_view> SettingsReader::find_line(std::wstring_view open,
                                                          std::wstring_view name,
                                                          std::wstring_view close) {
  if (!is_ascii(name)) return find_text(std::wstring(open).append(name).append(close));
  std::string start;
  for (const std::wstring_view part : {open, name, close}) {
    for (const wchar_t c : part) start.push_back(static_cast<char>(c));
  }
  while (const std::optional<std::string_view> line = take_line(bytes_, offset_)) {
    if (line->starts_with(start)) return line;
  }
  return std::nullopt;
}

std::optional<std::string_view> SettingsReader::find_text(std::wstring_view start) {
  while (const std::optional<std::string_view> line = take_line(bytes_, offset_)) {
    if (codec_->widen(*line).starts_with(start)) return line;
  }
  return std::nullopt;
}

bool SettingsReader::find_section(std::wstring_view section) {
  return find_line(L"[", section, L"]").has_value();
}

std::optional<std::wstring_view> SettingsReader::find_key(std::wstring_view key) {
  const std::optional<std::string_view> line = find_line(L"", key, L"=");
  if (!line) return std::nullopt;
  codec_->widen(*line, value_);
  return std::wstring_view(value_).substr(value_.find(L'=') + 1);
}

std::wstring SettingsReader::value(std::wstring_view section, std::wstring_view key,
                                   std::wstring_view fallback, bool reset,
                                   bool search_section_first) {
  if (search_section_first) {
    if (reset) rewind();
    if (!find_section(section)) return std::wstring(fallback);
  }
  return std::wstring(next_value(key, fallback));
}

std::wstring_view SettingsReader::next_value(std::wstring_view key, std::wstring_view fallback) {
  if (const std::optional<std::wstring_view> found = find_key(key)) return *found;
  return value_ = fallback;
}

SettingsIndex::SettingsIndex(std::string_view bytes, const TextCodec& codec) : codec_(&codec) {
  std::wstring text;
  std::size_t offset = 0;
  while (const std::optional<std::string_view> raw = take_line(bytes, offset)) {
    const std::size_t number = lines_.size();
    lines_.push_back(*raw);
    codec_->widen(*raw, text);
    if (const std::size_t equals = text.find(L'='); equals != std::wstring::npos) {
      keys_[text.substr(0, equals)].push_back(number);
    }
    if (!text.starts_with(L'[')) continue;
    if (const std::size_t close = text.find(L']'); close != std::wstring::npos) {
      headers_[text.substr(1, close - 1)].push_back(number);
    }
  }
}

std::wstring SettingsIndex::line(std::size_t number) const { return codec_->widen(lines_[number]); }

/// The first line from `from` on that begins with open + name + close. A name that holds `close`
/// itself is filed under the part before it, among lines that have to be looked at.
std::optional<std::size_t> SettingsIndex::first_line(const Lines& lines, std::wstring_view open,
                                                     std::wstring_view name, wchar_t close,
                                                     std::size_t from) const {
  const std::size_t filed = name.find(close);
  const auto found = lines.find(name.substr(0, filed));
  if (found == lines.end()) return std::nullopt;
  const LineNumbers& numbers = found->second;
  auto candidate = std::lower_bound(numbers.begin(), numbers.end(), from);
  if (filed != std::wstring_view::npos) {
    const std::wstring start = std::wstring(open).append(name) + close;
    candidate = std::find_if(candidate, numbers.end(),
                             [&](std::size_t number) { return line(number).starts_with(start); });
  }
  if (candidate == numbers.end()) return std::nullopt;
  return *candidate;
}

std::wstring SettingsIndex::value(std::wstring_view section, std::wstring_view key,
                                  std::wstring_view fallback) const {
  return find(section, key).value_or(std::wstring(fallback));
}

std::optional<std::wstring> SettingsIndex::find(std::wstring_view section,
                                                std::wstring_view key) const {
  const std::optional<std::size_t> header = first_line(headers_, L"[", section, L']', 0);
  if (!header) return std::nullopt;
  const std::optional<std::size_t> found = first_line(keys_, L"", key, L'=', *header + 1);
  if (!found) return std::nullopt;
  const std::wstring text = line(*found);
  return text.substr(text.find(L'=') + 1);
}

bool SettingsIndex::has_key(std::wstring_view key) const {
  return first_line(keys_, L"", key, L'=', 0).has_value();
}

std::wstring_view NumberedKey::with(long number) {
  key_.resize(name_size_);
  return key_ += format_integer(number);
}

SettingsWriter::SettingsWriter(const TextCodec& codec, bool continues_a_file)
    : codec_(&codec), empty_line_first_(continues_a_file) {}

void SettingsWriter::append(std::initializer_list<std::wstring_view> texts) {
  codec_->append_narrowed({texts.begin(), texts.size()}, bytes_);
}

void SettingsWriter::section(std::wstring_view name) {
  if (empty_line_first_) append({kLineEnd});
  empty_line_first_ = true;
  append({L"[", name, L"]", kLineEnd});
}

void SettingsWriter::value(std::wstring_view key, std::wstring_view value) {
  append({key, L"=", value, kLineEnd});
}

void SettingsWriter::record(std::wstring_view key, std::span<const std::wstring_view> fields) {
  codec_->append_narrowed(key, bytes_);
  bytes_ += '=';
  codec_->append_separated(fields, static_cast<char>(kRecordSeparator), bytes_);
  bytes_ += "\r\n";
}

void SettingsWriter::count(std::size_t count) {
  value(L"Count", format_integer(static_cast<long>(count)));
}

void SettingsWriter::head(std::wstring_view name, std::size_t count, const FileStamp& stamp) {
  section(name);
  this->count(count);
  value(L"Version", stamp.version);
  value(L"Date", stamp.comments);
}

std::string SettingsWriter::take() {
  const std::size_t size = bytes_.size();
  std::string taken = std::exchange(bytes_, {});
  bytes_.reserve(size);  // what follows may well be as long
  return taken;
}

}  // namespace pv
