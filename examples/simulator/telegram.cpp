// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "telegram.h"

#include "hex_text.h"

namespace fluxor {
namespace {

constexpr std::size_t kChecksumDigits = 4;
constexpr std::size_t kCommandHead = 2 + 1 + 4;

}  // namespace

std::string checksum(std::string_view body) {
  std::uint32_t sum = 0;
  std::uint32_t position = 0;
  for (const char character : body) sum += ++position * static_cast<unsigned char>(character);
  return int_to_hex(sum, kChecksumDigits);
}

std::string framed(std::string_view body) {
  std::string telegram(1, kStart);
  telegram += body;
  telegram += checksum(body);
  telegram += kEnd;
  return telegram;
}

std::string to_text(const Answer& answer) {
  std::string body = int_to_hex(static_cast<std::uint32_t>(answer.address), 2);
  body += answer.letter;
  body += int_to_hex(static_cast<std::uint32_t>(answer.error), 2);
  body += int_to_hex(static_cast<std::uint32_t>(answer.item), 4);
  body += answer.data;
  return framed(body);
}

std::optional<Command> parse_command(std::string_view content) {
  if (content.size() < kCommandHead + kChecksumDigits) return std::nullopt;
  const std::string_view body = content.substr(0, content.size() - kChecksumDigits);
  const auto address = hex_to_int(body.substr(0, 2));
  const auto item = hex_to_int(body.substr(3, 4));
  if (!address || !item) return std::nullopt;

  Command command;
  command.address = static_cast<int>(*address);
  command.letter = body[2];
  command.item = static_cast<int>(*item);
  command.data = body.substr(kCommandHead);
  command.checksum_is_right = checksum(body) == content.substr(body.size());
  return command;
}

std::optional<std::string> TelegramReader::take(char character) {
  if (character == kStart) {
    inside_ = true;
    content_.clear();
    return std::nullopt;
  }
  if (!inside_) return std::nullopt;
  if (character == kEnd) {
    inside_ = false;
    return content_;
  }
  content_ += character;
  if (content_.size() > kLongest) inside_ = false;
  return std::nullopt;
}

}  // namespace fluxor
