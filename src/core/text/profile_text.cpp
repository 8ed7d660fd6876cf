// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/profile_text.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "core/text/ascii.h"

namespace pv {
namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr std::size_t kAll = kNone - 1;

// The end of DOS files counts as a blank.
bool is_blank(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r') || c == 0x1A; }

std::wstring_view without_blanks_before(std::wstring_view text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  return text;
}

std::wstring_view without_blanks(std::wstring_view text) {
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  return without_blanks_before(text);
}

std::wstring_view without_quotes(std::wstring_view text) {
  const bool quoted = text.size() > 1 && (text.front() == L'"' || text.front() == L'\'') &&
                      text.back() == text.front();
  return quoted ? text.substr(1, text.size() - 2) : text;
}

}  // namespace

ProfileText::ProfileText(std::wstring_view text) : sections_(parse(text)), unread_(kNone) {}

// A line of its name and value. Of lines without either, one in a row stays.
void ProfileText::add_line(Section& section, std::wstring_view text) {
  const std::size_t equals = text.find(L'=');
  Line line{std::wstring(without_blanks(text.substr(0, equals))), std::nullopt};
  if (line.name.empty() && !section.lines.empty() && section.lines.back().name.empty()) return;
  if (equals != std::wstring_view::npos) line.value = without_blanks(text.substr(equals + 1));
  section.lines.push_back(std::move(line));
}

ProfileText::Sections ProfileText::parse(std::wstring_view text) {
  Sections sections(1);
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
    const std::wstring_view line = without_blanks(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.empty()) continue;
    const std::size_t close = line.front() == L'[' ? line.rfind(L']') : std::wstring_view::npos;
    if (close == std::wstring_view::npos) {
      add_line(sections.back(), line);
    } else {
      sections.push_back({std::wstring(without_blanks(line.substr(1, close - 1))), {}});
    }
  }
  return sections;
}

std::wstring ProfileText::text_of(std::span<const Section> sections) {
  std::wstring text;
  for (const Section& section : sections) {
    if (!section.name.empty()) text.append(L"[").append(section.name).append(L"]\r\n");
    for (const Line& line : section.lines) {
      text += line.name;
      if (line.value) text.append(L"=").append(*line.value);
      text += L"\r\n";
    }
  }
  return text;
}

std::wstring ProfileText::text() const {
  const std::span all(sections_);
  if (!written_) return text_of(all);
  return text_of(all.first(written_->begin)) + text_of(written_->sections) +
         text_of(all.subspan(written_->end));
}

std::size_t ProfileText::position_of(std::wstring_view section) const {
  const auto found = std::find_if(sections_.begin(), sections_.end(), [&](const Section& each) {
    return same_ascii(each.name, section);
  });
  return static_cast<std::size_t>(found - sections_.begin());
}

// As the platform does before its next change. Most changes read as they stand here. What the file
// holds is kept until that change is made.
void ProfileText::read_again() {
  if (unread_ == kNone) return;
  const bool all = unread_ == kAll;
  const std::size_t begin = all ? 0 : unread_;
  const std::size_t count = all ? sections_.size() : 1;
  unread_ = kNone;
  const auto first = sections_.begin() + static_cast<std::ptrdiff_t>(begin);
  const auto last = first + static_cast<std::ptrdiff_t>(count);
  Sections again = parse(text_of({first, last}));
  const auto named = again.begin() + 1;
  irregular_ = std::any_of(named, again.end(), [](const Section& s) { return s.name.empty(); });
  if (!all) again.erase(again.begin());  // there are no lines before the section
  written_ = {begin, begin + again.size(),
              Sections(std::make_move_iterator(first), std::make_move_iterator(last))};
  sections_.insert(sections_.erase(first, last), std::make_move_iterator(again.begin()),
                   std::make_move_iterator(again.end()));
}

void ProfileText::note_change(std::size_t unread) {
  changed_ = true;
  written_.reset();
  unread_ = irregular_ ? kAll : unread;
}

std::optional<std::wstring> ProfileText::value(std::wstring_view section,
                                               std::wstring_view key) const {
  const std::size_t position = position_of(section);
  if (position == sections_.size()) return std::nullopt;
  for (const Line& line : sections_[position].lines) {
    if (!same_ascii(line.name, key)) continue;
    if (!line.value) break;
    return std::wstring(without_quotes(*line.value));
  }
  return std::nullopt;
}

void ProfileText::set(std::wstring_view section, std::wstring_view key, std::wstring_view value) {
  read_again();
  const std::size_t position = position_of(section);
  if (position == sections_.size()) sections_.push_back({std::wstring(section), {}});
  auto& lines = sections_[position].lines;
  auto line = std::find_if(lines.begin(), lines.end(),
                           [&](const Line& each) { return same_ascii(each.name, key); });
  if (line == lines.end()) line = lines.insert(line, {std::wstring(key), std::nullopt});
  const std::wstring_view written = without_blanks_before(value);
  if (line->value == written) return;
  line->value = written;
  const bool reads_back = written == without_blanks(written) &&
                          written.find_first_of(L"\r\n") == std::wstring_view::npos;
  note_change(reads_back ? kNone : position);
}

void ProfileText::remove_section(std::wstring_view section) {
  read_again();
  const std::size_t position = position_of(section);
  if (position == sections_.size()) return;
  sections_.erase(sections_.begin() + static_cast<std::ptrdiff_t>(position));
  note_change(kNone);
}

}  // namespace pv
