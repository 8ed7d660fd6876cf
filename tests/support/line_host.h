// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <barrier>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/line_counts.h"
#include "tests/support/object.h"

namespace pv::test {

/// A host with one transmitter on one line, with a server of its own, in the apartment of the
/// thread that makes it. Lines are counted from 1 and lie on COM1, COM2, ... without COM9, which is
/// the modem. The simulated transmitter on COM<n> has the address n and writes its counts to
/// <counts folder>/port<n>, as no file can be named like a port.
class LineHost {
 public:
  /// Connects and opens every level. Throws when the transmitter does not answer.
  LineHost(short line, const std::wstring& settings, const std::filesystem::path& counts_folder);

  short address() const { return port_; }

  /// Keys of the items that the transmitter's software has.
  const std::vector<std::wstring>& keys() const { return keys_; }
  Object item(std::wstring_view key) const;

  /// Reads each of them. Throws when one cannot be read.
  void read_all() const;
  /// Characters of the telegrams that this takes, by the lengths of the items.
  long characters_of_all() const;

  /// What the transmitter counted for this host until now. Whoever is the next host on a line
  /// relies on the one before to have asked at its end.
  LineCounts counts() const;
  /// What the server says about its line.
  std::wstring report() const { return server_.get(L"GetMessage").text(); }

 private:
  short port_;
  std::filesystem::path counts_file_;
  LineCounts counts_before_;
  Object server_ = Object::create(L"Fluxor.Server");
  Object transmitter_ = Object::create(L"pvItems32.CTxm");
  Object items_;
  std::vector<std::wstring> keys_;
};

/// One of several threads that wait for each other. Whoever fails keeps nobody waiting.
class Together {
 public:
  explicit Together(std::barrier<>& all) : all_(all) {}
  Together(const Together&) = delete;
  Together& operator=(const Together&) = delete;
  ~Together() { all_.arrive_and_drop(); }
  void wait() { all_.arrive_and_wait(); }

 private:
  std::barrier<>& all_;
};

/// Does the work for the lines 1 to `count` at once, each in a thread with a single-threaded
/// apartment of its own. Throws what one of them threw.
void in_apartments(short count, const std::function<void(short line)>& work);

}  // namespace pv::test
