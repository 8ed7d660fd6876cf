// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/line_host.h"

#include <exception>
#include <thread>

#include "tests/support/source_tree.h"

namespace pv::test {
namespace {

constexpr short kModemPort = 9;
constexpr const wchar_t* kEnterPassword = L"140";
constexpr const wchar_t* kHighestPassword = L"4444";
constexpr long kCommandLength = 13, kAnswerLength = 15;  // characters of a read, without data

// "Norvak: 45 exchanges, 2 repeats, ...": each of them was a telegram.
long telegrams_in(const std::wstring& report) {
  long exchanges = 0, repeats = 0;
  if (std::swscanf(report.c_str(), L"Norvak: %ld exchanges, %ld repeats", &exchanges, &repeats) !=
      2)
    throw CallFailed("the server's report is " + printable(report));
  return exchanges + repeats;
}

void in_apartment(short line, const std::function<void(short)>& work) {
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) throw CallFailed("no apartment");
  try {
    work(line);
  } catch (...) {
    CoUninitialize();
    throw;
  }
  CoUninitialize();
}

short port_of(short line) { return static_cast<short>(line < kModemPort ? line : line + 1); }

}  // namespace

LineHost::LineHost(short line, const std::wstring& settings,
                   const std::filesystem::path& counts_folder)
    : port_(port_of(line)),
      counts_file_(counts_folder / ("port" + std::to_string(port_))),
      counts_before_(counts_in(counts_file_)) {
  transmitter_.set(L"Server", server_);
  transmitter_.put(L"Historian", 0);
  transmitter_.put(L"ComPort", port_);
  transmitter_.put(L"Address", port_);
  transmitter_.put(L"ComSettings", settings);
  server_.call(L"SendMessage", L"ResponseTime=10");  // nothing is repeated on a busy machine
  const auto name = source_file("examples/data/fluxor").make_preferred().wstring();
  if (!transmitter_.call(L"LoadSettings", name).boolean())
    throw CallFailed("the settings files cannot be loaded");
  if (!transmitter_.call(L"AutoConnect", false).boolean()) {
    throw CallFailed("there is no transmitter on COM" + std::to_string(port_) + ": outcome " +
                     std::to_string(transmitter_.get(L"ComError").number()) + ", " +
                     printable(report()));
  }
  items_ = transmitter_.get_object(L"Items");
  item(kEnterPassword).put(L"Value", 1, kHighestPassword);
  transmitter_.call(L"WriteTxm", item(kEnterPassword));
  const Object entries = items_.get_object(L"Versions")
                             .get_object(L"Item", transmitter_.get(L"Version"))
                             .get_object(L"VerItems");
  const long count = entries.get(L"Count").number();
  for (long i = 1; i <= count; ++i)
    keys_.push_back(entries.get_object(L"Item", i).get(L"Key").text());
}

Object LineHost::item(std::wstring_view key) const { return items_.get_object(L"Item", key); }

void LineHost::read_all() const {
  for (const std::wstring& key : keys_) {
    if (!transmitter_.call(L"ReadTxm", item(key)).boolean())
      throw CallFailed("item " + printable(key) + " cannot be read: " + printable(report()));
  }
}

long LineHost::characters_of_all() const {
  long characters = 0;
  for (const std::wstring& key : keys_)
    characters += kCommandLength + kAnswerLength + item(key).get(L"Length").number();
  return characters;
}

LineCounts LineHost::counts() const {
  const long telegrams = counts_before_.telegrams + telegrams_in(report());
  return counts_after(counts_file_, telegrams) - counts_before_;
}

void in_apartments(short count, const std::function<void(short line)>& work) {
  std::vector<std::thread> threads;
  std::vector<std::exception_ptr> failures(static_cast<std::size_t>(count));
  for (short line = 1; line <= count; ++line) {
    threads.emplace_back([&work, line, &failure = failures[static_cast<std::size_t>(line) - 1]] {
      try {
        in_apartment(line, work);
      } catch (...) {
        failure = std::current_exception();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::exception_ptr& failure : failures)
    if (failure) std::rethrow_exception(failure);
}

}  // namespace pv::test
