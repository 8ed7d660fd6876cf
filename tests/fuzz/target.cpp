// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/fuzz/target.h"

#include <algorithm>
#include <array>

namespace pv::fuzz {
namespace {

constexpr std::array kTargets = {
    Target{"item_file", item_file},
    Target{"version_file", version_file},
    Target{"list_file", list_file},
    Target{"dimension_file", dimension_file},
    Target{"settings", settings},
    Target{"records", records},
    Target{"numbers", numbers},
    Target{"file_names", file_names},
    Target{"wildcards", wildcards},
    Target{"passwords", passwords},
    Target{"telegrams", telegrams},
    Target{"symbols", symbols},
    Target{"window_placement", window_placement},
};

constexpr unsigned char kWideMark = 0xFF;

}  // namespace

void require(bool kept, std::string_view promise) {
  if (!kept) throw Violation(std::string(promise));
}

std::span<const Target> targets() { return kTargets; }

const Target* find_target(std::string_view name) {
  const auto* const found = std::find_if(kTargets.begin(), kTargets.end(),
                                         [&](const Target& target) { return target.name == name; });
  return found == kTargets.end() ? nullptr : found;
}

std::wstring wide(std::string_view bytes) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  std::wstring text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (byte(i) == kWideMark && i + 2 < bytes.size()) {
      text += static_cast<wchar_t>(byte(i + 1) * 256 + byte(i + 2));
      i += 2;
    } else {
      text += static_cast<wchar_t>(byte(i));
    }
  }
  return text;
}

std::string_view take_line(std::string_view& bytes) {
  const std::size_t end = std::min(bytes.find('\n'), bytes.size());
  const std::string_view line = bytes.substr(0, end);
  bytes.remove_prefix(std::min(end + 1, bytes.size()));
  return line;
}

}  // namespace pv::fuzz
