// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/bench/subject.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "tests/support/module.h"

namespace pv::bench {

Ref<IDispatch> create(REFCLSID clsid) {
  static const test::Module module;
  const auto factory = module.class_factory(clsid);
  if (!factory) throw std::runtime_error("the library does not know a class");
  Ref<IDispatch> object;
  check(factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(object.put())));
  return object;
}

Ref<_CItems> make_items(int count, int variables) {
  const auto items = create<CItems, _CItems>();
  const Bstr description(L"Momentary volume flow through the sensor"), symbol(L"");
  for (int i = 1; i <= count; ++i) {
    const auto set = create<CVariables, _CVariables>();
    for (int k = 1; k <= variables; ++k) {
      const Bstr key(std::to_wstring(k)), caption(L"Variable " + std::to_wstring(k));
      Ref<_CVariable> variable;
      check(set->Add(key, caption, description, symbol, 0, 11, 2, 3, Variant(1.5), Variant(0L), 4,
                     variable.put()));
    }
    const Bstr key(std::to_wstring(i));
    Ref<_CItem> item;
    check(items->Add(key, static_cast<short>(i), VARIANT_FALSE, 1, VARIANT_TRUE, VARIANT_FALSE,
                     0.5f, 8, set.get(), item.put()));
  }
  return items;
}

Ref<_CDimensions> make_dimensions(int count, int units) {
  const auto dimensions = create<CDimensions, _CDimensions>();
  for (int i = 1; i <= count; ++i) {
    const auto set = create<CUnits, _CUnits>();
    for (int k = 1; k <= units; ++k) {
      const Bstr caption(L"unit " + std::to_wstring(k));
      Ref<_CUnit> unit;
      check(set->Add(caption, caption, 1.0 + k * 0.125, 0.0, unit.put()));
    }
    const Bstr caption(L"Dimension " + std::to_wstring(i));
    Ref<_CDimension> dimension;
    check(dimensions->Add(caption, caption, set.get(), dimension.put()));
  }
  return dimensions;
}

std::wstring scratch_file(std::wstring_view name) {
  wchar_t folder[MAX_PATH];
  const bool given = GetEnvironmentVariableW(L"PV_BENCH_FOLDER", folder, ARRAYSIZE(folder)) > 0;
  return (given ? std::wstring(folder) + L"\\" : test::scratch_folder()) + std::wstring(name);
}

std::string read_bytes(const std::wstring& file) {
  std::ifstream stream(std::filesystem::path(file), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

Variant late_bound(IDispatch* object, const wchar_t* member, WORD flags,
                   std::initializer_list<VARIANT> reversed_arguments) {
  auto* name = const_cast<LPOLESTR>(member);
  DISPID id = DISPID_UNKNOWN;
  check(object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));
  DISPPARAMS parameters{const_cast<VARIANT*>(reversed_arguments.begin()), nullptr,
                        static_cast<UINT>(reversed_arguments.size()), 0};
  Variant result;
  check(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &result, nullptr,
                       nullptr));
  return result;
}

Ref<ITypeInfo> type_info_of(IDispatch* object) {
  Ref<ITypeInfo> info;
  check(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put()));
  return info;
}

VARIANT borrowed(BSTR text) {
  VARIANT value;
  value.vt = VT_BSTR;
  value.bstrVal = text;
  return value;
}

VARIANT borrowed(IDispatch** object) {
  VARIANT value;
  value.vt = VT_BYREF | VT_DISPATCH;
  value.ppdispVal = object;
  return value;
}

VARIANT number(short number) {
  VARIANT value;
  value.vt = VT_I2;
  value.iVal = number;
  return value;
}

}  // namespace pv::bench
