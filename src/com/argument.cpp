#include "com/argument.h"

#include <cstring>

#include "com/variant.h"

namespace pv {
namespace {

bool is_object(VARTYPE type) { return type == VT_DISPATCH || type == VT_UNKNOWN; }

HRESULT as_dispatch_error(HRESULT result) {
  return result == E_INVALIDARG || result == DISP_E_BADVARTYPE ? DISP_E_TYPEMISMATCH : result;
}

}  // namespace

const void* plain_argument(const VARIANT* source, const Parameter& parameter) {
  if (parameter.by_ref || parameter.is_interface() || parameter.type == VT_VARIANT) return nullptr;
  const VARIANT* const inner = source ? &innermost(*source) : nullptr;
  if (inner && inner->vt == parameter.type) return &inner->lVal;
  const bool omitted = !inner || is_missing(*inner);
  return omitted && parameter.default_value ? &parameter.default_value->lVal : nullptr;
}

Argument::~Argument() {
  if (owned_) VariantClear(&value_);
}

std::size_t Argument::words_of(const Parameter& parameter) {
  return parameter.by_ref ? 1 : CallWords::words_of(size_of(parameter.type));
}

void* Argument::payload() {
  return parameter_->type == VT_VARIANT ? static_cast<void*>(&value_) : &value_.lVal;
}

HRESULT Argument::bind(const VARIANT* source, const Parameter& parameter) {
  parameter_ = &parameter;
  const VARIANT* inner = source ? &innermost(*source) : nullptr;
  if (!inner || is_missing(*inner)) return bind_default();
  if (parameter.by_ref) return bind_by_reference(source);
  return bind_by_value(*inner);
}

void Argument::bind_result(const Parameter& parameter) {
  parameter_ = &parameter;
  owned_ = true;
  value_.vt = parameter.type == VT_VARIANT ? static_cast<VARTYPE>(VT_EMPTY) : parameter.type;
}

HRESULT Argument::bind_default() {
  if (!parameter_->optional) return DISP_E_PARAMNOTOPTIONAL;
  owned_ = true;
  if (parameter_->default_text) {
    value_.bstrVal = Bstr(*parameter_->default_text).detach();
    value_.vt = VT_BSTR;
  } else if (parameter_->default_value) {
    value_ = *parameter_->default_value;
  } else if (parameter_->type == VT_VARIANT) {
    value_.vt = VT_ERROR;
    value_.scode = DISP_E_PARAMNOTFOUND;
  } else {
    value_.vt = parameter_->type;
  }
  return S_OK;
}

HRESULT Argument::bind_by_reference(const VARIANT* origin) {
  const VARIANT* inner = &innermost(*origin);
  const bool is_variable = inner != origin || (inner->vt & VT_BYREF);
  if (parameter_->type == VT_VARIANT && inner != origin && !(inner->vt & VT_BYREF)) {
    direct_ = const_cast<VARIANT*>(inner);
    return S_OK;
  }
  if (inner->vt == (VT_BYREF | parameter_->type) && !parameter_->is_interface()) {
    direct_ = inner->byref;
    return S_OK;
  }
  const HRESULT result = convert(*inner);
  if (FAILED(result) || !is_variable) return result;
  origin_ = inner;
  return remember();
}

HRESULT Argument::bind_by_value(const VARIANT& value) {
  if (parameter_->type != VT_VARIANT || (value.vt & VT_BYREF)) return convert(value);
  value_ = value;  // borrowed for the call
  return S_OK;
}

HRESULT Argument::convert(const VARIANT& value) {
  owned_ = true;
  if (parameter_->is_interface()) return convert_object(value);
  if (parameter_->type == VT_VARIANT) return VariantCopyInd(&value_, const_cast<VARIANT*>(&value));
  return as_dispatch_error(VariantChangeType(&value_, const_cast<VARIANT*>(&value),
                                             VARIANT_ALPHABOOL, parameter_->type));
}

HRESULT Argument::convert_object(const VARIANT& value) {
  const auto type = static_cast<VARTYPE>(value.vt & ~VT_BYREF);
  IUnknown* object = nullptr;
  if (is_object(type)) {
    object = (value.vt & VT_BYREF) ? *value.ppunkVal : value.punkVal;
  } else if (type != VT_NULL) {  // some script languages have no other word for Nothing
    return DISP_E_TYPEMISMATCH;
  }
  value_.vt = parameter_->type;
  if (!object) return S_OK;
  void* wanted = nullptr;
  if (FAILED(object->QueryInterface(parameter_->iid, &wanted))) return DISP_E_TYPEMISMATCH;
  value_.punkVal = static_cast<IUnknown*>(wanted);
  return S_OK;
}

HRESULT Argument::remember() { return VariantCopy(&before_, &value_); }

bool Argument::changed() const {
  if (value_.vt != before_.vt) return true;
  if (value_.vt == VT_BSTR) return view_of(value_.bstrVal) != view_of(before_.bstrVal);
  return std::memcmp(&value_.lVal, &before_.lVal,
                     size_of(value_.vt) > 8 ? 8 : size_of(value_.vt)) != 0;
}

void Argument::push_to(CallWords& words) const {
  if (parameter_->by_ref) {
    words.push(direct_ ? direct_ : payload());
    return;
  }
  words.push_value(payload(), size_of(parameter_->type));
}

HRESULT Argument::write_back() {
  if (!origin_ || !changed()) return S_OK;
  if (origin_->vt & VT_BYREF) return as_dispatch_error(store_typed(*origin_, value_));
  auto* variable = const_cast<VARIANT*>(origin_);
  VariantClear(variable);
  *variable = value_;
  owned_ = false;
  return S_OK;
}

VARIANT Argument::take() {
  owned_ = false;
  return value_;
}

}  // namespace pv
