#include "tests/hostile/stranger.h"

#include "com/ref.h"

namespace pv::test {

STDMETHODIMP Stranger::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  const bool known = iid == IID_IUnknown || iid == IID_IDispatch || (events_ && iid == *events_);
  *object = known ? static_cast<IDispatch*>(this) : nullptr;
  if (known) AddRef();
  return known ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) Stranger::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP Stranger::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

STDMETHODIMP Stranger::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  *info = nullptr;
  return E_NOTIMPL;
}

STDMETHODIMP Stranger::GetIDsOfNames(REFIID, LPOLESTR*, UINT count, LCID, DISPID* ids) {
  for (UINT i = 0; i < count; ++i) ids[i] = static_cast<DISPID>(i + 1);
  return S_OK;
}

STDMETHODIMP Stranger::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result,
                              EXCEPINFO* exception, UINT*) {
  const Ref<IDispatch> alive(this);
  VARIANT unwanted;
  VARIANT& answer = result ? *result : unwanted;
  VariantInit(&answer);
  const HRESULT done = mischief_(*given, answer);
  if (!result) VariantClear(&unwanted);
  if (done != DISP_E_EXCEPTION || !exception) return done;
  *exception = {};
  exception->scode = E_FAIL;
  exception->bstrSource = SysAllocString(L"Stranger");
  exception->bstrDescription = SysAllocString(L"failed");
  return done;
}

}  // namespace pv::test
