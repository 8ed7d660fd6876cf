// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/hostile/stranger.h"

#include "com/ref.h"

namespace pv::test {

STDMETHODIMP Stranger::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result,
                              EXCEPINFO* exception, UINT*) {
  const Ref<IDispatch> alive(this);
  VARIANT unwanted;
  VARIANT& answer = result ? *result : unwanted;
  VariantInit(&answer);
  const HRESULT done = mischief_(*given, answer);
  if (!result) VariantClear(&unwanted);
  return done == DISP_E_EXCEPTION ? raise({E_FAIL, L"Stranger", L"failed"}, exception) : done;
}

}  // namespace pv::test
