// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "telegram.h"

#include <wctype.h>

namespace fluxor {
namespace {

constexpr wchar_t kStart = L'\x02';
constexpr wchar_t kEnd = L'\x03';
constexpr std::size_t kAddressDigits = 2, kErrorDigits = 2, kItemDigits = 4, kChecksumDigits = 4;
constexpr std::size_t kShortestAnswer =
    1 + kAddressDigits + 1 + kErrorDigits + kItemDigits + kChecksumDigits + 1;

// Each character's code counts as often as its position: swapped characters are noticed too.
std::wstring checksum(const std::wstring& body, const ComUtility& codes) {
  long sum = 0;
  long position = 0;
  for (const wchar_t character : body) sum += ++position * character;
  return codes.hex(_variant_t(sum), kChecksumDigits);
}

short as_short(long number) { return static_cast<short>(number); }

}  // namespace

std::wstring to_telegram(const Command& command, const ComUtility& codes) {
  const std::wstring body = codes.hex(_variant_t(command.address), kAddressDigits) +
                            static_cast<wchar_t>(command.letter) +
                            codes.hex(_variant_t(command.item), kItemDigits) + command.data;
  return kStart + body + checksum(body, codes) + kEnd;
}

bool parse_answer(const std::wstring& telegram, const ComUtility& codes, Answer& answer) {
  if (telegram.size() < kShortestAnswer) return false;
  std::wstring body = telegram.substr(1, telegram.size() - 2 - kChecksumDigits);
  if (telegram.substr(1 + body.size(), kChecksumDigits) != checksum(body, codes)) return false;
  answer.address = as_short(codes.number(codes.chunk(body, kAddressDigits)));
  answer.letter = codes.chunk(body, 1).front();
  answer.error = as_short(codes.number(codes.chunk(body, kErrorDigits)));
  answer.item = as_short(codes.number(codes.chunk(body, kItemDigits)));
  answer.data = body;
  return true;
}

bool belongs_to(const Answer& answer, const Command& command) {
  return answer.address == command.address && answer.item == command.item &&
         answer.letter == towlower(static_cast<wchar_t>(command.letter));
}

bool AnswerReader::take(wchar_t character) {
  if (character == kStart)
    telegram_.clear();  // what came before is garbage or a broken telegram
  else if (telegram_.empty())
    return false;
  telegram_ += character;
  return character == kEnd;
}

std::size_t AnswerReader::missing() const {
  const std::size_t length = telegram_.size();
  if (length < kShortestAnswer) return kShortestAnswer - length;
  const std::size_t expected = kShortestAnswer + room_;
  return length < expected ? expected - length : 1;
}

}  // namespace fluxor
