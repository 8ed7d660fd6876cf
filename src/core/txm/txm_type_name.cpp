// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/txm/txm_type_name.h"

#include <array>

namespace pv {

std::wstring txm_type_name(int type) {
  constexpr std::array kNames = {L"Fluxor", L"Hydrel",       L"Rivane",
                                 L"Gravix", L"GravixTester", L"Tarola"};
  const auto index = static_cast<std::size_t>(type - 1);
  return index < kNames.size() ? kNames[index] : L"Unknown";
}

}  // namespace pv
