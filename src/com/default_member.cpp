// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/default_member.h"

#include <utility>

#include "com/failure.h"
#include "com/floating_point.h"

namespace pv {
namespace {

constexpr int kMostLevels = 16;  // objects may stand for each other in a circle

IDispatch* object_in(const VARIANT& value) {
  const VARIANT& inner = innermost(value);
  if (inner.vt == VT_DISPATCH) return inner.pdispVal;
  return inner.vt == (VT_BYREF | VT_DISPATCH) ? *inner.ppdispVal : nullptr;
}

HRESULT ask(IDispatch* object, VARIANT& member) {
  const Ref<IDispatch> alive(object);
  DISPPARAMS none{};
  const HostFloatingPoint in_host;
  return object->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                        &member, nullptr, nullptr);
}

HRESULT convert(VARIANT& target, const VARIANT& value, VARTYPE type) {
  return VariantChangeType(&target, const_cast<VARIANT*>(&value), VARIANT_ALPHABOOL, type);
}

}  // namespace

bool means_default_member(const VARIANT& value, VARTYPE type) {
  return type != VT_DISPATCH && type != VT_UNKNOWN && object_in(value);
}

HRESULT get_default_member(const VARIANT& value, VARIANT& member) {
  const FloatingPointScope masked;
  Variant current(value);
  for (int level = 0; IDispatch* const object = object_in(current); ++level) {
    Variant next;
    const HRESULT got = level < kMostLevels ? ask(object, next) : DISP_E_TYPEMISMATCH;
    if (FAILED(got)) return is_out_of_memory(got) ? got : DISP_E_TYPEMISMATCH;
    current = std::move(next);
  }
  member = current.detach();
  return S_OK;
}

HRESULT change_type(VARIANT& target, const VARIANT& value, VARTYPE type) {
  const FloatingPointScope masked;
  if (!means_default_member(value, type)) return convert(target, value, type);
  Variant member;
  const HRESULT got = get_default_member(value, member);
  return FAILED(got) ? got : convert(target, member, type);
}

}  // namespace pv
