// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

// The base of automation classes. A complete class, published in the contract as `coclass CGauge
// { [default] interface _CGauge; }` with a property Caption and a method Double:
//
//   AUTOMATION_CLASS(CGauge)
//
//   class CGauge final : public AutomationObject<CGauge> {
//    public:
//     STORED(Caption, BSTR, caption_)
//     STDMETHODIMP Double(long value, long* result) noexcept override {
//       return method_with_result(result, [&] { return 2 * value; });
//     }
//
//    private:
//     std::wstring caption_;
//   };
//
// and in its source file: template ClassEntry class_entry<CGauge>();

#include <utility>

#include "com/automation.h"
#include "com/boundary.h"
#include "com/dispatch/invoke.h"
#include "com/floating_point.h"
#include "com/module.h"
#include "com/object_services.h"
#include "com/result.h"
#include "com/simple_object.h"

namespace pv {

/// What the type library says of a class. AUTOMATION_CLASS defines it:
///   Interface  its default interface, `_CItems`, which the IDL compiler declares
///   Coclass    the name that stands for its CLSID, `::CItems`
///   Events     the interface of its events, `__CItems`, if it has any
///   kName      "CItems": the ProgID without the name of the library
///   members()  of the default interface; the build makes kMembersOfCItems of the contract
template <class Class>
struct Contract;

/// The interface through which the members of a collection are handed out: that of our own class,
/// or an interface itself.
template <class T>
struct InterfaceOf {
  using type = T;
};
template <class T>
requires requires { typename Contract<T>::Interface; }
struct InterfaceOf<T> {
  using type = typename Contract<T>::Interface;
};

/// The automation base of every class: reference counting, dispatch over our own type library,
/// error and class information.
template <class Derived>
class AutomationObject : public Contract<Derived>::Interface,
                         public ISupportErrorInfo,
                         public IProvideClassInfo2 {
 public:
  using Class = Derived;
  using Interface = typename Contract<Derived>::Interface;
  using Coclass = typename Contract<Derived>::Coclass;
  static constexpr const wchar_t* kName = Contract<Derived>::kName;

  static HRESULT create(REFIID iid, void** object) {
    return guarded(kName, "create", [&] {
      const Ref<Derived> created = make<Derived>();
      check(created->QueryInterface(iid, object));
    });
  }
  /// The object behind an interface when it is one of this class of ours, else none: only these
  /// answer to the id of the class.
  static Ref<Derived> from_interface(IUnknown* object) {
    void* found = nullptr;
    if (!object || FAILED(object->QueryInterface(__uuidof(Coclass), &found))) return {};
    return Ref<Derived>::attach(static_cast<Derived*>(static_cast<Interface*>(found)));
  }

  // IUnknown
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = static_cast<Derived*>(this)->find_interface(iid);
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return references_.add(); }
  STDMETHODIMP_(ULONG) Release() override {
    return references_.release(static_cast<Derived*>(this));
  }

  // IDispatch
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
    if (!info) return E_POINTER;
    *info = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    return get_type_info(kName, "GetTypeInfo", __uuidof(Interface), info);
  }
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    return ids_of_names(Contract<Derived>::members(), iid, names, count, ids);
  }
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* argument_error) override {
    return invoke(static_cast<Interface*>(this), Contract<Derived>::members(), id, iid, flags,
                  parameters, result, exception, argument_error);
  }

  // ISupportErrorInfo
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override {
    return IsEqualIID(iid, __uuidof(Interface)) ? S_OK : S_FALSE;
  }

  // IProvideClassInfo2
  STDMETHODIMP GetClassInfo(ITypeInfo** info) override {
    return get_type_info(kName, "GetClassInfo", __uuidof(Coclass), info);
  }
  STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override {
    return get_events_id(Derived::source_interface(), kind, guid);
  }

  AutomationObject(const AutomationObject&) = delete;
  AutomationObject& operator=(const AutomationObject&) = delete;

  // Classes with events name their source interface.
  static const IID* source_interface() { return nullptr; }

 protected:
  AutomationObject() { add_living_object(); }
  ~AutomationObject() { remove_living_object(); }

  void* find_interface(REFIID iid) {
    switch (served_interface(iid, __uuidof(Interface), __uuidof(Coclass))) {
      case Served::kMembers:
        return static_cast<Interface*>(this);
      case Served::kErrorInfo:
        return static_cast<ISupportErrorInfo*>(this);
      case Served::kClassInfo:
        return static_cast<IProvideClassInfo2*>(this);
      default:
        return nullptr;
    }
  }

  /// The body of a method without result.
  template <class Body>
  HRESULT method(Body&& body, const char* member = __builtin_FUNCTION()) noexcept {
    return guarded(kName, member, std::forward<Body>(body));
  }

  /// The body of a method whose result goes to `out`: cleared first, set when all worked.
  template <class Out, class Body>
  HRESULT method_with_result(Out* out, Body&& body,
                             const char* member = __builtin_FUNCTION()) noexcept {
    return with_result(out, body, member, [&](auto&& whole) { return method(whole, member); });
  }

  /// The same for bodies that compute with no floating-point numbers: they run in the host's own
  /// floating-point state, which is not worth a look then. Conversions of values are allowed.
  template <class Body>
  HRESULT plain_method(Body&& body, const char* member = __builtin_FUNCTION()) noexcept {
    return guarded_plain(kName, member, std::forward<Body>(body));
  }
  template <class Out, class Body>
  HRESULT plain_method_with_result(Out* out, Body&& body,
                                   const char* member = __builtin_FUNCTION()) noexcept {
    return with_result(out, body, member,
                       [&](auto&& whole) { return plain_method(whole, member); });
  }

 private:
  friend Interface;

  template <class Out, class Body, class Run>
  static HRESULT with_result(Out* out, Body& body, const char* member, Run&& run) noexcept {
    if (!out) return report_null_pointer(kName, member);
    clear_result(out);
    return run([&] { set_result(out, body()); });
  }

  ReferenceCount references_;
};

/// How the class factory makes a class. One line in the class's .cpp makes it creatable:
/// `template ClassEntry class_entry<CItems>();`
template <class Class>
ClassEntry class_entry() {
  return {&__uuidof(typename Contract<Class>::Coclass), Contract<Class>::kName, &Class::create};
}

}  // namespace pv

// NOLINTBEGIN(bugprone-macro-parentheses): types take no parentheses.

/// Declares a class of the contract, before its definition. The IDL compiler's header calls the
/// default interface `_Name`, the events `__Name`, and the CLSID `::Name`, in the global namespace.
#define AUTOMATION_CLASS(Name)                                         \
  class Name;                                                          \
  extern const DispatchTable kMembersOf##Name;                         \
  template <>                                                          \
  struct Contract<Name> {                                              \
    using Interface = _##Name;                                         \
    using Coclass = ::Name;                                            \
    static constexpr const wchar_t* kName = L## #Name;                 \
    static const DispatchTable& members() { return kMembersOf##Name; } \
  };

/// The same for a class that raises events.
#define AUTOMATION_CLASS_WITH_EVENTS(Name)                             \
  class Name;                                                          \
  extern const DispatchTable kMembersOf##Name;                         \
  template <>                                                          \
  struct Contract<Name> {                                              \
    using Interface = _##Name;                                         \
    using Coclass = ::Name;                                            \
    using Events = __##Name;                                           \
    static constexpr const wchar_t* kName = L## #Name;                 \
    static const DispatchTable& members() { return kMembersOf##Name; } \
  };

/// A property that is only stored: the published name, the published type, the field.
#define STORED(Name, Type, field)                                \
  STDMETHODIMP get_##Name(Type* value) noexcept override {       \
    return this->method_with_result(                             \
        value, [&]() -> const auto& { return field; });          \
  }                                                              \
  STDMETHODIMP put_##Name(Type value) noexcept override {        \
    return this->method([&] { ::pv::set_field(field, value); }); \
  }

/// The same for an object property, set by reference.
#define STORED_OBJECT(Name, Interface, field)                      \
  STDMETHODIMP get_##Name(Interface** value) noexcept override {   \
    return this->method_with_result(value, [&] { return field; }); \
  }                                                                \
  STDMETHODIMP putref_##Name(Interface* value) noexcept override { \
    return this->method([&] { ::pv::set_field(field, value); });   \
  }

// NOLINTEND(bugprone-macro-parentheses)
