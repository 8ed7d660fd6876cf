// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "host/late_bound.h"

#include <dispex.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <vector>

#include "com/failure.h"
#include "com/floating_point.h"

namespace pv {
namespace {

VARIANT reference_to(VARTYPE type, void* variable) {
  VARIANT reference;
  VariantInit(&reference);
  reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
  reference.byref = variable;
  return reference;
}

// The arguments of one call, in the reversed order of the dispatch interface. For script objects
// typed references become references to values, and changes are carried back afterwards.
class CallArguments {
 public:
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): the space is written before it is read.
  CallArguments(std::span<const VARIANT> arguments, bool for_script)
      : given_(arguments), passed_(arguments.rbegin(), arguments.rend(), &memory_) {
    if (!for_script) return;
    values_.resize(given_.size());
    for (std::size_t i = 0; i < given_.size(); ++i) {
      if (!(passed_[i].vt & VT_BYREF)) continue;
      values_[i] = dereferenced(passed_[i]);
      passed_[i] = reference_to(VT_VARIANT, &values_[i]);
    }
  }

  std::pmr::vector<VARIANT>& passed() { return passed_; }

  void carry_back() {
    for (std::size_t i = 0; i < values_.size(); ++i) {
      const VARIANT& reference = given_[given_.size() - 1 - i];
      const VARTYPE type = reference.vt;
      if (type & VT_BYREF) {
        hand_over(to_type(values_[i], static_cast<VARTYPE>(type & ~VT_BYREF)), reference);
      }
    }
  }

 private:
  static constexpr std::size_t kUsual = 6;  // arguments that need no memory from the heap

  std::span<const VARIANT> given_;
  alignas(VARIANT) std::byte space_[kUsual * sizeof(VARIANT)];
  std::pmr::monotonic_buffer_resource memory_{space_, sizeof space_};
  std::pmr::vector<VARIANT> passed_;
  std::vector<Variant> values_;
};

// Objects differ in whether a member is a method or a property, and in whether objects are put by
// reference: the other kind gets a try. A plain put has no other kind.
WORD other_kind(WORD flags) {
  switch (flags) {
    case DISPATCH_METHOD:
      return DISPATCH_PROPERTYGET;
    case DISPATCH_PROPERTYGET:
      return DISPATCH_METHOD;
    default:
      return DISPATCH_PROPERTYPUT;
  }
}

// What script objects answer to the call of a member that holds an object.
constexpr auto kFunctionExpected = static_cast<HRESULT>(0x800A138A);

// Functions of script languages are objects.
bool is_function(const Variant& value) {
  if (value.vt != VT_DISPATCH || !value.pdispVal || !query<IDispatchEx>(value.pdispVal))
    return false;
  return LateBound(Ref<IDispatch>(value.pdispVal)).has(L"apply");
}

// Objects that pass calls on to each other in a circle must not exhaust the stack of the host.
class NestedCall {
 public:
  NestedCall() {
    if (depth_ == kDeepest) throw automation_error(ErrorCode::kOutOfStack, L"circular references");
    ++depth_;
  }
  ~NestedCall() { --depth_; }
  NestedCall(const NestedCall&) = delete;
  NestedCall& operator=(const NestedCall&) = delete;

 private:
  static constexpr int kDeepest = 64;
  // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): each thread has one depth.
  static thread_local int own_depth_;

  int& depth_ = own_depth_;  // looked up once: the compiler calls a function for it
};

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): as above.
thread_local int NestedCall::own_depth_ = 0;

// An object that says that it failed did not succeed: what is no failure by itself is the number of
// an error.
HRESULT code_of(const EXCEPINFO& exception) {
  if (FAILED(exception.scode)) return exception.scode;
  const auto number = exception.wCode ? exception.wCode : static_cast<WORD>(exception.scode);
  const std::uint32_t code = 0x800A0000u + number;
  return static_cast<HRESULT>(code);
}

[[noreturn]] void raise(EXCEPINFO& exception) {
  if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
  const Bstr given_source = Bstr::attach(exception.bstrSource);
  const Bstr given_description = Bstr::attach(exception.bstrDescription);
  const Bstr given_help_file = Bstr::attach(exception.bstrHelpFile);
  const std::wstring source(view_of(given_source));
  const std::wstring description(view_of(given_description));
  const std::wstring help_file(view_of(given_help_file));
  const DWORD topic = exception.dwHelpContext;
  const HRESULT code = code_of(exception);
  const bool explained =
      !source.empty() || !description.empty() || !help_file.empty() || topic != 0;
  throw com_failure(
      code, explained ? make_error_info(source, description, help_file, topic) : Ref<IErrorInfo>());
}

// A call that the object's dispatch refused, as a client knows it that makes the call itself.
void check_dispatched(HRESULT called, std::wstring_view member) {
  switch (called) {
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND:
      throw automation_error(ErrorCode::kNoSuchMember, std::wstring(member));
    case DISP_E_BADPARAMCOUNT:
    case DISP_E_PARAMNOTOPTIONAL:
      throw automation_error(ErrorCode::kWrongArguments, std::wstring(member));
    case DISP_E_TYPEMISMATCH:
      throw automation_error(ErrorCode::kTypeMismatch, std::wstring(member));
    case DISP_E_OVERFLOW:
      throw automation_error(ErrorCode::kOverflow, std::wstring(member));
    default:
      if (FAILED(called)) raise_foreign_failure(called);
  }
}

}  // namespace

LateBound::LateBound(Ref<IDispatch> object)
    : object_(std::move(object)), script_(query<IDispatchEx>(object_.get())) {}

DISPID LateBound::find(std::wstring_view member) const {
  std::byte space[128];  // NOLINT(cppcoreguidelines-pro-type-member-init): as above
  std::pmr::monotonic_buffer_resource memory(space, sizeof space);
  std::pmr::wstring name(member, &memory);
  LPOLESTR names[] = {name.data()};
  DISPID id = DISPID_UNKNOWN;
  const HostFloatingPoint in_host;
  const HRESULT found = object_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  if (SUCCEEDED(found)) return id;
  if (is_out_of_memory(found)) raise_foreign_failure(found);  // who knows whether it has the member
  // Objects of script engines may know their members only through the extended interface.
  if (const auto extended = query<IDispatchEx>(object_.get())) {
    const Bstr text(member);
    if (SUCCEEDED(extended->GetDispID(text, fdexNameCaseInsensitive, &id))) return id;
  }
  return DISPID_UNKNOWN;
}

DISPID LateBound::id_of(std::wstring_view member) const {
  if (!object_) throw automation_error(ErrorCode::kObjectNotSet, std::wstring(member));
  for (const Known& known : known_) {
    if (known.member == member) return known.id;
  }
  const DISPID id = find(member);
  if (id == DISPID_UNKNOWN) check_dispatched(DISP_E_UNKNOWNNAME, member);
  known_.push_back({std::wstring(member), id});
  return id;
}

bool LateBound::has(std::wstring_view member) const {
  return object_ && find(member) != DISPID_UNKNOWN;
}

HRESULT LateBound::try_invoke(DISPID id, WORD flags, DISPPARAMS& parameters, VARIANT& result,
                              EXCEPINFO& exception) const {
  UINT argument_error = 0;
  const HostFloatingPoint in_host;
  return object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &result, &exception,
                         &argument_error);
}

// Objects of scripts may hold a function where a property is asked for: its answer counts. And they
// may hold an object where a method is called.
HRESULT LateBound::of_script(HRESULT called, DISPID id, WORD flags, DISPPARAMS& parameters,
                             Variant& result, EXCEPINFO& exception) const {
  if (flags == DISPATCH_PROPERTYGET && SUCCEEDED(called) && is_function(result)) {
    result = Variant();
    return try_invoke(id, DISPATCH_METHOD, parameters, result, exception);
  }
  if (flags != DISPATCH_METHOD || called != kFunctionExpected) return called;
  const HRESULT got = try_invoke(id, DISPATCH_PROPERTYGET, parameters, result, exception);
  const bool failed_inside = SUCCEEDED(got) && is_function(result);
  return failed_inside ? called : got;
}

Variant LateBound::invoke(std::wstring_view member, WORD flags,
                          std::span<const VARIANT> arguments) const {
  const DISPID id = id_of(member);
  const Ref<IDispatch> alive = object_;
  CallArguments call(arguments, static_cast<bool>(script_));
  const bool is_put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  DISPID new_value = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{call.passed().data(), is_put ? &new_value : nullptr,
                        static_cast<UINT>(call.passed().size()), is_put ? 1u : 0u};
  const NestedCall nested;
  Variant result;
  EXCEPINFO exception{};
  HRESULT called = try_invoke(id, flags, parameters, result, exception);
  if (called == DISP_E_MEMBERNOTFOUND && other_kind(flags) != flags) {
    called = try_invoke(id, other_kind(flags), parameters, result, exception);
  } else if (script_) {
    called = of_script(called, id, flags, parameters, result, exception);
  }
  if (called == DISP_E_EXCEPTION) raise(exception);
  check_dispatched(called, member);
  call.carry_back();
  return result;
}

Variant LateBound::get(std::wstring_view property, std::initializer_list<VARIANT> arguments) const {
  return invoke(property, DISPATCH_PROPERTYGET, {arguments.begin(), arguments.size()});
}

void LateBound::put(std::wstring_view property, const VARIANT& value) const {
  invoke(property, DISPATCH_PROPERTYPUT, {&value, 1});
}

void LateBound::set(std::wstring_view property, IDispatch* object) const {
  const VARIANT argument = pv::value(object);
  invoke(property, DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF, {&argument, 1});
}

Variant LateBound::call(std::wstring_view method, std::initializer_list<VARIANT> arguments) const {
  return invoke(method, DISPATCH_METHOD, {arguments.begin(), arguments.size()});
}

LateBound LateBound::get_object(std::wstring_view property) const {
  const Variant value = get(property);
  return is_nothing(value) ? LateBound() : LateBound(to_object(value));
}

VARIANT ref(short& value) { return reference_to(VT_I2, &value); }
VARIANT ref_boolean(VARIANT_BOOL& value) { return reference_to(VT_BOOL, &value); }
VARIANT ref(float& value) { return reference_to(VT_R4, &value); }
VARIANT ref(BSTR& value) { return reference_to(VT_BSTR, &value); }
VARIANT ref(IDispatch*& value) { return reference_to(VT_DISPATCH, &value); }

namespace {
VARIANT plain(VARTYPE type) {
  VARIANT value;
  VariantInit(&value);
  value.vt = type;
  return value;
}
}  // namespace

VARIANT value(short number) {
  VARIANT argument = plain(VT_I2);
  argument.iVal = number;
  return argument;
}

VARIANT value(long number) {
  VARIANT argument = plain(VT_I4);
  argument.lVal = number;
  return argument;
}

VARIANT value(bool flag) {
  VARIANT argument = plain(VT_BOOL);
  argument.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
  return argument;
}

VARIANT value(BSTR text) {
  VARIANT argument = plain(VT_BSTR);
  argument.bstrVal = text;
  return argument;
}

VARIANT value(IDispatch* object) {
  VARIANT argument = plain(VT_DISPATCH);
  argument.pdispVal = object;
  return argument;
}

}  // namespace pv
