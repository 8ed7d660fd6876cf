#include "util/settings_text.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "util/number_text.h"

namespace pv {
namespace {

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

std::wstring text_after(const std::wstring& line, wchar_t mark) {
  return line.substr(line.find(mark) + 1);
}

std::wstring latin1_widen(std::string_view bytes) {
  std::wstring text(bytes.size(), L'\0');
  std::transform(bytes.begin(), bytes.end(), text.begin(),
                 [](char c) { return static_cast<wchar_t>(static_cast<unsigned char>(c)); });
  return text;
}

std::string latin1_narrow(std::wstring_view text) {
  std::string bytes(text.size(), '\0');
  std::transform(text.begin(), text.end(), bytes.begin(), [](wchar_t c) {
    return static_cast<std::uint32_t>(c) <= 0xFF ? static_cast<char>(static_cast<unsigned char>(c))
                                                 : '?';
  });
  return bytes;
}

}  // namespace

const TextCodec& latin1_codec() {
  static constexpr TextCodec kCodec{latin1_widen, latin1_narrow};
  return kCodec;
}

std::wstring settings_section_line(std::wstring_view name) {
  std::wstring line = L"[";
  line.append(name).append(L"]");
  return line;
}

std::wstring settings_value_line(std::wstring_view key, std::wstring_view value) {
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

SettingsReader::SettingsReader(std::string_view bytes, const TextCodec& codec)
    : bytes_(bytes), codec_(&codec) {}

void SettingsReader::rewind() { offset_ = 0; }

std::optional<std::wstring> SettingsReader::next_line() {
  const std::optional<std::string_view> line = take_line(bytes_, offset_);
  if (!line) return std::nullopt;
  return codec_->widen(*line);
}

bool SettingsReader::find_section(std::wstring_view section) {
  const std::wstring header = settings_section_line(section);
  while (const std::optional<std::wstring> line = next_line()) {
    if (line->starts_with(header)) return true;
  }
  return false;
}

std::optional<std::wstring> SettingsReader::find_key(std::wstring_view key) {
  const std::wstring start = settings_value_line(key, {});
  while (const std::optional<std::wstring> line = next_line()) {
    if (line->starts_with(start)) return text_after(*line, L'=');
  }
  return std::nullopt;
}

std::wstring SettingsReader::value(std::wstring_view section, std::wstring_view key,
                                   std::wstring_view fallback, bool reset,
                                   bool search_section_first) {
  if (search_section_first) {
    if (reset) rewind();
    if (!find_section(section)) return std::wstring(fallback);
  }
  return next_value(key, fallback);
}

std::wstring SettingsReader::next_value(std::wstring_view key, std::wstring_view fallback) {
  return find_key(key).value_or(std::wstring(fallback));
}

SettingsIndex::SettingsIndex(std::string_view bytes, const TextCodec& codec) : codec_(&codec) {
  std::size_t offset = 0;
  while (const std::optional<std::string_view> raw = take_line(bytes, offset)) {
    const std::size_t number = lines_.size();
    lines_.push_back(*raw);
    const std::wstring text = codec_->widen(*raw);
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
  return text_after(line(*found), L'=');
}

bool SettingsIndex::has_key(std::wstring_view key) const {
  return first_line(keys_, L"", key, L'=', 0).has_value();
}

SettingsWriter::SettingsWriter(const TextCodec& codec, bool continues_a_file)
    : codec_(&codec), empty_line_first_(continues_a_file) {}

void SettingsWriter::line(std::wstring_view text) {
  bytes_.append(codec_->narrow(text)).append("\r\n");
}

void SettingsWriter::section(std::wstring_view name) {
  if (empty_line_first_) line({});
  empty_line_first_ = true;
  line(settings_section_line(name));
}

void SettingsWriter::value(std::wstring_view key, std::wstring_view value) {
  line(settings_value_line(key, value));
}

void SettingsWriter::count(std::size_t count) {
  value(L"Count", integer_text(static_cast<long>(count)));
}

void SettingsWriter::head(std::wstring_view name, std::size_t count, const FileStamp& stamp) {
  section(name);
  this->count(count);
  value(L"Version", stamp.version);
  value(L"Date", stamp.comments);
}

std::string SettingsWriter::take() { return std::exchange(bytes_, {}); }

}  // namespace pv
