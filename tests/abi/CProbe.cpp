// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/abi/CProbe.h"

#include <utility>

#include "com/enumerator.h"
#include "host/late_bound.h"
#include "platform/letter_case.h"

namespace pv {

const Library& library() {
  static const ClassEntry classes[] = {class_entry<test::CProbe>()};
  static const Library description{L"pvItems32", classes, key_case()};
  return description;
}

}  // namespace pv

namespace pv::test {
namespace {

void replace(BSTR& text, const std::wstring& replacement) {
  SysFreeString(std::exchange(text, Bstr(replacement).detach()));
}

}  // namespace

STDMETHODIMP CProbe::get_Item(VARIANT index, VARIANT* result) noexcept {
  return method_with_result(result, [&] {
    if (index.vt == VT_I2 && index.iVal == 9) throw automation_error(ErrorCode::kSubscript, L"9");
    return Variant(L"item " + to_text(index));
  });
}

STDMETHODIMP CProbe::get_NewEnum(IUnknown** result) noexcept {
  return method_with_result(result, [&] {
    const Ref<IDispatch> self(static_cast<_Probe*>(this));
    return make_enumerator({self, self, self});
  });
}

STDMETHODIMP CProbe::ChangeText(BSTR* text, BSTR addition, long* result) noexcept {
  return method_with_result(result, [&] {
    const std::wstring changed = std::wstring(view_of(*text)) + std::wstring(view_of(addition));
    if (SysStringLen(addition) > 0) replace(*text, changed);
    return static_cast<long>(changed.size());
  });
}

STDMETHODIMP CProbe::ChangeShort(short* number, short addition, long* result) noexcept {
  return method_with_result(result, [&] {
    *number = static_cast<short>(*number + addition);
    return static_cast<long>(*number);
  });
}

STDMETHODIMP CProbe::ChangeLong(long* number, long addition) noexcept {
  return method([&] { *number += addition; });
}

STDMETHODIMP CProbe::ChangeDouble(double* number, double addition) noexcept {
  return method([&] { *number += addition; });
}

STDMETHODIMP CProbe::ChangeBoolean(VARIANT_BOOL* flag) noexcept {
  return method([&] { *flag = *flag ? VARIANT_FALSE : VARIANT_TRUE; });
}

STDMETHODIMP CProbe::ChangeObject(_Probe** object, _Probe* replacement) noexcept {
  return method([&] {
    Ref<_Probe> old = Ref<_Probe>::attach(*object);
    *object = Ref<_Probe>(replacement).detach();
  });
}

STDMETHODIMP CProbe::ChangeVariant(VARIANT* value, VARIANT replacement) noexcept {
  return method([&] { check(VariantCopyInd(value, &replacement)); });
}

STDMETHODIMP CProbe::ChangeOptional(VARIANT* value, BSTR* result) noexcept {
  return method_with_result(result, [&] {
    const bool omitted = is_missing(*value);
    Variant changed(std::wstring_view(L"filled in"));
    VariantClear(value);
    *value = changed.detach();
    return std::wstring(omitted ? L"omitted" : L"given");
  });
}

STDMETHODIMP CProbe::ChangeTwo(BSTR* first, long* second) noexcept {
  return method([&] {
    replace(*first, std::wstring(view_of(*first)) + L"!");
    ++*second;
  });
}

STDMETHODIMP CProbe::Describe(BSTR text, short number, BSTR other, VARIANT_BOOL flag, Shade colour,
                              _Probe* object, VARIANT value, BSTR* result) noexcept {
  return method_with_result(result, [&] {
    std::wstring all(view_of(text));
    all += L"," + std::to_wstring(number) + L"," + std::wstring(view_of(other));
    all += L"," + std::to_wstring(flag) + L"," + std::to_wstring(colour);
    all += object ? L",object" : L",nothing";
    all += is_missing(value) ? L",missing" : L"," + to_text(value);
    return all;
  });
}

STDMETHODIMP CProbe::Mix(double wide, VARIANT any, unsigned char narrow, hyper huge, float single,
                         DATE day, BSTR* result) noexcept {
  return method_with_result(result, [&] {
    return std::to_wstring(wide) + L"," + to_text(any) + L"," + std::to_wstring(narrow) + L"," +
           std::to_wstring(huge) + L"," + std::to_wstring(single) + L"," + std::to_wstring(day);
  });
}

STDMETHODIMP CProbe::TakeTexts(BSTR, BSTR, long) noexcept {
  return method([] {});
}

STDMETHODIMP CProbe::TakePicture(IPictureDisp* picture, IPictureDisp** result) noexcept {
  return method_with_result(result, [&] { return Ref<IPictureDisp>(picture); });
}

STDMETHODIMP CProbe::TakeObject(IDispatch* object, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return object != nullptr; });
}

STDMETHODIMP CProbe::KindOf(VARIANT value, long* result) noexcept {
  const VARTYPE kind = std::exchange(value.vt, VT_EMPTY);  // as a variable of its own
  return method_with_result(result, [&] { return static_cast<long>(kind); });
}

STDMETHODIMP CProbe::get_Slot(VARIANT* result) noexcept {
  return method_with_result(result, [&] { return slot_; });
}

STDMETHODIMP CProbe::put_Slot(VARIANT value) noexcept {
  return method([&] {
    slot_ = dereferenced(value);
    last_put_ = L"put";
  });
}

STDMETHODIMP CProbe::putref_Slot(VARIANT value) noexcept {
  return method([&] {
    slot_ = dereferenced(value);
    last_put_ = L"putref";
  });
}

STDMETHODIMP CProbe::put_Valued(IDispatch*) noexcept {
  return method([&] { last_put_ = L"put"; });
}

STDMETHODIMP CProbe::putref_Referred(IDispatch*) noexcept {
  return method([&] { last_put_ = L"putref"; });
}

STDMETHODIMP CProbe::get_Indexed(short index, BSTR* result) noexcept {
  return method_with_result(result, [&] { return indexed_[index]; });
}

STDMETHODIMP CProbe::put_Indexed(short index, BSTR value) noexcept {
  return method([&] { indexed_[index] = view_of(value); });
}

STDMETHODIMP CProbe::get_Child(_Probe** result) noexcept {
  return method_with_result(result, [&] { return make<CProbe>(); });
}

STDMETHODIMP CProbe::get_Nobody(_Probe** result) noexcept {
  return method_with_result(result, [&] { return Ref<_Probe>(); });
}

STDMETHODIMP CProbe::get_LastPut(BSTR* result) noexcept {
  return method_with_result(result, [&] { return last_put_; });
}

STDMETHODIMP CProbe::Fail(long number, BSTR detail, BSTR* result) noexcept {
  return method_with_result(result, [&]() -> std::wstring {
    throw automation_error(static_cast<ErrorCode>(number), std::wstring(view_of(detail)));
  });
}

STDMETHODIMP CProbe::FailForeign(long code, VARIANT_BOOL explained) noexcept {
  return method([&] {
    const auto info = explained
                          ? make_error_info(L"Elsewhere", L"a foreign text", L"elsewhere.chm", 77)
                          : nullptr;
    throw com_failure(code, info);
  });
}

STDMETHODIMP CProbe::FireChanging(BSTR* text) noexcept {
  return method([&] { fire(1, value(42L), ref(*text)); });
}

STDMETHODIMP CProbe::FailSilently() noexcept {
  method([] {});
  return E_ACCESSDENIED;
}

}  // namespace pv::test
