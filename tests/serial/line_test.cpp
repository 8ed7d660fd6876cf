// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/serial/line_test.h"

#include <fstream>

#include "tests/support/program.h"
#include "tests/support/source_tree.h"

namespace pv::test {

LineTest::LineTest() {
  set_faults("");
  transmitter_.set(L"Server", server_);
  transmitter_.put(L"Historian", 0);
  transmitter_.put(L"Version", L"2.30");
  if (!transmitter_.call(L"LoadSettings", settings_name()).boolean()) {
    throw CallFailed("the settings files cannot be loaded");
  }
  server_.call(L"SendMessage", L"ResponseTime=0.2");
  hurry_ = std::make_unique<Listener>([this](DISPID event, DISPPARAMS& parameters) {
    if (event == kSmartWaiting) *V_R4REF(&parameters.rgvarg[0]) = 0;
    if (event == kHistoryChanged) history_ = Object(Value(*V_DISPATCHREF(&parameters.rgvarg[0])));
  });
}

LineTest::~LineTest() {
  set_faults("");
  if (level_is_open_) write(L"140", L"");
}

std::wstring LineTest::settings_name() {
  return source_file("examples/data/fluxor").make_preferred().wstring();
}

Object LineTest::item(std::wstring_view key) const {
  return transmitter_.get_object(L"Items").get_object(L"Item", key);
}

Value LineTest::value(std::wstring_view key, int variable) const {
  return item(key).get(L"Value", variable);
}

bool LineTest::read(std::wstring_view key) const {
  return transmitter_.call(L"ReadTxm", item(key)).boolean();
}

bool LineTest::write(std::wstring_view key) const {
  return transmitter_.call(L"WriteTxm", item(key)).boolean();
}

bool LineTest::write(std::wstring_view key, const Value& value, int variable) const {
  item(key).put(L"Value", variable, value);
  return write(key);
}

void LineTest::enter(std::wstring_view password) {
  level_is_open_ = true;
  ASSERT_TRUE(write(L"140", password));
}

void LineTest::set_faults(const std::string& faults) {
  const auto path = option("--faults");
  if (!path) throw CallFailed("the option --faults is missing");
  std::ofstream file(*path, std::ios::binary);
  file << faults;
  if (!file.flush()) throw CallFailed("the faults cannot be written to " + *path);
}

void LineTest::allow_attempts(int count) const {
  server_.call(L"SendMessage", L"Attempts=" + std::to_wstring(count));
}

void LineTest::be_patient() const { server_.call(L"SendMessage", L"ResponseTime=10"); }

Object LineTest::record(long age) const { return history_.get_object(L"Item", age + 1); }

}  // namespace pv::test
