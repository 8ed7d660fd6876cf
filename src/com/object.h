#pragma once

#include <source_location>
#include <utility>

#include "com/automation.h"
#include "com/boundary.h"
#include "com/invoke.h"
#include "com/module.h"
#include "com/result.h"
#include "com/simple_object.h"
#include "com/type_library.h"

namespace pv {

/// The automation base of every class: reference counting, dispatch over our own type library,
/// error and class information.
/// `Derived` names itself by `static constexpr const wchar_t* kClassName`; `Coclass` is the class
/// of the type library, `Interface` its default interface.
template <class Derived, class Interface, class Coclass>
class Dual : public Interface, public ISupportErrorInfo, public IProvideClassInfo2 {
 public:
  using DefaultInterface = Interface;

  static HRESULT create(REFIID iid, void** object) {
    return guarded(Derived::kClassName, "create", [&] {
      const Ref<Derived> created = make<Derived>();
      check(created->QueryInterface(iid, object));
    });
  }
  static constexpr ClassEntry entry() {
    return {&__uuidof(Coclass), Derived::kClassName, &Dual::create};
  }
  /// The object behind an interface when it is one of this class of ours, else none: only these
  /// answer to the id of the class.
  static Ref<Derived> own(IUnknown* object) {
    void* found = nullptr;
    if (!object || FAILED(object->QueryInterface(__uuidof(Coclass), &found))) return {};
    return Ref<Derived>::adopt(static_cast<Derived*>(static_cast<Interface*>(found)));
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
    return guarded(Derived::kClassName, "GetTypeInfo",
                   [&] { *info = own_type_info(__uuidof(Interface)).detach(); });
  }
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    const DispatchTable* table = dispatch_table();
    return table ? ids_of_names(*table, names, count, ids) : E_OUTOFMEMORY;
  }
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* argument_error) override {
    const DispatchTable* table = dispatch_table();
    if (!table) return E_OUTOFMEMORY;
    const Ref<IUnknown> alive(static_cast<Interface*>(this));
    return invoke(static_cast<Interface*>(this), *table, id, iid, flags, parameters, result,
                  exception, argument_error);
  }

  // ISupportErrorInfo
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override {
    return IsEqualIID(iid, __uuidof(Interface)) ? S_OK : S_FALSE;
  }

  // IProvideClassInfo2
  STDMETHODIMP GetClassInfo(ITypeInfo** info) override {
    if (!info) return E_POINTER;
    *info = nullptr;
    return guarded(Derived::kClassName, "GetClassInfo",
                   [&] { *info = own_type_info(__uuidof(Coclass)).detach(); });
  }
  STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override {
    if (!guid) return E_POINTER;
    *guid = GUID_NULL;
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
    const IID* source = Derived::source_interface();
    if (!source) return E_NOINTERFACE;
    *guid = *source;
    return S_OK;
  }

  Dual(const Dual&) = delete;
  Dual& operator=(const Dual&) = delete;

  // Classes with events name their source interface.
  static const IID* source_interface() { return nullptr; }

 protected:
  using Location = std::source_location;

  Dual() { add_living_object(); }
  ~Dual() { remove_living_object(); }

  void* find_interface(REFIID iid) {
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(Interface) ||
        iid == __uuidof(Coclass)) {
      return static_cast<Interface*>(this);
    }
    if (iid == IID_ISupportErrorInfo) return static_cast<ISupportErrorInfo*>(this);
    if (iid == IID_IProvideClassInfo || iid == IID_IProvideClassInfo2) {
      return static_cast<IProvideClassInfo2*>(this);
    }
    return nullptr;
  }

  /// The body of a method without result.
  template <class Body>
  HRESULT doing(Body&& body, const Location& where = Location::current()) noexcept {
    return guarded(Derived::kClassName, where.function_name(), std::forward<Body>(body));
  }

  /// The body of a method whose result goes to `out`: cleared first, set when all worked.
  template <class Out, class Body>
  HRESULT returning(Out* out, Body&& body, const Location& where = Location::current()) noexcept {
    if (!out) return report_null_pointer(Derived::kClassName, where.function_name());
    clear_out(out);
    return doing([&] { set_out(out, body()); }, where);
  }

 private:
  friend Interface;

  static const DispatchTable* dispatch_table() noexcept {
    try {
      static const DispatchTable table(__uuidof(Interface));
      return &table;
    } catch (...) {
      return nullptr;
    }
  }

  ReferenceCount references_;
};

}  // namespace pv

// NOLINTBEGIN(bugprone-macro-parentheses): types take no parentheses.

/// A property that is only stored: the published name, the published type, the field.
#define STORED(Name, Type, field)                               \
  STDMETHODIMP get_##Name(Type* value) noexcept override {      \
    return this->returning(                                     \
        value, [&]() -> const auto& { return field; });         \
  }                                                             \
  STDMETHODIMP put_##Name(Type value) noexcept override {       \
    return this->doing([&] { ::pv::set_field(field, value); }); \
  }

/// The same for an object property, set by reference.
#define STORED_OBJECT(Name, Interface, field)                      \
  STDMETHODIMP get_##Name(Interface** value) noexcept override {   \
    return this->returning(value, [&] { return field; });          \
  }                                                                \
  STDMETHODIMP putref_##Name(Interface* value) noexcept override { \
    return this->doing([&] { ::pv::set_field(field, value); });    \
  }

// NOLINTEND(bugprone-macro-parentheses)
