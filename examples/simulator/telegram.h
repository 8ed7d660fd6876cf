// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fluxor {

/// The telegrams of the line, as ../fluxor_server/README.md describes them:
///
///   command  STX address(2) LETTER          item(4) data checksum(4) ETX
///   answer   STX address(2) letter error(2) item(4) data checksum(4) ETX
///
/// Numbers are hexadecimal digits. What stands between STX and the checksum is called the body.
inline constexpr char kStart = '\x02';
inline constexpr char kEnd = '\x03';

enum class CommandLetter : char {
  kRead = 'R',
  kWrite = 'W',
  kDisplay = 'D',
  kPasswordLevel = 'P',
};

/// What a transmitter answers besides data: numbers of its error list.
enum class AnswerError : std::uint8_t {
  kNone = 0,
  kDataIncomplete = 59,
  kCommandUnknown = 60,
  kItemUnknown = 61,
  kOutOfLimits = 62,
  kPasswordWrong = 63,
  kChecksumWrong = 64,
};

struct Command {
  int address = 0;
  char letter = 0;
  int item = 0;
  std::string data;
  bool checksum_is_right = false;
};

struct Answer {
  int address = 0;
  char letter = 0;  // that of the command, in lower case
  AnswerError error = AnswerError::kNone;
  int item = 0;
  std::string data;
};

/// The sum of each character's code times its position, counted from 1: it also notices swapped
/// characters. Four hexadecimal digits.
std::string checksum(std::string_view body);

/// The whole telegram around a body.
std::string framed(std::string_view body);

std::string to_text(const Answer& answer);

/// Nothing when the text between start and end is too short or its numbers are none.
std::optional<Command> parse_command(std::string_view content);

/// Finds telegrams in what comes over the line: everything outside start and end is ignored, a
/// start inside a telegram begins a new one.
class TelegramReader {
 public:
  static constexpr std::size_t kLongest = 512;

  /// The content between start and end when this character completes a telegram.
  std::optional<std::string> take(char character);

 private:
  bool inside_ = false;
  std::string content_;
};

}  // namespace fluxor
