// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "NorvakProtocol.h"

#include <algorithm>

#include "item_data.h"

namespace fluxor {
namespace {

constexpr short kLowestAddress = 1, kHighestAddress = 99;
constexpr double kAnswerOverhead = 15;  // characters of an answer besides its data
constexpr std::size_t kDisplayRoom = 32, kLevelRoom = 2;
constexpr float kWaitStep = 0.25f;  // seconds between two reports of the time left

// The device's own error codes that have a counterpart among the outcomes of an exchange.
constexpr short kDataIncomplete = 59, kCommandUnknown = 60, kItemUnknown = 61;

ComErrorsType outcome_of(short answer_error) {
  switch (answer_error) {
    case kDataIncomplete:
      return ComErrDataLength;
    case kCommandUnknown:
      return ComErrIllegalCommand;
    case kItemUnknown:
      return ComErrNotDefinedItem;
    default:
      return ComErrNone;
  }
}

// Characters are transmitted in the code page of the system.
std::string to_line(const std::wstring& text) {
  const int size = WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                       nullptr, 0, nullptr, nullptr);
  std::string characters(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), characters.data(),
                      size, nullptr, nullptr);
  return characters;
}

wchar_t from_line(char character) {
  wchar_t wide = 0;
  MultiByteToWideChar(CP_ACP, 0, &character, 1, &wide, 1);
  return wide;
}

bool is_legal(short address) { return address >= kLowestAddress && address <= kHighestAddress; }

class Flag {
 public:
  explicit Flag(bool& flag) : flag_(flag) { flag_ = true; }
  Flag(const Flag&) = delete;
  Flag& operator=(const Flag&) = delete;
  ~Flag() { flag_ = false; }

 private:
  bool& flag_;
};

}  // namespace

NorvakProtocol::NorvakProtocol(ErrorText error_text)
    : history_(create<_CComHistory>(CLSID_CComHistory)), error_text_(std::move(error_text)) {
  method(L"ReadTxm", [this](Arguments& arguments) {
    return _variant_t(read(arguments.integer(0), arguments.required<_CItem>(1)));
  });
  method(L"WriteTxm", [this](Arguments& arguments) {
    return _variant_t(write(arguments.integer(0), arguments.required<_CItem>(1)));
  });
  method(L"ReadDisplay", [this](Arguments& arguments) {
    std::wstring text;
    const bool done = read_display(arguments.integer(0), text);
    if (done) arguments.set(1, text_value(text));
    return _variant_t(done);
  });
  method(L"ItemComLength", [](Arguments& arguments) {
    const auto item = arguments.required<_CItem>(0);
    const short variable = arguments.is_given(1) ? arguments.integer(1) : short{1};
    return _variant_t(static_cast<long>(room_of(get(item, &_CItem::get_DataType, variable))));
  });
  property(L"Busy", [this](Arguments&) { return _variant_t(busy_); });
  property(L"TxmEvents", {},
           [this](Arguments& arguments) { progress_.set_hub(arguments.object<_CTxmEvents>(0)); });
}

bool NorvakProtocol::open(short port, const std::wstring& settings) {
  if (port_->open(port, settings)) return true;
  set_error(ComErrPortNotOpen);
  return false;
}

void NorvakProtocol::set_error(ComErrorsType error) {
  error_ = error;
  answer_error_ = 0;
}

// --- Commands ------------------------------------------------------------------------------------

bool NorvakProtocol::read(short address, const ComPtr<_CItem>& item) {
  std::wstring data;
  const auto room = static_cast<std::size_t>(get(item, &_CItem::get_Length, short{1}));
  bool done = read_raw(address, get(item, &_CItem::get_ItemID), room, data);
  if (done && !decode(data, item, codes_)) {
    error_ = ComErrDataLength;
    done = false;
  }
  set_dirty(item, !done);
  return done;
}

bool NorvakProtocol::write(short address, const ComPtr<_CItem>& item) {
  const Command command{address, Letter::kWrite, get(item, &_CItem::get_ItemID),
                        encode(item, codes_)};
  Answer answer;
  if (!exchange(command, 0, answer)) {
    set_dirty(item, true);
    return false;
  }
  set_dirty(item, false);
  wait(get(item, &_CItem::get_SmartWait));
  return true;
}

bool NorvakProtocol::read_display(short address, std::wstring& text) {
  Answer answer;
  if (!exchange({address, Letter::kDisplay, 0, {}}, kDisplayRoom, answer)) return false;
  text = answer.data;
  return true;
}

bool NorvakProtocol::read_password_level(short address, short& level) {
  Answer answer;
  if (!exchange({address, Letter::kPasswordLevel, 0, {}}, kLevelRoom, answer)) return false;
  level = static_cast<short>(codes_.number(answer.data));
  return true;
}

bool NorvakProtocol::read_raw(short address, short item, std::size_t room, std::wstring& data) {
  Answer answer;
  const bool done = exchange({address, Letter::kRead, item, {}}, room, answer);
  if (done) data = answer.data;
  return done;
}

// --- One exchange --------------------------------------------------------------------------------

bool NorvakProtocol::exchange(const Command& command, std::size_t room, Answer& answer) {
  if (busy_) return false;  // a listener of the exchange that runs asks for another one
  const Flag busy(busy_);
  const std::wstring telegram = to_telegram(command, codes_);
  const auto detail = new_detail(command, telegram);
  state_ = State::kIdle;
  attempt_ = 0;
  room_ = room;
  received_.clear();
  answer_telegram_.clear();
  answer_error_ = 0;
  error_ = is_legal(command.address) ? ComErrRecTimeOut : ComErrIllegalTxmAddress;
  time_out_ = response_time_ + port_->seconds_per_character() *
                                   (static_cast<double>(telegram.size() + room) + kAnswerOverhead);
  while (!is_settled() && attempt_ < attempts_) {
    ++attempt_;
    attempt(to_line(telegram), command, answer);
  }
  finish(detail, answer);
  return error_ == ComErrNone && answer_error_ == 0;
}

// Another attempt would bring nothing new.
bool NorvakProtocol::is_settled() const {
  return error_ == ComErrIllegalTxmAddress || error_ == ComErrPortNotOpen ||
         (state_ == State::kAnswered && answer_error_ != kChecksumWrong);
}

void NorvakProtocol::attempt(const std::string& telegram, const Command& command, Answer& answer) {
  state_ = State::kSending;
  answer_error_ = 0;
  progress_.sending();
  if (!port_->is_open()) {
    error_ = ComErrPortNotOpen;
    return;
  }
  port_->forget_input();
  if (!port_->send(telegram)) {
    error_ = ComErrSendTimeOut;
    if (!port_->is_there()) lose_port();
    return;
  }
  state_ = State::kReceiving;
  progress_.receiving();
  receive(command, answer, time_out_);
  if (error_ != ComErrRecTimeOut) return;
  ++time_outs_;
  progress_.time_out();
}

// Leaves error_ at ComErrRecTimeOut when nothing came that looks like a telegram in time.
void NorvakProtocol::receive(const Command& command, Answer& answer, double seconds) {
  error_ = ComErrRecTimeOut;
  AnswerReader reader(room_);
  std::string characters;
  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(seconds * 1000);
  while (GetTickCount64() < end) {
    switch (port_->receive(characters, reader.missing())) {
      case SerialPort::Received::kNothing:
        continue;
      case SerialPort::Received::kBroken:
        lose_port();
        return;
      case SerialPort::Received::kCharacters:
        break;
    }
    for (const char character : characters) {
      received_ += from_line(character);
      if (!reader.take(from_line(character))) continue;
      if (settle(reader.telegram(), command, answer)) return;
      reader = AnswerReader(room_);
    }
  }
}

// False for the late answer to an earlier command.
bool NorvakProtocol::settle(const std::wstring& telegram, const Command& command, Answer& answer) {
  if (!parse_answer(telegram, codes_, answer)) {
    error_ = ComErrShortTxmAnswer;
    return true;
  }
  if (!belongs_to(answer, command)) return false;
  answer_telegram_ = telegram;
  answer_error_ = answer.error;
  error_ = outcome_of(answer.error);
  state_ = State::kAnswered;
  return true;
}

// Closed, it is opened anew by the next exchange, and may be plugged in again by then.
void NorvakProtocol::lose_port() {
  port_->close();
  error_ = ComErrPortNotOpen;
}

void NorvakProtocol::finish(const ComPtr<_CComDetail>& detail, const Answer& answer) {
  ++exchanges_;
  repeats_ += std::max(0, attempt_ - 1);
  if (error_ != ComErrNone || answer_error_ != 0) ++failures_;

  put(detail, &_CComDetail::put_ComError, error_);
  put(detail, &_CComDetail::put_State, static_cast<short>(state_));
  put(detail, &_CComDetail::put_Repeat, attempt_);
  put(detail, &_CComDetail::put_TimeOut, static_cast<float>(time_out_));
  put(detail, &_CComDetail::put_InBuffer, bstr(received_));
  if (state_ == State::kAnswered) {
    put(detail, &_CComDetail::put_AnswString, bstr(answer_telegram_));
    put(detail, &_CComDetail::put_AnswLength, static_cast<short>(answer_telegram_.size()));
    put(detail, &_CComDetail::put_AnswData, bstr(answer.data));
    put(detail, &_CComDetail::put_AnswItemID, answer.item);
    put(detail, &_CComDetail::put_AnswError, answer.error);
    put(detail, &_CComDetail::put_AnswAddress, answer.address);
    put(detail, &_CComDetail::put_DataCount, static_cast<short>(answer.data.empty() ? 0 : 1));
  }
  get(history_, &_CComHistory::Add, detail.Get());
  progress_.history_changed(history_);
  if (answer_error_ != 0) progress_.answer_error(answer_error_, answer_error_text());
  progress_.finished();
}

ComPtr<_CComDetail> NorvakProtocol::new_detail(const Command& command,
                                               const std::wstring& telegram) const {
  const auto detail = details_.create();
  put(detail, &_CComDetail::put_Protocol, bstr(L"Norvak"));
  put(detail, &_CComDetail::put_Connection, port_->number());
  put(detail, &_CComDetail::put_ComSettings, bstr(port_->settings()));
  put(detail, &_CComDetail::put_TxmType, txmFluxor);
  put(detail, &_CComDetail::put_CmdString, bstr(telegram));
  put(detail, &_CComDetail::put_CmdLength, static_cast<short>(telegram.size()));
  put(detail, &_CComDetail::put_CmdData, bstr(command.data));
  put(detail, &_CComDetail::put_CmdLetter,
      bstr(std::wstring(1, static_cast<wchar_t>(command.letter))));
  put(detail, &_CComDetail::put_CmdItemID, command.item);
  put(detail, &_CComDetail::put_CmdAddress, command.address);
  return detail;
}

// Waits while the transmitter stores a write. A listener may shorten the wait.
void NorvakProtocol::wait(float seconds) {
  const Flag busy(busy_);
  while ((seconds = progress_.waiting(seconds)) > 0) {
    const float step = std::min(seconds, kWaitStep);
    Sleep(static_cast<DWORD>(step * 1000));
    seconds -= step;
  }
}

std::wstring NorvakProtocol::summary() const {
  return L"Norvak: " + std::to_wstring(exchanges_) + L" exchanges, " + std::to_wstring(repeats_) +
         L" repeats, " + std::to_wstring(time_outs_) + L" time-outs, " +
         std::to_wstring(failures_) + L" failed";
}

}  // namespace fluxor
