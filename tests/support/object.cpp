// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/object.h"

#include <algorithm>
#include <optional>
#include <sstream>

#include "tests/support/trapping_host.h"

namespace pv::test {
namespace {

std::wstring taken(BSTR& text) {
  std::wstring copy(view_of(text));
  SysFreeString(std::exchange(text, nullptr));
  return copy;
}

/// The host around a call, if the test program plays one that traps. What the tests compute
/// themselves may overflow.
class CallingHost {
 public:
  CallingHost() {
    if (host_traps() && !TrappingHost::is_calling()) host_.emplace();
  }

 private:
  std::optional<TrappingHost> host_;
};

[[noreturn]] void fail(std::wstring_view what, const Outcome& outcome) {
  std::ostringstream message;
  message << printable(what) << ": ";
  PrintTo(outcome, &message);
  throw CallFailed(message.str());
}

}  // namespace

long Outcome::number() const {
  const HRESULT error = result == DISP_E_EXCEPTION ? code : result;
  const bool is_run_time_error = (static_cast<ULONG>(error) & 0xFFFF0000u) == 0x800A0000u;
  return is_run_time_error ? error & 0xFFFF : error;
}

void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << "HRESULT " << std::hex << static_cast<ULONG>(outcome.result);
  if (outcome.result == DISP_E_EXCEPTION) *out << ", code " << static_cast<ULONG>(outcome.code);
  *out << std::dec;
  if (outcome.argument != Outcome::kNoArgument) *out << ", argument " << outcome.argument;
  if (!outcome.description.empty()) {
    *out << ", " << printable(outcome.source) << ": " << printable(outcome.description);
  }
  if (outcome.value.vt != VT_EMPTY) {
    *out << ", value ";
    PrintTo(outcome.value, out);
  }
}

Object::Object(const VARIANT& value) {
  const Variant plain = dereferenced(value);
  if (plain.vt != VT_DISPATCH && plain.vt != VT_UNKNOWN) throw CallFailed("not an object");
  object_ = query<IDispatch>(plain.punkVal);
}

Object Object::create(std::wstring_view prog_id) {
  CLSID clsid;
  Object created;
  HRESULT result = CLSIDFromProgID(std::wstring(prog_id).c_str(), &clsid);
  if (SUCCEEDED(result)) {
    const CallingHost host;
    result = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                              reinterpret_cast<void**>(created.object_.put()));
  }
  if (FAILED(result)) {
    Outcome outcome;
    outcome.result = result;
    fail(L"create " + std::wstring(prog_id), outcome);
  }
  return created;
}

DISPID Object::id_of(std::wstring_view member) const {
  std::wstring name(member);
  LPOLESTR names[] = {name.data()};
  DISPID id = DISPID_UNKNOWN;
  const CallingHost host;
  if (object_) object_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  return id;
}

Outcome Object::invoke(DISPID id, WORD flags, std::span<const VARIANT> reversed_arguments,
                       std::span<const DISPID> named) const {
  if (!object_) throw CallFailed("call on no object");
  DISPPARAMS parameters{
      const_cast<VARIANT*>(reversed_arguments.data()), const_cast<DISPID*>(named.data()),
      static_cast<UINT>(reversed_arguments.size()), static_cast<UINT>(named.size())};
  Outcome outcome;
  EXCEPINFO exception{};
  {
    const CallingHost host;
    outcome.result = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                     &outcome.value, &exception, &outcome.argument);
  }
  if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
  outcome.code = exception.scode;
  outcome.source = taken(exception.bstrSource);
  outcome.description = taken(exception.bstrDescription);
  SysFreeString(exception.bstrHelpFile);
  return outcome;
}

Outcome Object::by_name(std::wstring_view member, WORD flags, std::vector<Value> arguments) const {
  if (!object_) throw CallFailed(printable(member) + " called on no object");
  const DISPID id = id_of(member);
  if (id == DISPID_UNKNOWN) throw CallFailed("the object has no member " + printable(member));
  std::reverse(arguments.begin(), arguments.end());
  const std::vector<VARIANT> passed(arguments.begin(), arguments.end());
  const DISPID new_value = DISPID_PROPERTYPUT;
  const bool is_put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  return invoke(id, flags, passed, {&new_value, is_put ? 1u : 0u});
}

Value Object::checked(std::wstring_view member, Outcome outcome) {
  if (!outcome.worked()) fail(member, outcome);
  return std::move(outcome.value);
}

ULONG references_of(IUnknown* object) {
  object->AddRef();
  return object->Release();
}

}  // namespace pv::test
