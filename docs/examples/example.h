// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

// What the C++ examples of the reference share, besides the library.h of the example server:
// `show`, which prints as a script host does.

#include <cstdio>
#include <vector>

#include "library.h"

using namespace fluxor;

inline bool truth(VARIANT_BOOL value) { return value != VARIANT_FALSE; }

inline std::wstring shown(const std::wstring& text) { return text; }
inline std::wstring shown(const wchar_t* text) { return text; }
inline std::wstring shown(const _variant_t& value) { return text_of(value); }

/// Prints its arguments, with blanks between them.
template <class First, class... Others>
void show(const First& first, const Others&... others) {
  std::printf("%ls", shown(first).c_str());
  (std::printf(" %ls", shown(others).c_str()), ...);
  std::printf("\n");
}

/// Prints the number of the error, as Basic knows it, that `call` ends with.
template <class Call>
void show_error(Call call) {
  try {
    call();
  } catch (const CallFailure& failure) {
    show(L"error", long{HRESULT_CODE(failure.code())});
  }
}

/// The members of a collection: members_of<_CUnit>(get(units, &_CUnits::get_NewEnum))
template <class Member>
std::vector<ComPtr<Member>> members_of(const ComPtr<IUnknown>& enumerator) {
  const auto rest = query<IEnumVARIANT>(enumerator.Get());
  std::vector<ComPtr<Member>> members;
  for (_variant_t next; rest->Next(1, &next, nullptr) == S_OK; next.Clear()) {
    members.push_back(query<Member>(V_DISPATCH(&next)));
  }
  return members;
}
