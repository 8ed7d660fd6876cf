// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/dialogs/driver/automation_client.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace pv::dialogs_test {
namespace {

VARIANT missing() {
  VARIANT value{};
  value.vt = VT_ERROR;
  value.scode = DISP_E_PARAMNOTFOUND;
  return value;
}

VARIANT optional_number(std::optional<short> number) {
  if (!number) return missing();
  VARIANT value{};
  value.vt = VT_I2;
  value.iVal = *number;
  return value;
}

VARIANT text_value(const std::wstring& text) {
  VARIANT value{};
  value.vt = VT_BSTR;
  value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  return value;
}

VARIANT long_value(long number) {
  VARIANT value{};
  value.vt = VT_I4;
  value.lVal = number;
  return value;
}

VARIANT object_value(IDispatch* object) {
  VARIANT value{};
  value.vt = VT_DISPATCH;
  value.pdispVal = object;
  return value;
}

// Takes over and frees the arguments.
VARIANT invoke(IDispatch* object, const wchar_t* member, WORD flags,
               std::vector<VARIANT> arguments = {}) {
  VARIANT result{};
  LPOLESTR name = const_cast<LPOLESTR>(member);
  DISPID id = DISPID_UNKNOWN;
  EXPECT_EQ(S_OK, object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id)) << member;
  std::reverse(arguments.begin(), arguments.end());
  DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  DISPID put = DISPID_PROPERTYPUT;
  if (flags == DISPATCH_PROPERTYPUT) {
    parameters.rgdispidNamedArgs = &put;
    parameters.cNamedArgs = 1;
  }
  EXPECT_EQ(S_OK, object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &result,
                                 nullptr, nullptr))
      << member;
  for (VARIANT& argument : arguments) VariantClear(&argument);
  return result;
}

}  // namespace

bool register_library() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring library(path);
  library.replace(library.find_last_of(L'\\') + 1, std::wstring::npos, L"pvItems32.dll");
  const HMODULE module = LoadLibraryW(library.c_str());
  if (!module) {
    std::printf("pvItems32.dll cannot be loaded: error %lu\n", GetLastError());
    return false;
  }
  using RegisterServer = HRESULT(WINAPI*)();
  const auto register_server = reinterpret_cast<RegisterServer>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllRegisterServer")));
  const HRESULT result = register_server ? register_server() : E_NOTIMPL;
  if (FAILED(result)) std::printf("pvItems32.dll does not register: %08lx\n", result);
  return SUCCEEDED(result);
}

STDMETHODIMP HostObject::QueryInterface(REFIID iid, void** object) {
  const bool known = iid == IID_IUnknown || iid == IID_IDispatch;
  *object = known ? static_cast<IDispatch*>(this) : nullptr;
  return known ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP HostObject::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

STDMETHODIMP HostObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) {
  const auto same = [&](const auto& member) { return lstrcmpiW(*names, member.name.c_str()) == 0; };
  auto found = std::find_if(members_.begin(), members_.end(), same);
  if (found == members_.end()) found = members_.insert(found, {*names, {}});
  *ids = static_cast<DISPID>(found - members_.begin()) + 1;
  return S_OK;
}

STDMETHODIMP HostObject::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result,
                                EXCEPINFO*, UINT*) {
  const auto arguments = static_cast<std::size_t>(given->cArgs);
  calls_.push_back({id, arguments ? test::Value(given->rgvarg[arguments - 1]) : test::Value()});
  const auto index = static_cast<std::size_t>(id) - 1;
  if (!result || index >= members_.size()) return S_OK;
  return VariantCopy(result, &members_[index].value);
}

void HostObject::answer(std::wstring member, test::Value value) {
  members_.push_back({std::move(member), std::move(value)});
}

Device::Device() {
  // What is written is recorded somewhere; not where the tests happen to run.
  wchar_t folder[MAX_PATH];
  GetTempPathW(MAX_PATH, folder);
  test::Object::create(L"pvItems32.CUtility").put(L"AppDirectory", 8, folder);
  server_.answer(L"Protocols", protocols_.get());
  server_.answer(L"Items", items_);
  server_.answer(L"Dimensions", dimensions_);
  server_.answer(L"Lists", lists_);
  server_.answer(L"TypeName", L"Fluxor");
  server_.answer(L"ReadTxm", true);
  server_.answer(L"WriteTxm", true);
  txm.set(L"Server", server_.get());
}

Device::~Device() { txm.try_set(L"Server", test::Value::nothing()); }

test::Object Device::add_item(short id, short access, const std::wstring& caption) const {
  const test::Object item = items_.call_object(L"Add", std::to_wstring(id), id, true, access, true,
                                               false, 0.5f, 4, test::Value::missing());
  item.get_object(L"Variables").call(L"Add", L"1", caption, L"", L"", 0, 17, 1, 2, 7, 0, 4);
  return item;
}

Utility::Utility() {
  CLSID clsid{};
  EXPECT_EQ(S_OK, CLSIDFromProgID(L"pvItems32.CUtility", &clsid));
  EXPECT_EQ(S_OK, CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                   reinterpret_cast<void**>(&object_)));
}

Utility::~Utility() {
  if (object_) object_->Release();
}

long Utility::message_box(const Box& box) const {
  if (!object_) return -1;
  HostObject owner;
  owner.answer(L"hWnd", static_cast<long>(reinterpret_cast<LONG_PTR>(box.owner)));
  VARIANT result =
      invoke(object_, L"pvMsgBox", DISPATCH_METHOD,
             {text_value(box.prompt), optional_number(box.buttons), optional_number(box.picture),
              box.title ? text_value(*box.title) : missing(),
              box.owner ? object_value(owner.get()) : missing()});
  const bool worked = SUCCEEDED(VariantChangeType(&result, &result, 0, VT_I4));
  return worked && result.vt == VT_I4 ? result.lVal : -1;
}

std::wstring Utility::text(long id) const {
  if (!object_) return {};
  VARIANT result = invoke(object_, L"pvString", DISPATCH_PROPERTYGET, {long_value(id)});
  std::wstring text;
  if (result.vt == VT_BSTR && result.bstrVal) text = result.bstrVal;
  VariantClear(&result);
  return text;
}

void Utility::set_language(long index) const {
  if (!object_) return;
  VARIANT languages = invoke(object_, L"Languages", DISPATCH_PROPERTYGET);
  ASSERT_EQ(VT_DISPATCH, languages.vt);
  invoke(languages.pdispVal, L"ActiveLanguageID", DISPATCH_PROPERTYPUT, {long_value(index)});
  VariantClear(&languages);
}

}  // namespace pv::dialogs_test
