// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

// The smallest way to an automation object in C++: a table from member names to functions.
//
//   class Lamp : public AutomationObject {
//    public:
//     Lamp() {
//       method(L"Switch", [this](Arguments& arguments) {
//         on_ = arguments.flag(0);
//         return _variant_t(true);
//       });
//       property(L"On", [this](Arguments&) { return _variant_t(on_); });
//     }
//    private:
//     bool on_ = false;
//   };

#include <atomic>
#include <functional>
#include <string>
#include <vector>

#include "library.h"

namespace fluxor {

/// The arguments of one call, in the order in which the caller wrote them. They may come as values,
/// as references to typed variables or as references to variants: reading looks through all of
/// these, and `set` reaches the caller's variable.
class Arguments {
 public:
  explicit Arguments(DISPPARAMS& parameters) : parameters_(parameters) {}

  /// Readers throw CallFailure when the argument is missing or of another kind.
  short integer(std::size_t index) const;
  bool flag(std::size_t index) const;
  std::wstring text(std::size_t index) const;
  _variant_t value(std::size_t index) const;

  /// An object by one of its interfaces; empty for Nothing.
  template <class Interface>
  ComPtr<Interface> object(std::size_t index) const {
    const _variant_t dispatch = as(index, VT_DISPATCH);
    return query<Interface>(V_DISPATCH(&dispatch));
  }

  /// The same for an object that the member cannot do without.
  template <class Interface>
  ComPtr<Interface> required(std::size_t index) const {
    ComPtr<Interface> found = object<Interface>(index);
    if (!found)
      throw CallFailure(DISP_E_TYPEMISMATCH, L"An object is missing or of another class.");
    return found;
  }

  bool is_given(std::size_t index) const;

  /// Changes the caller's variable; does nothing when the argument came by value.
  void set(std::size_t index, _variant_t value);

 private:
  VARIANT& at(std::size_t index) const;
  _variant_t as(std::size_t index, VARTYPE type) const;

  DISPPARAMS& parameters_;
};

/// Objects of this module that are alive, for DllCanUnloadNow.
extern std::atomic<long> living_objects;

/// An object that answers calls by name. Names are compared without regard to case. Exceptions of a
/// member become the error of the call.
class AutomationObject : public IDispatch {
 public:
  AutomationObject() { ++living_objects; }
  AutomationObject(const AutomationObject&) = delete;
  AutomationObject& operator=(const AutomationObject&) = delete;
  virtual ~AutomationObject() { --living_objects; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** information) override;
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override;

 protected:
  using Body = std::function<_variant_t(Arguments&)>;
  using Setter = std::function<void(Arguments&)>;  // the new value is the last argument

  void method(std::wstring name, Body body) { property(std::move(name), std::move(body)); }
  void property(std::wstring name, Body get, Setter set = {});

 private:
  struct Member {
    std::wstring name;
    Body get;
    Setter set;
  };

  _variant_t perform(const Member& member, WORD flags, DISPPARAMS& parameters) const;

  std::vector<Member> members_;  // the id of a member is its position, counted from 1
  std::atomic<ULONG> references_{0};
};

/// A new object, held by its only reference.
template <class T, class... A>
ComPtr<T> make(A&&... arguments) {
  return ComPtr<T>(new T(std::forward<A>(arguments)...));
}

}  // namespace fluxor
