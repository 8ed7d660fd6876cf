// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What the tests of the audit file share.
#pragma once

#include <gtest/gtest.h>

#include "tests/automation/txm/txm_support.h"
#include "tests/support/own_file.h"

namespace pv::test {

constexpr int kDisabled = 0, kSilent = 1, kEnabled = 2;  // modes of the historian
constexpr int kHistoryDirectory = 8;

constexpr char kHeader[] =
    "Date,Time,Signature,Txm Type,Txm CA,Txm name,Item ID,Item Name,New value,Unit,Comments";

/// The audit file of a folder of its own.
class HistoryFile {
 public:
  const std::wstring& folder() const { return file_.folder().path(); }
  std::string bytes() const { return file_.bytes(); }
  /// Its lines, without the first two fields of an entry: date and time.
  Lines lines() const;

 private:
  const OwnFile file_{L"Historian.csv"};
};

/// The date or the time of this moment, as the user's locale writes it.
std::wstring today();
std::wstring time_of_day();

/// The line of an entry, signed by Ann, without date and time.
std::string entry(const std::string& id, const std::string& value,
                  const std::string& comment = "why");

/// A transmitter that records without asking.
struct Audit : testing::Test, Transmitter {
  Audit();
  ~Audit() override;

  Lines lines() const { return history.lines(); }
  /// Item 7: "Caption 1" of value 10, "Caption 2" of value 20, and so on, without dimension.
  Object item_with_variables(int count);

  const HistoryFile history;

 private:
  const Value directory_before_;
};

}  // namespace pv::test
