// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "parameter.h"
#include "telegram.h"

namespace fluxor {

/// A flow transmitter: answers telegrams from its parameters, whose measured values move with time.
class Device {
 public:
  static constexpr int kLevels = 4;

  /// The device stores a write in a share of the waiting time that the item's record asks for.
  explicit Device(Parameters parameters, double share_of_wait = 0.5);

  /// Lets time pass: the liquid flows, the totals grow.
  void advance(double seconds);

  /// The answer to the content of a telegram; nothing when the device keeps silent, because the
  /// telegram is for another address, is damaged beyond reading or came while the device stores.
  std::optional<Answer> answer(std::string_view content);

  int address() const;
  void set_address(int address);

  /// Bits per second that the device speaks.
  int baud_rate() const;

  int password_level() const { return password_level_; }

  /// Value of a variable, 0 when there is none or it is a text.
  double number(int item, std::size_t variable = 1) const;
  std::string text(int item, std::size_t variable = 1) const;
  void set_number(int item, double value, std::size_t variable = 1);

 private:
  AnswerError perform(const Command& command, std::string& data);
  AnswerError read(int item, std::string& data) const;
  AnswerError write(int item, std::string_view data);
  void store(int item, std::vector<Field> fields);
  AnswerError enter_password(const std::vector<Field>& fields);
  void open_level(int level);
  std::string display() const;

  const Field* find(int item, std::size_t variable) const;

  Parameters parameters_;
  double share_of_wait_;
  std::array<std::string, kLevels> passwords_;
  int address_ = 1;
  int password_level_ = 0;
  double busy_ = 0;  // seconds until the device has stored the last write
  double clock_ = 0;
};

}  // namespace fluxor
