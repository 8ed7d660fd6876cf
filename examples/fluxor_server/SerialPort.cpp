// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "SerialPort.h"

#include <array>
#include <sstream>

namespace fluxor {
namespace {

constexpr DWORD kPatience = 50, kSendTimeOut = 1000;  // milliseconds

struct LineSettings {
  DWORD baud = 0;
  BYTE parity = NOPARITY, data_bits = 0, stop_bits = ONESTOPBIT;

  double seconds_per_character() const {
    const int bits =
        1 + data_bits + (parity == NOPARITY ? 0 : 1) + (stop_bits == TWOSTOPBITS ? 2 : 1);
    return static_cast<double>(bits) / baud;
  }
};

std::optional<BYTE> parity_of(const std::wstring& letter) {
  if (letter == L"n" || letter == L"N") return BYTE{NOPARITY};
  if (letter == L"o" || letter == L"O") return BYTE{ODDPARITY};
  if (letter == L"e" || letter == L"E") return BYTE{EVENPARITY};
  return std::nullopt;
}

// "4800,n,8,1": bits per second, parity, data bits, stop bits.
std::optional<LineSettings> parse(const std::wstring& text) {
  std::wistringstream fields(text);
  std::array<std::wstring, 4> field;
  for (std::wstring& each : field) {
    if (!std::getline(fields, each, L',')) return std::nullopt;
  }
  const auto parity = parity_of(field[1]);
  const long baud = std::wcstol(field[0].c_str(), nullptr, 10);
  const long data_bits = std::wcstol(field[2].c_str(), nullptr, 10);
  if (!parity || baud <= 0 || data_bits < 7 || data_bits > 8) return std::nullopt;
  if (field[3] != L"1" && field[3] != L"2") return std::nullopt;

  LineSettings settings;
  settings.baud = static_cast<DWORD>(baud);
  settings.parity = *parity;
  settings.data_bits = static_cast<BYTE>(data_bits);
  settings.stop_bits = field[3] == L"2" ? TWOSTOPBITS : ONESTOPBIT;
  return settings;
}

bool configure(HANDLE port, const LineSettings& line) {
  DCB control{};
  control.DCBlength = sizeof control;
  if (!GetCommState(port, &control)) return false;
  control.BaudRate = line.baud;
  control.Parity = line.parity;
  control.fParity = line.parity != NOPARITY;
  control.ByteSize = line.data_bits;
  control.StopBits = line.stop_bits;
  control.fBinary = TRUE;
  control.fOutxCtsFlow = control.fOutxDsrFlow = control.fDsrSensitivity = FALSE;
  control.fOutX = control.fInX = control.fNull = control.fErrorChar = control.fAbortOnError = FALSE;
  control.fDtrControl = DTR_CONTROL_ENABLE;
  control.fRtsControl = RTS_CONTROL_ENABLE;
  return SetCommState(port, &control) != FALSE;
}

// A read ends with the last character that it asked for, at once. It does not wait for silence, as
// ReadIntervalTimeout would, nor look again and again.
bool set_time_outs(HANDLE port) {
  COMMTIMEOUTS time_outs{};
  time_outs.ReadTotalTimeoutConstant = kPatience;
  time_outs.WriteTotalTimeoutConstant = kSendTimeOut;
  return SetCommTimeouts(port, &time_outs) != FALSE;
}

}  // namespace

SerialPort::SerialPort() {
  property(L"Name", [this](Arguments&) { return text_value(L"COM" + std::to_wstring(number_)); });
  property(L"Settings", [this](Arguments&) { return text_value(settings_); });
}

bool SerialPort::open(short number, const std::wstring& settings) {
  if (is_open() && number == number_ && settings == settings_) return true;
  close();
  const auto line = parse(settings);
  if (!line) return false;
  const std::wstring name = L"\\\\.\\COM" + std::to_wstring(number);
  handle_ = CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0,
                        nullptr);
  if (!is_open()) return false;
  number_ = number;
  settings_ = settings;
  seconds_per_character_ = line->seconds_per_character();
  if (!configure(handle_, *line) || !set_time_outs(handle_)) close();
  return is_open();
}

void SerialPort::close() {
  if (is_open()) CloseHandle(handle_);
  handle_ = INVALID_HANDLE_VALUE;
}

void SerialPort::forget_input() { PurgeComm(handle_, PURGE_RXCLEAR); }

bool SerialPort::send(const std::string& characters) {
  DWORD sent = 0;
  return WriteFile(handle_, characters.data(), static_cast<DWORD>(characters.size()), &sent,
                   nullptr) &&
         sent == characters.size();
}

SerialPort::Received SerialPort::receive(std::string& characters, std::size_t wanted) {
  characters.resize(wanted);
  DWORD count = 0;
  const bool done =
      ReadFile(handle_, characters.data(), static_cast<DWORD>(wanted), &count, nullptr) != FALSE;
  characters.resize(count);
  if (!done) return Received::kBroken;
  if (count > 0) return Received::kCharacters;
  // Reading from a port that was pulled out need not fail. How soon nothing came proves nothing:
  // the system's tick count may stand still meanwhile.
  return is_there() ? Received::kNothing : Received::kBroken;
}

bool SerialPort::is_there() const {
  DCB control{};
  control.DCBlength = sizeof control;
  return GetCommState(handle_, &control) != FALSE;
}

}  // namespace fluxor
