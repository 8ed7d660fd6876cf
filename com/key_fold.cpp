#include "com/key_fold.h"

#include <algorithm>
#include <cstdint>

#ifdef _WIN32
#include <windows.h>
#else
#include <cwctype>
#endif

namespace pv {
namespace {

bool is_ascii(std::wstring_view text) {
  return std::all_of(text.begin(), text.end(), [](wchar_t c) { return c < 0x80; });
}

wchar_t lower_ascii(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

std::size_t hash_of(std::wstring_view key) {
  std::uint32_t hash = 2166136261u;
  for (const wchar_t c : key) {
    hash = (hash ^ static_cast<std::uint32_t>(lower_ascii(c))) * 16777619u;
  }
  return hash;
}

// Case mapping beyond ASCII is the platform's business.
void lower_beyond_ascii(std::wstring& text) {
#ifdef _WIN32
  const auto length = static_cast<int>(text.size());
  std::wstring lowered(text.size(), L'\0');
  if (LCMapStringW(LOCALE_INVARIANT, LCMAP_LOWERCASE, text.data(), length, lowered.data(), length) >
      0) {
    text = std::move(lowered);
  }
#else
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(c)));
#endif
}

}  // namespace

std::wstring fold_key(std::wstring_view key) {
  std::wstring folded(key);
  if (!is_ascii(key)) {
    lower_beyond_ascii(folded);
    return folded;
  }
  for (wchar_t& c : folded) c = lower_ascii(c);
  return folded;
}

// Keys are mostly plain ASCII: those are folded on the way, without a copy.
std::size_t key_hash(std::wstring_view key) {
  if (!is_ascii(key)) return hash_of(fold_key(key));
  return hash_of(key);
}

bool folds_to(std::wstring_view key, std::wstring_view folded) {
  if (!is_ascii(key)) return fold_key(key) == folded;
  return std::equal(key.begin(), key.end(), folded.begin(), folded.end(),
                    [](wchar_t c, wchar_t wanted) { return lower_ascii(c) == wanted; });
}

}  // namespace pv
