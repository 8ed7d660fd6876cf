// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/forms/access_keys.h"

#include <algorithm>
#include <map>
#include <set>

namespace pv {
namespace {

bool is_plain(wchar_t c) {
  return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9');
}

// Letters of the Latin script with accents; the two in between are signs of arithmetic.
bool is_accented(wchar_t c) { return c >= 0xC0 && c <= 0x24F && c != 0xD7 && c != 0xF7; }

bool is_word(wchar_t c) { return is_plain(c) || is_accented(c); }

// Letters that cross the line that marks the key.
bool has_descender(wchar_t c) {
  return std::wstring_view(L"gjpqy").find(c) != std::wstring_view::npos;
}

// How well a position suits the mark; smaller is better. Accented letters come last: they are hard
// to type on the keyboard of another language.
int rank(std::wstring_view caption, std::size_t position) {
  const wchar_t c = caption[position];
  if (is_accented(c)) return 4;
  const bool initial = position == 0 || !is_word(caption[position - 1]);
  return (has_descender(c) ? 2 : 0) + (initial ? 0 : 1);
}

// Positions that may carry the mark, best first.
std::vector<std::size_t> candidates(std::wstring_view caption) {
  std::vector<std::size_t> positions;
  for (std::size_t i = 0; i < caption.size(); ++i)
    if (is_word(caption[i])) positions.push_back(i);
  std::ranges::stable_sort(positions, {}, [&](std::size_t at) { return rank(caption, at); });
  return positions;
}

// Gives every caption a key of its own. When all keys of a caption are taken, the holders of those
// keys are asked to move to another one.
class Assignment {
 public:
  Assignment(const std::vector<std::wstring>& captions, const KeyCase& keys)
      : captions_(captions), keys_(keys), marks_(captions.size(), std::wstring::npos) {
    for (std::size_t i = 0; i < captions.size(); ++i) {
      std::set<std::wstring> asked;
      take_free_key(i) || take_any_key(i, asked);
    }
  }

  std::size_t mark(std::size_t caption) const { return marks_[caption]; }

 private:
  std::wstring key_at(std::size_t caption, std::size_t position) const {
    return keys_.fold(std::wstring_view(captions_[caption]).substr(position, 1));
  }

  bool take(std::size_t caption, std::size_t position) {
    holders_[key_at(caption, position)] = caption;
    marks_[caption] = position;
    return true;
  }

  bool take_free_key(std::size_t caption) {
    for (const std::size_t position : candidates(captions_[caption]))
      if (!holders_.contains(key_at(caption, position))) return take(caption, position);
    return false;
  }

  bool take_any_key(std::size_t caption, std::set<std::wstring>& asked) {
    for (const std::size_t position : candidates(captions_[caption])) {
      const std::wstring key = key_at(caption, position);
      if (!asked.insert(key).second) continue;
      const auto holder = holders_.find(key);
      if (holder == holders_.end() || take_any_key(holder->second, asked))
        return take(caption, position);
    }
    return false;
  }

  const std::vector<std::wstring>& captions_;
  const KeyCase& keys_;
  std::vector<std::size_t> marks_;
  std::map<std::wstring, std::size_t> holders_;
};

}  // namespace

std::wstring without_access_key(std::wstring_view caption) {
  std::wstring shown;
  for (const wchar_t c : caption) shown.append(c == L'&' ? 2 : 1, c);
  return shown;
}

std::vector<std::wstring> with_access_keys(const std::vector<std::wstring>& captions,
                                           const KeyCase& keys) {
  const Assignment assignment(captions, keys);
  std::vector<std::wstring> marked;
  for (std::size_t i = 0; i < captions.size(); ++i) {
    const std::size_t mark = std::min(assignment.mark(i), captions[i].size());
    std::wstring caption = without_access_key(captions[i].substr(0, mark));
    if (mark < captions[i].size()) caption += L"&" + without_access_key(captions[i].substr(mark));
    marked.push_back(std::move(caption));
  }
  return marked;
}

}  // namespace pv
