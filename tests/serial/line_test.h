// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>

#include "tests/serial/listener.h"
#include "tests/support/object.h"

namespace pv::test {

/// Outcomes of an exchange, as CTxm.ComError gives them.
enum ComError : long {
  kNoError = 0,
  kNotDefinedItem = 1,
  kDataLength = 2,
  kIllegalAddress = 3,
  kIllegalCommand = 4,
  kPortNotOpen = 5,
  kReceiveTimeOut = 7,
  kShortAnswer = 8,
};

/// Numbers in the error list of the transmitter.
enum AnswerError : short {
  kCommandUnknown = 60,
  kItemUnknown = 61,
  kOutOfLimits = 62,
  kPasswordWrong = 63,
};

/// A transmitter on COM1, where the simulated one answers, with a server of its own. The audit log
/// is off and no waiting time is kept.
class LineTest : public testing::Test {
 protected:
  LineTest();
  ~LineTest() override;

  static std::wstring settings_name();

  Object item(std::wstring_view key) const;
  Value value(std::wstring_view key, int variable = 1) const;
  bool read(std::wstring_view key) const;
  bool write(std::wstring_view key) const;
  bool write(std::wstring_view key, const Value& value, int variable = 1) const;
  bool connect() const { return transmitter_.call(L"AutoConnect", true).boolean(); }

  /// Opens the level of a password until the end of the test.
  void enter(std::wstring_view password);

  /// What goes wrong on the line from the next telegram on: lines of name=value.
  static void set_faults(const std::string& faults);

  /// How often a telegram is sent until an exchange fails.
  void allow_attempts(int count) const;

  /// Leaves the device more time than it takes on a busy machine, so that nothing is repeated.
  void be_patient() const;

  long com_error() const { return transmitter_.get(L"ComError").number(); }
  long answer_error() const { return transmitter_.get(L"ComAnswerError").number(); }

  /// The record of the exchange before the last `age` ones.
  Object record(long age = 0) const;

  Object server_ = Object::create(L"Fluxor.Server");
  Object transmitter_ = Object::create(L"pvItems32.CTxm");
  std::unique_ptr<Listener> hurry_;  // takes the waiting time away, and notes the records

 private:
  bool level_is_open_ = false;
  Object history_;
};

/// Seconds since it was made.
class StopWatch {
 public:
  double seconds() const { return std::chrono::duration<double>(Clock::now() - begin_).count(); }

 private:
  using Clock = std::chrono::steady_clock;  // the system's tick count may stand still for a while

  Clock::time_point begin_ = Clock::now();
};

}  // namespace pv::test
