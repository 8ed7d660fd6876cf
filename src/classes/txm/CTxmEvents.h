// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/event_source.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS_WITH_EVENTS(CTxmEvents)

/// The event hub. Arguments that are passed by reference come back as the listeners left them.
class CTxmEvents final : public EventSource<AutomationObject<CTxmEvents>> {
 public:
  STDMETHODIMP RaiseTransmitterRemoved(short index, VARIANT* result) noexcept override;
  STDMETHODIMP RaiseTransmitterAdded(_CTxm** txm, VARIANT* result) noexcept override;
  STDMETHODIMP RaiseOnServerLoading(BSTR* name, VARIANT* result) noexcept override;
  STDMETHODIMP RaiseOnServerLoaded(BSTR* name, VARIANT* result) noexcept override;
  STDMETHODIMP RaiseActiveTxmChanged(_CTxm** txm, VARIANT* result) noexcept override;
  STDMETHODIMP RaiseAutoConnect(BSTR com_settings, VARIANT* result) noexcept override;
  STDMETHODIMP RaiseFinished(VARIANT* result) noexcept override;
  STDMETHODIMP RaiseSending(VARIANT* result) noexcept override;
  STDMETHODIMP RaiseReceiving(VARIANT* result) noexcept override;
  STDMETHODIMP RaiseTimeOut(VARIANT* result) noexcept override;
  STDMETHODIMP RaiseHistoryChanged(_CComHistory** history, VARIANT* result) noexcept override;
  STDMETHODIMP RaiseTxmConnected(_CTxm** txm, VARIANT* result) noexcept override;
  STDMETHODIMP TxmNotConnected(_CTxm** txm, VARIANT* result) noexcept override;
  STDMETHODIMP RaiseSmartWaiting(float* time_left, VARIANT* result) noexcept override;
  STDMETHODIMP RaiseAnswerError(short* code, BSTR* text, VARIANT* result) noexcept override;
  STDMETHODIMP RaiseOnTimeInterrupt(VARIANT* result) noexcept override;
  STDMETHODIMP RaiseOnWindowList(BSTR* new_id, WindowListTypes mode, BSTR* old_id,
                                 VARIANT* result) noexcept override;

 private:
  template <class... A>
  HRESULT raise(VARIANT* result, DISPID event, const char* member, A... arguments) noexcept;
  HRESULT raise_text(VARIANT* result, DISPID event, BSTR* text,
                     const char* member = __builtin_FUNCTION()) noexcept;
  template <class I>
  HRESULT raise_object(VARIANT* result, DISPID event, I** object,
                       const char* member = __builtin_FUNCTION()) noexcept;
};

}  // namespace pv
