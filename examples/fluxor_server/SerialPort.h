// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

#include "automation_object.h"

namespace fluxor {

/// One of the computer's serial ports. To automation it shows `Name`, such as COM1, and `Settings`,
/// such as 4800,n,8,1.
class SerialPort final : public AutomationObject {
 public:
  enum class Received { kCharacters, kNothing, kBroken };

  SerialPort();
  ~SerialPort() override { close(); }

  /// Opens port `number` with settings like "4800,n,8,1"; keeps it open when it already is so.
  /// False when there is no such port, it is in use or the settings mean nothing.
  bool open(short number, const std::wstring& settings);
  void close();

  /// False once the port was pulled out.
  bool is_there() const;
  bool is_open() const { return handle_ != INVALID_HANDLE_VALUE; }
  short number() const { return number_; }
  const std::wstring& settings() const { return settings_; }
  double seconds_per_character() const { return seconds_per_character_; }

  /// Forgets what was received so far.
  void forget_input();

  bool send(const std::string& characters);

  /// The next characters: as many as are wanted, or fewer when a moment passes before they came.
  /// Asking for all that are sure to come costs one call of the system instead of one for each.
  Received receive(std::string& characters, std::size_t wanted);

 private:
  HANDLE handle_ = INVALID_HANDLE_VALUE;
  short number_ = 0;
  std::wstring settings_;
  double seconds_per_character_ = 0;
};

}  // namespace fluxor
