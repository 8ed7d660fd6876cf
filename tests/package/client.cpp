// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// A host in plain C++, of any standard since 1998. It makes objects, works with them, changes an
// argument by reference, listens to an event and enumerates a collection; each result is compared.
// Ends with DONE; anything wrong is told before and ends it with exit code 1.

#include <pvItems32.h>

#include <cstdio>
#include <cwchar>
#include <exception>

namespace {

int failures = 0;

void expect(bool holds, const char* what, int line) {
  if (holds) return;
  std::printf("client.cpp:%d: %s\n", line, what);
  ++failures;
}

#define EXPECT(condition) expect((condition), #condition, __LINE__)

// A call whose failure leaves nothing to go on with.
#define CALL(call) called((call), #call, __LINE__)

void called(HRESULT result, const char* what, int line) {
  expect(SUCCEEDED(result), what, line);
  if (FAILED(result)) throw std::exception();
}

// Owns one reference to an object.
template <class Interface>
class Owned {
 public:
  Owned() : object_(NULL) {}
  ~Owned() {
    if (object_) object_->Release();
  }
  Interface** out() { return &object_; }
  void** untyped_out() { return reinterpret_cast<void**>(&object_); }
  Interface* get() const { return object_; }
  Interface* operator->() const { return object_; }

 private:
  Owned(const Owned&);
  Owned& operator=(const Owned&);

  Interface* object_;
};

template <class Interface>
void create(Owned<Interface>& object, REFCLSID clsid, REFIID iid) {
  CALL(CoCreateInstance(clsid, NULL, CLSCTX_INPROC_SERVER, iid, object.untyped_out()));
}

class Text {
 public:
  explicit Text(const OLECHAR* text = NULL) : text_(SysAllocString(text)) {}
  ~Text() { SysFreeString(text_); }
  BSTR get() const { return text_; }
  BSTR* out() { return &text_; }
  bool operator==(const OLECHAR* other) const { return text_ && std::wcscmp(text_, other) == 0; }

 private:
  Text(const Text&);
  Text& operator=(const Text&);

  BSTR text_;
};

class Variant : public VARIANT {
 public:
  Variant() { VariantInit(this); }
  explicit Variant(double value) {
    V_VT(this) = VT_R8;
    V_R8(this) = value;
  }
  explicit Variant(const OLECHAR* text) {
    V_VT(this) = VT_BSTR;
    V_BSTR(this) = SysAllocString(text);
  }
  ~Variant() { VariantClear(this); }
  bool operator==(const OLECHAR* text) const {
    return V_VT(this) == VT_BSTR && std::wcscmp(V_BSTR(this), text) == 0;
  }

 private:
  Variant(const Variant&);
  Variant& operator=(const Variant&);
};

// Listens to the events of CLanguages. Lives on the stack, longer than its connection.
class Listener : public IDispatch {
 public:
  Listener() : references_(0), language_(0) {}
  virtual ~Listener() {}
  ULONG references() const { return references_; }
  LONG language() const { return language_; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) {
    const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
                       IsEqualIID(iid, DIID___CLanguages);
    *object = known ? static_cast<IDispatch*>(this) : NULL;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() { return ++references_; }
  STDMETHODIMP_(ULONG) Release() { return --references_; }
  STDMETHODIMP GetTypeInfoCount(UINT*) { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*,
                      EXCEPINFO*, UINT*) {
    EXPECT(member == 1 && arguments->cArgs == 1);
    EXPECT(V_VT(&arguments->rgvarg[0]) == VT_I4);
    language_ = V_I4(&arguments->rgvarg[0]);
    return S_OK;
  }

 private:
  ULONG references_;
  LONG language_;
};

void add_item(const Owned<_CItems>& items, Owned<_CItem>& item, const OLECHAR* key, short id) {
  CALL(items->Add(Text(key).get(), id, VARIANT_FALSE, 0, VARIANT_FALSE, VARIANT_FALSE, 0.5f, 4,
                  NULL, item.out()));
}

void give_variable(const Owned<_CItem>& item, const OLECHAR* caption) {
  Owned<_CVariables> variables;
  Owned<_CVariable> variable;
  CALL(item->get_Variables(variables.out()));
  CALL(variables->Add(NULL, Text(caption).get(), NULL, NULL, 0, 0, 0, 2, Variant(1.0), Variant(L""),
                      edtFloat, variable.out()));
}

void use_item(const Owned<_CItems>& items) {
  Owned<_CItem> item, found;
  Variant value;
  Text caption;
  add_item(items, item, L"7", 7);
  give_variable(item, L"Flow");

  CALL(item->put_Value(1, Variant(3.5)));
  CALL(items->get_Item(Variant(L"7"), found.out()));
  EXPECT(found.get() == item.get());
  CALL(found->get_Value(1, &value));
  EXPECT(V_VT(&value) == VT_R8 && V_R8(&value) == 3.5);
  CALL(found->get_Caption(1, caption.out()));
  EXPECT(caption == L"Flow");
}

void enumerate(const Owned<_CItems>& items) {
  Owned<_CItem> second;
  Owned<IUnknown> unknown;
  Owned<IEnumVARIANT> members;
  int sum = 0;
  add_item(items, second, L"30", 30);
  CALL(items->get_NewEnum(unknown.out()));
  CALL(unknown->QueryInterface(IID_IEnumVARIANT, members.untyped_out()));
  for (;;) {
    Variant member;
    if (members->Next(1, &member, NULL) != S_OK) break;
    Owned<_CItem> item;
    short id = 0;
    CALL(V_DISPATCH(&member)->QueryInterface(IID__CItem, item.untyped_out()));
    CALL(item->get_ItemID(&id));
    sum += id;
  }
  EXPECT(sum == 7 + 30);
}

void change_argument() {
  Owned<_CComUtility> utility;
  Variant data(L"ABCDEF"), chunk;
  create(utility, CLSID_CComUtility, IID__CComUtility);
  CALL(utility->GetChunk(&data, 2, &chunk));
  EXPECT(chunk == L"AB");
  EXPECT(data == L"CDEF");
}

void hear_events() {
  Owned<_CUtility> utility;
  Owned<_CLanguages> languages;
  Owned<IConnectionPointContainer> container;
  Owned<IConnectionPoint> point;
  Listener listener;
  DWORD cookie = 0;
  Text text;
  create(utility, CLSID_CUtility, IID__CUtility);
  CALL(utility->get_Languages(languages.out()));
  CALL(languages->QueryInterface(IID_IConnectionPointContainer, container.untyped_out()));
  CALL(container->FindConnectionPoint(DIID___CLanguages, point.out()));
  CALL(point->Advise(&listener, &cookie));
  EXPECT(SUCCEEDED(languages->put_ActiveLanguageID(static_cast<pvLanguageTypes>(3))));
  EXPECT(listener.language() == 3);
  EXPECT(SUCCEEDED(utility->get_pvString(static_cast<pvStringTypes>(201), text.out())));
  EXPECT(text == L"Abbrechen");
  CALL(point->Unadvise(cookie));
  EXPECT(listener.references() == 0);
}

// Not another one that is registered: the library beside the program serves it.
void look_for_library() {
  WCHAR program[MAX_PATH], library[MAX_PATH];
  EXPECT(GetModuleFileNameW(NULL, program, MAX_PATH) != 0);
  EXPECT(GetModuleFileNameW(GetModuleHandleW(L"pvItems32.dll"), library, MAX_PATH) != 0);
  const std::size_t folder = static_cast<std::size_t>(std::wcsrchr(program, L'\\') - program);
  EXPECT(_wcsnicmp(program, library, folder) == 0);
  EXPECT(_wcsicmp(library + folder, L"\\pvItems32.dll") == 0);
}

void run() {
  Owned<_CItems> items;
  create(items, CLSID_CItems, IID__CItems);
  use_item(items);
  enumerate(items);
  change_argument();
  hear_events();
  look_for_library();
}

}  // namespace

int main() {
  if (FAILED(CoInitialize(NULL))) return 1;
  try {
    run();
  } catch (const std::exception&) {
    // told already
  }
  CoUninitialize();
  if (failures != 0) return 1;
  std::printf("%d bits: DONE\n", static_cast<int>(sizeof(void*)) * 8);
  return 0;
}
