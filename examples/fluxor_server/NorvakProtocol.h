// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string>

#include "ComUtility.h"
#include "Progress.h"
#include "SerialPort.h"
#include "automation_object.h"
#include "telegram.h"

namespace fluxor {

/// A protocol object: exchanges items with a transmitter on a serial port by telegrams of the
/// Norvak protocol. To automation it is what a pvItems32.CProtocol wraps: ReadTxm, WriteTxm,
/// ReadDisplay, ItemComLength, Busy and TxmEvents.
///
/// Each exchange is repeated until it succeeds or its attempts are used up, reported through the
/// event hub and recorded in `history`.
class NorvakProtocol final : public AutomationObject {
 public:
  using ErrorText = std::function<std::wstring(short code)>;

  explicit NorvakProtocol(ErrorText error_text);

  /// The port that exchanges use; opening it is the caller's business.
  const ComPtr<SerialPort>& port() const { return port_; }
  bool open(short port, const std::wstring& settings);

  bool read(short address, const ComPtr<_CItem>& item);
  bool write(short address, const ComPtr<_CItem>& item);
  bool read_display(short address, std::wstring& text);
  bool read_password_level(short address, short& level);
  /// The data of an item as transmitted; `room` is its expected length in characters.
  bool read_raw(short address, short item, std::size_t room, std::wstring& data);

  ComErrorsType error() const { return error_; }
  /// For exchanges that fail before they begin.
  void set_error(ComErrorsType error);
  /// The error code in the transmitter's last answer.
  short answer_error() const { return answer_error_; }
  std::wstring answer_error_text() const { return error_text_(answer_error_); }

  short attempts() const { return attempts_; }
  void set_attempts(short attempts) { attempts_ = attempts; }
  void set_response_time(double seconds) { response_time_ = seconds; }

  /// What happened since the start, in one line.
  std::wstring summary() const;

 private:
  bool exchange(const Command& command, std::size_t room, Answer& answer);
  void attempt(const std::string& telegram, const Command& command, Answer& answer);
  void receive(const Command& command, Answer& answer, double seconds);
  bool settle(const std::wstring& telegram, const Command& command, Answer& answer);
  void lose_port();
  void finish(const ComPtr<_CComDetail>& detail, const Answer& answer);
  ComPtr<_CComDetail> new_detail(const Command& command, const std::wstring& telegram) const;
  void wait(float seconds);
  bool is_settled() const;

  ComPtr<SerialPort> port_ = make<SerialPort>();
  ComUtility codes_;
  Progress progress_;
  Factory<_CComDetail> details_{CLSID_CComDetail};
  ComPtr<_CComHistory> history_;
  ErrorText error_text_;

  short attempts_ = 6;
  double response_time_ = 0.5;  // seconds that a transmitter takes to answer at the most
  bool busy_ = false;
  ComErrorsType error_ = ComErrNone;
  short answer_error_ = 0;

  // Of the exchange that runs or ran last.
  enum class State : short { kIdle, kSending, kReceiving, kAnswered };
  State state_ = State::kIdle;
  short attempt_ = 0;
  std::size_t room_ = 0;  // characters of data that an answer has
  double time_out_ = 0;
  std::wstring received_;
  std::wstring answer_telegram_;

  long exchanges_ = 0, repeats_ = 0, time_outs_ = 0, failures_ = 0;
};

}  // namespace fluxor
