// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// File names and the filters of directory listings.

#include <algorithm>
#include <string>
#include <vector>

#include "core/text/file_name.h"
#include "core/text/wildcard.h"
#include "tests/fuzz/target.h"

namespace pv::fuzz {
namespace {

bool holds(std::wstring_view text, std::wstring_view any_of) {
  return text.find_first_of(any_of) != std::wstring_view::npos;
}

std::wstring without(std::wstring text, std::wstring_view any_of) {
  std::erase_if(text, [&](wchar_t c) { return any_of.find(c) != std::wstring_view::npos; });
  return text;
}

// --- Any text

void require_parts(const std::wstring& text) {
  const FileName parts = parse_file_name(text);
  require(parts.full_name == text, "the full name is the text");
  for (const std::wstring& part : {parts.drive, parts.path, parts.name, parts.extension}) {
    require(text.find(part) != std::wstring::npos, "each part is a part of the text");
  }
  require(!holds(parts.drive, L":"), "a drive ends before the first colon");
  require(!holds(parts.path, L":"), "a path has no colon");
  require(!holds(parts.name, L"."), "a name ends before the first dot");
  require(!holds(parts.extension, L"."), "an extension begins behind the last dot");
  const std::wstring title = file_title(parts);
  require(title.empty() || title == parts.name + L"." + parts.extension, "a title has its dot");
}

void require_location(const std::wstring& folder) {
  const std::wstring title = L"X.Y";
  const std::wstring joined = create_file_name(folder, title);
  require(joined.starts_with(folder) && joined.ends_with(title), "folder and title are joined");
  const FileName place = at_path(folder);
  require(place.full_name == joined && place.name.empty() && place.extension.empty(),
          "a new location has no name yet");
  require(place.drive == drive_of(joined) && place.path == path_of(joined),
          "a new location has drive and path");
}

// --- Names that are put together from parts

/// The four lines of the input, less what such a part cannot hold.
FileName clean_parts(std::string_view bytes) {
  const auto next = [&] { return wide(take_line(bytes)); };
  FileName parts;
  parts.drive = without(next(), L":\\.");
  parts.path = without(next(), L":.");
  while (parts.path.ends_with(L'\\')) parts.path.pop_back();
  parts.name = without(next(), L":\\.");
  parts.extension = without(next(), L":\\.");
  return parts;
}

void require_put_together(const FileName& parts) {
  // Of a file in a root folder without a drive only the drive's backslash would be left.
  if (parts.drive.empty() && parts.path.empty() && parts.name.empty()) return;
  // A drive and a folder that does not begin at the root make a name of the drive's own folder.
  const std::wstring full_name = make_full_name(parts);
  const FileName again = parse_file_name(full_name);
  require(again.drive == parts.drive, "the drive comes back");
  require(again.path == parts.path, "the path comes back");
  require(again.name == parts.name || parts.name.empty(), "the name comes back");
  require(again.extension == parts.extension, "the extension comes back");
  require(make_full_name(again) == full_name || parts.name.empty(), "the full name comes back");
}

// --- Filters

struct Element {
  enum class Kind { kAnyText, kAnyCharacter, kDigit, kList, kCharacter, kNever } kind;
  std::wstring characters;
  bool negated = false;
};

std::vector<Element> elements_of(std::wstring_view pattern) {
  using Kind = Element::Kind;
  std::vector<Element> elements;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const wchar_t c = pattern[i];
    if (c == L'*') {
      elements.push_back({Kind::kAnyText, {}});
    } else if (c == L'?') {
      elements.push_back({Kind::kAnyCharacter, {}});
    } else if (c == L'#') {
      elements.push_back({Kind::kDigit, {}});
    } else if (c != L'[') {
      elements.push_back({Kind::kCharacter, std::wstring(1, c)});
    } else if (const auto close = pattern.find(L']', i); close == std::wstring_view::npos) {
      elements.push_back({Kind::kNever, {}});
    } else {
      std::wstring list(pattern.substr(i + 1, close - i - 1));
      const bool negated = list.size() > 1 && list[0] == L'!';
      if (negated) list.erase(0, 1);
      if (!list.empty()) elements.push_back({Kind::kList, list, negated});
      i = close;
    }
  }
  return elements;
}

bool is_listed(const std::wstring& list, wchar_t c) {
  std::size_t i = 0;
  while (i < list.size()) {
    const bool range = i + 2 < list.size() && list[i + 1] == L'-';
    const wchar_t last = range ? list[i + 2] : list[i];
    if (list[i] <= c && c <= last) return true;
    i += range ? 3 : 1;
  }
  return false;
}

bool takes(const Element& element, wchar_t c) {
  switch (element.kind) {
    case Element::Kind::kAnyText:
    case Element::Kind::kAnyCharacter:
      return true;
    case Element::Kind::kDigit:
      return c >= L'0' && c <= L'9';
    case Element::Kind::kList:
      return is_listed(element.characters, c) != element.negated;
    case Element::Kind::kCharacter:
      return element.characters[0] == c;
    case Element::Kind::kNever:
      break;
  }
  return false;
}

/// Follows all ways through the pattern at once: which numbers of elements the text read so far can
/// have used up.
bool plain_match(std::wstring_view text, std::wstring_view pattern) {
  const std::vector<Element> elements = elements_of(pattern);
  const auto skips = [&](std::size_t i) { return elements[i].kind == Element::Kind::kAnyText; };
  std::vector<bool> used(elements.size() + 1);
  const auto let_skip = [&] {
    for (std::size_t i = 0; i < elements.size(); ++i) {
      if (used[i] && skips(i)) used[i + 1] = true;
    }
  };
  used[0] = true;
  let_skip();
  for (const wchar_t c : text) {
    std::vector<bool> next(used.size());
    for (std::size_t i = 0; i < elements.size(); ++i) {
      if (used[i] && takes(elements[i], c)) next[skips(i) ? i : i + 1] = true;
    }
    used = next;
    let_skip();
  }
  return used.back();
}

}  // namespace

void file_names(std::string_view bytes) {
  require_parts(wide(bytes));
  require_location(wide(bytes));
  require_put_together(clean_parts(bytes));
}

// The first line of the input is the pattern, the rest the text.
void wildcards(std::string_view bytes) {
  const std::wstring pattern = wide(take_line(bytes));
  const std::wstring text = wide(bytes);
  require(matches(text, pattern) == plain_match(text, pattern),
          "all ways through the pattern agree");
  require(matches(text, L"*"), "a star matches everything");
  if (holds(text, L"*?#[")) return;
  require(matches(text, text), "a text without marks matches itself");
  require(matches(text + text, L"*" + text), "and behind a star what ends with it");
}

}  // namespace pv::fuzz
