// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "ComUtility.h"

namespace fluxor {

// The telegrams of the Norvak protocol; README.md describes them. Changing this pair of files and
// item_data is what it takes to speak another protocol.

enum class Letter : wchar_t {
  kRead = L'R',
  kWrite = L'W',
  kDisplay = L'D',
  kPasswordLevel = L'P',
};

struct Command {
  short address = 0;
  Letter letter = Letter::kRead;
  short item = 0;
  std::wstring data;
};

struct Answer {
  short address = 0;
  wchar_t letter = 0;
  short error = 0;  // number in the transmitter's error list, 0 for none
  short item = 0;
  std::wstring data;
};

inline constexpr short kChecksumWrong = 64;  // the transmitter received a damaged command

std::wstring to_telegram(const Command& command, const ComUtility& codes);

/// False when the telegram is too short or damaged.
bool parse_answer(const std::wstring& telegram, const ComUtility& codes, Answer& answer);

/// True for the answer to this very command, false for a late one to an earlier command.
bool belongs_to(const Answer& answer, const Command& command);

/// Collects received characters into telegrams, from start to end.
class AnswerReader {
 public:
  /// `room` is the length of the data that is expected.
  explicit AnswerReader(std::size_t room) : room_(room) {}

  /// True when this character completes a telegram.
  bool take(wchar_t character);
  const std::wstring& telegram() const { return telegram_; }
  /// How many characters of the telegram are sure to come; a refusal has no data.
  std::size_t missing() const;

 private:
  std::size_t room_;
  std::wstring telegram_;
};

}  // namespace fluxor
