// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "serial_line.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace fluxor {
namespace {

int checked(int result, const char* what) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), what);
  return result;
}

// No echo, no line editing: bytes pass as they are.
void make_raw(int descriptor) {
  termios settings{};
  checked(tcgetattr(descriptor, &settings), "tcgetattr");
  cfmakeraw(&settings);
  checked(tcsetattr(descriptor, TCSANOW, &settings), "tcsetattr");
}

}  // namespace

SerialLine::SerialLine(const std::string& link) : link_(link) {
  device_ = checked(posix_openpt(O_RDWR | O_NOCTTY), "posix_openpt");
  checked(grantpt(device_), "grantpt");
  checked(unlockpt(device_), "unlockpt");
  host_end_ = ptsname(device_);
  host_ = checked(open(host_end_.c_str(), O_RDWR | O_NOCTTY), "open");
  make_raw(host_);
  if (link_.empty()) return;
  unlink(link_.c_str());
  checked(symlink(host_end_.c_str(), link_.c_str()), "symlink");
}

SerialLine::~SerialLine() {
  if (!link_.empty()) unlink(link_.c_str());
  close(host_);
  close(device_);
}

std::string SerialLine::read(int milliseconds) {
  pollfd descriptor{device_, POLLIN, 0};
  if (poll(&descriptor, 1, milliseconds) <= 0) return {};
  char buffer[256];
  const ssize_t count = ::read(device_, buffer, sizeof buffer);
  return count > 0 ? std::string(buffer, static_cast<std::size_t>(count)) : std::string();
}

void SerialLine::write(std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = ::write(device_, text.data(), text.size());
    if (count <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

LineFormat SerialLine::host_format() const { return line_format(host_); }

}  // namespace fluxor
