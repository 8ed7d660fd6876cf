// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Many free threads use the library at once: their calls come in one after the other, also while a
// call of the library to a server is under way.

#include <atomic>
#include <map>
#include <thread>
#include <vector>

#include "tests/apartments/apartment.h"
#include "tests/support/dispatch_object.h"

namespace pv::test {
namespace {

using ManyThreads = FreeThreaded;

constexpr int kThreads = 8;
constexpr int kCalls = 1000;

// Runs the action on eight free threads at once; failures inside are those of the test.
void on_many_threads(const std::function<void(int)>& action) {
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([&action, number] {
      CoInitializeEx(nullptr, COINIT_MULTITHREADED);
      try {
        action(number);
      } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
      }
      SetErrorInfo(0, nullptr);
      CoUninitialize();
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST_F(ManyThreads, CallTheirOwnObjects) {
  on_many_threads([](int number) {
    const Object variable = Object::create(L"pvItems32.CVariable");
    for (int call = 0; call < kCalls / 2; ++call) {
      variable.put(L"Value", number * kCalls + call);
      ASSERT_EQ(variable.get(L"Value"), number * kCalls + call);
    }
  });
}

TEST_F(ManyThreads, CallTheSameObjects) {
  const Object variables = Object::create(L"pvItems32.CVariables");
  on_many_threads([&](int number) {
    for (int call = 0; call < kCalls; ++call) {
      const std::wstring key = std::to_wstring(number * kCalls + call);
      variables.call(L"Add", key, L"", L"", L"", 0, 0, 0, 0, 0, 0, 4);
    }
  });
  EXPECT_EQ(variables.get(L"Count"), kThreads * kCalls);
  for (int number = 0; number < kThreads; ++number) {
    EXPECT_TRUE(variables.get_object(L"Item", std::to_wstring((number + 1) * kCalls - 1)));
  }
}

TEST_F(ManyThreads, CreateAndReleaseObjects) {
  on_many_threads([](int number) {
    for (int round = 0; round < 20; ++round) {
      const Object item = Object::create(L"pvItems32.CItem");
      item.put(L"ItemID", number);
      ASSERT_EQ(item.get(L"ItemID"), number);
    }
  });
}

/// A transmitter server that several threads may call at once. It is its own protocols.
class SharedServer final : public DispatchObject {
 public:
  explicit SharedServer(Object items) : items_(std::move(items)) {}

  int reads() const { return reads_; }
  int most_at_once() const { return most_at_once_; }

  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO*, UINT*) override {
    if (id == kItems) *result = Value(items_).detach();
    if (id == kProtocols) *result = Value(this).detach();
    if (id == kReadTxm) {
      read(Object(parameters->rgvarg[2]));
      *result = Value(true).detach();
    }
    return S_OK;
  }

 private:
  enum Member : DISPID { kItems = 1, kVersion, kProtocols, kActiveProtocol, kReadTxm };

  DISPID id_of(std::wstring_view name) override {
    static const std::map<std::wstring_view, DISPID> members = {
        {L"Items", kItems},
        {L"Version", kVersion},
        {L"Protocols", kProtocols},
        {L"ActiveProtocol", kActiveProtocol},
        {L"ReadTxm", kReadTxm}};
    const auto found = members.find(name);
    return found == members.end() ? DISPID_UNKNOWN : found->second;
  }

  void read(const Object& item) {
    const int at_once = ++at_once_;
    for (int most = most_at_once_; at_once > most;) {
      if (most_at_once_.compare_exchange_weak(most, at_once)) break;
    }
    item.put(L"Value", 1, item.get(L"ItemID"));
    ++reads_;
    --at_once_;
  }

  const Object items_;
  std::atomic<int> reads_{0}, at_once_{0}, most_at_once_{0};
};

TEST_F(ManyThreads, ReadTheSameTransmitter) {
  constexpr int kReads = 40;
  const Object items = Object::create(L"pvItems32.CItems");
  for (int number = 0; number < kThreads; ++number) {
    const Object item = items.call_object(L"Add", std::to_wstring(number), number, true, 0, false,
                                          false, 0.0f, 4, Value::missing());
    item.get_object(L"Variables").call(L"Add", L"1", L"", L"", L"", 0, 0, 0, 0, -1, 0, 4);
  }
  const Ref<SharedServer> server(new SharedServer(items));
  const Object txm = Object::create(L"pvItems32.CTxm");
  txm.set(L"Server", Value(Ref<IDispatch>(server)));
  txm.put(L"Historian", 0);
  on_many_threads([&](int number) {
    const Object item = items.get_object(L"Item", std::to_wstring(number));
    Value variable(item);
    for (int read = 0; read < kReads; ++read) {
      item.put(L"Value", 1, -1);
      ASSERT_EQ(txm.call(L"ReadTxm", by_ref(variable)), true);
      ASSERT_EQ(variable, Value(item));
      ASSERT_EQ(item.get(L"Value", 1), number);
    }
  });
  EXPECT_EQ(server->reads(), kThreads * kReads);
  EXPECT_GT(server->most_at_once(), 1) << "no call came in while another one was under way";
  txm.set(L"Server", Value::nothing());
}

}  // namespace
}  // namespace pv::test
