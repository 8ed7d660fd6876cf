/* SPDX-FileCopyrightText: the pvItems32 authors */
/* SPDX-License-Identifier: MIT */

/* A host in plain C, of any standard since 1989. It makes objects, works with them, changes an
   argument by reference, listens to an event and enumerates a collection; each result is compared.
   Ends with DONE; anything wrong is told before and ends it with exit code 1. */

#define COBJMACROS
#include <pvItems32.h>
#include <stdio.h>
#include <string.h>

static int failures = 0;

static void expect(int holds, const char* what, int line) {
  if (holds) return;
  printf("client.c:%d: %s\n", line, what);
  ++failures;
}

#define EXPECT(condition) expect((condition), #condition, __LINE__)
#define EXPECT_OK(call) expect(SUCCEEDED(call), #call, __LINE__)

static VARIANT number_of(double value) {
  VARIANT result;
  VariantInit(&result);
  V_VT(&result) = VT_R8;
  V_R8(&result) = value;
  return result;
}

/* The caller frees it by VariantClear. */
static VARIANT text_of(const OLECHAR* text) {
  VARIANT result;
  VariantInit(&result);
  V_VT(&result) = VT_BSTR;
  V_BSTR(&result) = SysAllocString(text);
  return result;
}

static int is_text(const VARIANT* value, const OLECHAR* text) {
  return V_VT(value) == VT_BSTR && wcscmp(V_BSTR(value), text) == 0;
}

static void* create(REFCLSID clsid, REFIID iid) {
  void* object = NULL;
  EXPECT_OK(CoCreateInstance(clsid, NULL, CLSCTX_INPROC_SERVER, iid, &object));
  if (object != NULL) return object;
  exit(1);
}

/* ---- a listener to the events of CLanguages ---- */

typedef struct Listener {
  IDispatch dispatch; /* first: a pointer to it is one to the listener */
  ULONG references;
  LONG language; /* of the last event */
} Listener;

static HRESULT STDMETHODCALLTYPE query(IDispatch* self, REFIID iid, void** object) {
  if (!IsEqualIID(iid, &IID_IUnknown) && !IsEqualIID(iid, &IID_IDispatch) &&
      !IsEqualIID(iid, &DIID___CLanguages)) {
    *object = NULL;
    return E_NOINTERFACE;
  }
  IDispatch_AddRef(self);
  *object = self;
  return S_OK;
}

static ULONG STDMETHODCALLTYPE add_reference(IDispatch* self) {
  return ++((Listener*)self)->references;
}

static ULONG STDMETHODCALLTYPE release(IDispatch* self) { return --((Listener*)self)->references; }

static HRESULT STDMETHODCALLTYPE count_types(IDispatch* self, UINT* count) {
  (void)self;
  *count = 0;
  return S_OK;
}

static HRESULT STDMETHODCALLTYPE type_info(IDispatch* self, UINT index, LCID locale,
                                           ITypeInfo** info) {
  (void)self, (void)index, (void)locale, (void)info;
  return E_NOTIMPL;
}

static HRESULT STDMETHODCALLTYPE ids_of_names(IDispatch* self, REFIID iid, LPOLESTR* names,
                                              UINT count, LCID locale, DISPID* ids) {
  (void)self, (void)iid, (void)names, (void)count, (void)locale, (void)ids;
  return E_NOTIMPL;
}

static HRESULT STDMETHODCALLTYPE invoke(IDispatch* self, DISPID member, REFIID iid, LCID locale,
                                        WORD flags, DISPPARAMS* arguments, VARIANT* result,
                                        EXCEPINFO* exception, UINT* argument) {
  (void)iid, (void)locale, (void)flags, (void)result, (void)exception, (void)argument;
  EXPECT(member == 1 && arguments->cArgs == 1);
  EXPECT(V_VT(&arguments->rgvarg[0]) == VT_I4);
  ((Listener*)self)->language = V_I4(&arguments->rgvarg[0]);
  return S_OK;
}

static IDispatchVtbl listener_functions = {query,     add_reference, release, count_types,
                                           type_info, ids_of_names,  invoke};

/* ---- what is tried ---- */

static _CItem* add_item(_CItems* items, const OLECHAR* key_text, short id) {
  _CItem* item = NULL;
  BSTR key = SysAllocString(key_text);
  EXPECT_OK(_CItems_Add(items, key, id, VARIANT_FALSE, 0, VARIANT_FALSE, VARIANT_FALSE, 0.5f, 4,
                        NULL, &item));
  SysFreeString(key);
  return item;
}

static void give_variable(_CItem* item, const OLECHAR* caption_text) {
  _CVariables* variables = NULL;
  _CVariable* variable = NULL;
  BSTR caption = SysAllocString(caption_text);
  VARIANT list = text_of(L"");
  EXPECT_OK(_CItem_get_Variables(item, &variables));
  EXPECT_OK(_CVariables_Add(variables, NULL, caption, NULL, NULL, 0, 0, 0, 2, number_of(1), list,
                            edtFloat, &variable));
  _CVariable_Release(variable);
  _CVariables_Release(variables);
  VariantClear(&list);
  SysFreeString(caption);
}

static void use_item(_CItems* items) {
  VARIANT key = text_of(L"7"), value;
  _CItem *item = add_item(items, L"7", 7), *found = NULL;
  BSTR caption = NULL;
  VariantInit(&value);
  give_variable(item, L"Flow");

  EXPECT_OK(_CItem_put_Value(item, 1, number_of(3.5)));
  EXPECT_OK(_CItems_get_Item(items, key, &found));
  EXPECT(found == item);
  EXPECT_OK(_CItem_get_Value(found, 1, &value));
  EXPECT(V_VT(&value) == VT_R8 && V_R8(&value) == 3.5);
  EXPECT_OK(_CItem_get_Caption(found, 1, &caption));
  EXPECT(wcscmp(caption, L"Flow") == 0);

  SysFreeString(caption);
  VariantClear(&key);
  _CItem_Release(found);
  _CItem_Release(item);
}

static void enumerate(_CItems* items) {
  IUnknown* unknown = NULL;
  IEnumVARIANT* members = NULL;
  VARIANT member;
  short id, sum = 0;
  _CItem* second = add_item(items, L"30", 30);
  EXPECT_OK(_CItems_get_NewEnum(items, &unknown));
  EXPECT_OK(IUnknown_QueryInterface(unknown, &IID_IEnumVARIANT, (void**)&members));
  VariantInit(&member);
  while (IEnumVARIANT_Next(members, 1, &member, NULL) == S_OK) {
    EXPECT(V_VT(&member) == VT_DISPATCH);
    EXPECT_OK(_CItem_get_ItemID((_CItem*)V_DISPATCH(&member), &id));
    sum = (short)(sum + id);
    VariantClear(&member);
  }
  EXPECT(sum == 7 + 30);
  _CItem_Release(second);
  IEnumVARIANT_Release(members);
  IUnknown_Release(unknown);
}

static void change_argument(void) {
  _CComUtility* utility = create(&CLSID_CComUtility, &IID__CComUtility);
  VARIANT data = text_of(L"ABCDEF"), chunk;
  VariantInit(&chunk);
  EXPECT_OK(_CComUtility_GetChunk(utility, &data, 2, &chunk));
  EXPECT(is_text(&chunk, L"AB"));
  EXPECT(is_text(&data, L"CDEF"));
  VariantClear(&chunk);
  VariantClear(&data);
  _CComUtility_Release(utility);
}

static void hear_events(void) {
  _CUtility* utility = create(&CLSID_CUtility, &IID__CUtility);
  _CLanguages* languages = NULL;
  IConnectionPointContainer* container = NULL;
  IConnectionPoint* point = NULL;
  Listener listener;
  DWORD cookie = 0;
  BSTR text = NULL;
  listener.dispatch.lpVtbl = &listener_functions;
  listener.references = 0;
  listener.language = 0;

  EXPECT_OK(_CUtility_get_Languages(utility, &languages));
  EXPECT_OK(
      _CLanguages_QueryInterface(languages, &IID_IConnectionPointContainer, (void**)&container));
  EXPECT_OK(IConnectionPointContainer_FindConnectionPoint(container, &DIID___CLanguages, &point));
  EXPECT_OK(IConnectionPoint_Advise(point, (IUnknown*)&listener.dispatch, &cookie));
  EXPECT_OK(_CLanguages_put_ActiveLanguageID(languages, 3));
  EXPECT(listener.language == 3);
  EXPECT_OK(_CUtility_get_pvString(utility, 201, &text));
  EXPECT(wcscmp(text, L"Abbrechen") == 0);
  EXPECT_OK(IConnectionPoint_Unadvise(point, cookie));
  EXPECT(listener.references == 0);

  SysFreeString(text);
  IConnectionPoint_Release(point);
  IConnectionPointContainer_Release(container);
  _CLanguages_Release(languages);
  _CUtility_Release(utility);
}

/* Not another one that is registered: the library beside the program serves it. */
static void look_for_library(void) {
  WCHAR program[MAX_PATH], library[MAX_PATH];
  size_t folder;
  EXPECT(GetModuleFileNameW(NULL, program, MAX_PATH) != 0);
  EXPECT(GetModuleFileNameW(GetModuleHandleW(L"pvItems32.dll"), library, MAX_PATH) != 0);
  folder = (size_t)(wcsrchr(program, L'\\') - program);
  EXPECT(_wcsnicmp(program, library, folder) == 0);
  EXPECT(_wcsicmp(library + folder, L"\\pvItems32.dll") == 0);
}

int main(void) {
  _CItems* items;
  if (FAILED(CoInitialize(NULL))) return 1;
  items = create(&CLSID_CItems, &IID__CItems);
  use_item(items);
  enumerate(items);
  _CItems_Release(items);
  change_argument();
  hear_events();
  look_for_library();
  CoUninitialize();
  if (failures != 0) return 1;
  printf("%d bits: DONE\n", (int)sizeof(void*) * 8);
  return 0;
}
