// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

#include "line_format.h"

namespace fluxor {

/// The device's end of a serial line: a pseudo-terminal whose other end a host opens like a port.
class SerialLine {
 public:
  /// With a link name, that link leads to the host's end as long as the line exists. Throws
  /// std::system_error.
  explicit SerialLine(const std::string& link);
  SerialLine(const SerialLine&) = delete;
  SerialLine& operator=(const SerialLine&) = delete;
  ~SerialLine();

  const std::string& host_end() const { return host_end_; }

  /// What came within some milliseconds; empty when nothing did.
  std::string read(int milliseconds);
  void write(std::string_view text);

  /// What the host has set its port to.
  LineFormat host_format() const;

 private:
  std::string link_;
  std::string host_end_;
  int device_ = -1;
  int host_ = -1;  // held open: without any host the system would report a broken line
};

}  // namespace fluxor
