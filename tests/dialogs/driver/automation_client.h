// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "com/automation.h"
#include "tests/support/object.h"

// The library as a late-bound client sees it: by names only.
namespace pv::dialogs_test {

/// Registers the library that lies beside this program; false with a message when it cannot.
bool register_library();

/// One single-threaded apartment, for the thread that makes it.
class Apartment {
 public:
  Apartment() { CoInitialize(nullptr); }
  ~Apartment() { CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

/// An object of the host: it knows every member, answers what it was told (Empty otherwise), and
/// remembers how it was called. Whoever made it keeps it until nobody uses it any more.
class HostObject final : public IDispatch {
 public:
  struct Call {
    DISPID id;
    test::Value argument;  // the first one
    bool operator==(const Call&) const = default;
  };

  void answer(std::wstring member, test::Value value);
  const std::vector<Call>& calls() const { return calls_; }
  void forget_calls() { calls_.clear(); }
  IDispatch* get() { return this; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result, EXCEPINFO*,
                      UINT*) override;

 private:
  struct Member {
    std::wstring name;
    test::Value value;
  };

  std::vector<Member> members_;
  std::vector<Call> calls_;
};

/// A transmitter whose server reads and writes everything.
class Device {
 public:
  Device();
  ~Device();
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  /// An item with one variable, whose changes the historian records.
  test::Object add_item(short id, short access, const std::wstring& caption = L"Caption") const;

  test::Object txm = test::Object::create(L"pvItems32.CTxm");

 private:
  test::Object items_ = test::Object::create(L"pvItems32.CItems");
  test::Object dimensions_ = test::Object::create(L"pvItems32.CDimensions");
  test::Object lists_ = test::Object::create(L"pvItems32.CDLists");
  HostObject server_;
  HostObject protocols_;
};

/// What is passed to the message box; what has no value is left out of the call.
struct Box {
  std::wstring prompt;
  std::optional<short> buttons = std::nullopt;
  std::optional<short> picture = std::nullopt;
  std::optional<std::wstring> title = std::nullopt;
  HWND owner = nullptr;
};

/// The utility facade.
class Utility {
 public:
  Utility();
  ~Utility();
  Utility(const Utility&) = delete;
  Utility& operator=(const Utility&) = delete;

  /// The answer, or -1 when the call fails.
  long message_box(const Box& box) const;
  std::wstring text(long id) const;
  void set_language(long index) const;
  test::Object object() const { return test::Object(Ref<IDispatch>(object_)); }

 private:
  IDispatch* object_ = nullptr;
};

}  // namespace pv::dialogs_test
