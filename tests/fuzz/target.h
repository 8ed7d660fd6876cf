// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What the fuzzer and the replay of its cases share: targets, each of which takes any bytes and
// tells when a promise of the library does not hold for them.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace pv::fuzz {

/// A promise that does not hold.
struct Violation : std::logic_error {
  using std::logic_error::logic_error;
};

/// Throws a Violation that names the promise unless it is kept.
void require(bool kept, std::string_view promise);

struct Target {
  std::string_view name;
  void (*run)(std::string_view bytes);
};

std::span<const Target> targets();

/// nullptr for an unknown name.
const Target* find_target(std::string_view name);

/// The text that bytes stand for: each is one character, but 0xFF with the two bytes behind it is
/// the character of their number, so that all characters of the platform come up.
std::wstring wide(std::string_view bytes);

/// The first line of `bytes`, which it loses with its line feed.
std::string_view take_line(std::string_view& bytes);

void item_file(std::string_view bytes);
void version_file(std::string_view bytes);
void list_file(std::string_view bytes);
void dimension_file(std::string_view bytes);
void settings(std::string_view bytes);
void records(std::string_view bytes);
void numbers(std::string_view bytes);
void file_names(std::string_view bytes);
void wildcards(std::string_view bytes);
void passwords(std::string_view bytes);
void telegrams(std::string_view bytes);
void symbols(std::string_view bytes);
void window_placement(std::string_view bytes);

}  // namespace pv::fuzz
