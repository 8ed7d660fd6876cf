#include "tests/dialogs/automation_client.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace pv::dialogs_test {
namespace {

// A form as hosts pass it: an object that answers with its window handle.
class OwnerForm final : public IDispatch {
 public:
  explicit OwnerForm(HWND window) : window_(window) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (iid != IID_IUnknown && iid != IID_IDispatch) {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    *object = static_cast<IDispatch*>(this);
    return S_OK;
  }
  // Lives on the stack of the caller.
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    *ids = 1;
    return lstrcmpiW(*names, L"hWnd") == 0 ? S_OK : DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    result->vt = VT_I4;
    result->lVal = static_cast<LONG>(reinterpret_cast<LONG_PTR>(window_));
    return S_OK;
  }

 private:
  HWND window_;
};

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
  OwnerForm owner(box.owner);
  VARIANT result =
      invoke(object_, L"pvMsgBox", DISPATCH_METHOD,
             {text_value(box.prompt), optional_number(box.buttons), optional_number(box.picture),
              box.title ? text_value(*box.title) : missing(),
              box.owner ? object_value(&owner) : missing()});
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
