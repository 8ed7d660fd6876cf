#include "com/key_fold.h"

#include <algorithm>

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
  for (wchar_t& c : folded) {
    if (c >= L'A' && c <= L'Z') c = static_cast<wchar_t>(c - L'A' + L'a');
  }
  return folded;
}

}  // namespace pv
