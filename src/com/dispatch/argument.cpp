// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/dispatch/argument.h"

#include <algorithm>
#include <cstring>

#include "com/default_member.h"
#include "core/text/ascii.h"

namespace pv {
namespace {

bool is_object(VARTYPE type) { return type == VT_DISPATCH || type == VT_UNKNOWN; }

HRESULT as_dispatch_error(HRESULT result) {
  return result == E_INVALIDARG || result == DISP_E_BADVARTYPE ? DISP_E_TYPEMISMATCH : result;
}

}  // namespace

const void* plain_argument(const VARIANT* source, const Parameter& parameter) {
  if (parameter.by_ref() || parameter.is_interface() || parameter.type() == VT_VARIANT) {
    return nullptr;
  }
  const VARIANT* const inner = source ? &innermost(*source) : nullptr;
  if (inner && inner->vt == parameter.type()) return &inner->lVal;
  return !inner || is_missing(*inner) ? parameter.plain_default() : nullptr;
}

std::size_t Argument::words_of(const Parameter& parameter) {
  return parameter.by_ref() ? 1 : CallWords::words_of(size_of(parameter.type()));
}

HRESULT Argument::bind(const VARIANT* source, const Parameter& parameter) {
  parameter_ = parameter;
  passed_ = made_value();
  if (!source || is_missing(innermost(*source))) return bind_default();
  return parameter.by_ref() ? bind_by_reference(*source) : bind_by_value(innermost(*source));
}

void Argument::bind_result(const Parameter& parameter) {
  parameter_ = parameter;
  passed_ = made_value();
  if (!is_variant()) made_.vt = parameter.type();
}

HRESULT Argument::bind_default() {
  if (!parameter_.optional()) return DISP_E_PARAMNOTOPTIONAL;
  if (const auto text = parameter_.default_text()) {
    made_ = Variant(std::wstring_view(widen_ascii(*text)));
  } else if (is_variant()) {
    made_ = Variant::missing();
  } else {
    made_.vt = parameter_.type();
    if (const std::int32_t* value = parameter_.plain_default()) made_.lVal = *value;
  }
  return S_OK;
}

// A variable of the parameter's type is passed itself; any other lends its value and gets it back.
HRESULT Argument::bind_by_reference(const VARIANT& source) {
  const VARIANT& inner = innermost(source);
  const bool is_typed = (inner.vt & VT_BYREF) != 0;
  const bool is_untyped = !is_typed && &inner != &source;
  if (is_untyped && is_variant()) {
    passed_ = &inner;
    return S_OK;
  }
  if (inner.vt == (VT_BYREF | parameter_.type()) && !parameter_.is_interface()) {
    passed_ = inner.byref;
    return S_OK;
  }
  const HRESULT result = make(inner);
  if (FAILED(result) || !(is_typed || is_untyped)) return result;
  origin_ = &inner;
  return VariantCopy(&before_, &made_);
}

HRESULT Argument::bind_by_value(const VARIANT& value) {
  if (!is_variant() || (value.vt & VT_BYREF)) return make(value);
  passed_ = &value;
  return S_OK;
}

HRESULT Argument::make(const VARIANT& value) {
  if (parameter_.is_interface()) return make_object(value);
  if (is_variant()) return VariantCopyInd(&made_, const_cast<VARIANT*>(&value));
  return as_dispatch_error(change_type(made_, value, parameter_.type()));
}

HRESULT Argument::make_object(const VARIANT& value) {
  const auto type = static_cast<VARTYPE>(value.vt & ~VT_BYREF);
  IUnknown* object = nullptr;
  if (is_object(type)) {
    object = (value.vt & VT_BYREF) ? *value.ppunkVal : value.punkVal;
  } else if (type != VT_NULL) {  // some script languages have no other word for Nothing
    return DISP_E_TYPEMISMATCH;
  }
  void* wanted = nullptr;
  if (object && FAILED(object->QueryInterface(parameter_.iid(), &wanted)))
    return DISP_E_TYPEMISMATCH;
  made_.vt = parameter_.type();
  made_.punkVal = static_cast<IUnknown*>(wanted);
  return S_OK;
}

bool Argument::changed() const {
  if (made_.vt != before_.vt) return true;
  if (made_.vt == VT_BSTR) return view_of(made_.bstrVal) != view_of(before_.bstrVal);
  const std::size_t bytes = std::min(size_of(made_.vt), sizeof made_.llVal);
  return std::memcmp(&made_.lVal, &before_.lVal, bytes) != 0;
}

void Argument::push_to(CallWords& words) const {
  if (parameter_.by_ref()) {
    words.push(passed_);
  } else {
    words.push_value(passed_, size_of(parameter_.type()));
  }
}

HRESULT Argument::write_back() {
  if (!origin_ || !changed()) return S_OK;
  if (origin_->vt & VT_BYREF) return as_dispatch_error(store_typed(*origin_, made_));
  auto* const variable = const_cast<VARIANT*>(origin_);
  VariantClear(variable);
  *variable = made_.detach();
  return S_OK;
}

}  // namespace pv
