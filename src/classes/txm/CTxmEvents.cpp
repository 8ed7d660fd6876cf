// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/txm/CTxmEvents.h"

#include "host/object_argument.h"

namespace pv {

template ClassEntry class_entry<CTxmEvents>();

namespace {

// The published dispatch numbers.
enum Event : DISPID {
  kFinished = 1,
  kSending,
  kReceiving,
  kTimeOut,
  kSmartWaiting,
  kAutoConnet,
  kTxmConnected,
  kTxmNotConnected,
  kHistoryChanged,
  kActiveTxmChanged,
  kTransmitterAdded,
  kTransmitterRemoved,
  kOnServerLoading,
  kOnServerLoaded,
  kOnAnswerError,
  kOnTimeInterrupt,
  kOnWindowList,
};

}  // namespace

template <class... A>
HRESULT CTxmEvents::raise(VARIANT* result, DISPID event, const char* member,
                          A... arguments) noexcept {
  return plain_method_with_result(
      result,
      [&] {
        fire_plain(event, arguments...);
        return Variant();
      },
      member);
}

HRESULT CTxmEvents::raise_text(VARIANT* result, DISPID event, BSTR* text,
                               const char* member) noexcept {
  return plain_method_with_result(
      result,
      [&] {
        fire_plain(event, ref(*required(text)));
        return Variant();
      },
      member);
}

// Listeners see the object as automation object; one that they put in its place must be of the
// same class.
template <class I>
HRESULT CTxmEvents::raise_object(VARIANT* result, DISPID event, I** object,
                                 const char* member) noexcept {
  return plain_method_with_result(
      result,
      [&] {
        ObjectArgument argument(required(object));
        fire_plain(event, argument.reference());
        argument.hand_back();
        return Variant();
      },
      member);
}

STDMETHODIMP CTxmEvents::RaiseTransmitterRemoved(short index, VARIANT* result) noexcept {
  return raise(result, kTransmitterRemoved, __builtin_FUNCTION(), ref(index));
}
STDMETHODIMP CTxmEvents::RaiseTransmitterAdded(_CTxm** txm, VARIANT* result) noexcept {
  return raise_object(result, kTransmitterAdded, txm);
}
STDMETHODIMP CTxmEvents::RaiseOnServerLoading(BSTR* name, VARIANT* result) noexcept {
  return raise_text(result, kOnServerLoading, name);
}
STDMETHODIMP CTxmEvents::RaiseOnServerLoaded(BSTR* name, VARIANT* result) noexcept {
  return raise_text(result, kOnServerLoaded, name);
}
STDMETHODIMP CTxmEvents::RaiseActiveTxmChanged(_CTxm** txm, VARIANT* result) noexcept {
  return raise_object(result, kActiveTxmChanged, txm);
}
STDMETHODIMP CTxmEvents::RaiseAutoConnect(BSTR com_settings, VARIANT* result) noexcept {
  return plain_method_with_result(result, [&] {
    // The caller's text is passed by value: listeners change a copy.
    BSTR copy = Bstr(view_of(com_settings)).detach();
    fire_plain(kAutoConnet, ref(copy));
    SysFreeString(copy);
    return Variant();
  });
}
STDMETHODIMP CTxmEvents::RaiseFinished(VARIANT* result) noexcept {
  return raise(result, kFinished, __builtin_FUNCTION());
}
STDMETHODIMP CTxmEvents::RaiseSending(VARIANT* result) noexcept {
  return raise(result, kSending, __builtin_FUNCTION());
}
STDMETHODIMP CTxmEvents::RaiseReceiving(VARIANT* result) noexcept {
  return raise(result, kReceiving, __builtin_FUNCTION());
}
STDMETHODIMP CTxmEvents::RaiseTimeOut(VARIANT* result) noexcept {
  return raise(result, kTimeOut, __builtin_FUNCTION());
}
STDMETHODIMP CTxmEvents::RaiseHistoryChanged(_CComHistory** history, VARIANT* result) noexcept {
  return raise_object(result, kHistoryChanged, history);
}
STDMETHODIMP CTxmEvents::RaiseTxmConnected(_CTxm** txm, VARIANT* result) noexcept {
  return raise_object(result, kTxmConnected, txm);
}
STDMETHODIMP CTxmEvents::TxmNotConnected(_CTxm** txm, VARIANT* result) noexcept {
  return raise_object(result, kTxmNotConnected, txm);
}
STDMETHODIMP CTxmEvents::RaiseSmartWaiting(float* time_left, VARIANT* result) noexcept {
  return plain_method_with_result(result, [&] {
    fire_plain(kSmartWaiting, ref(*required(time_left)));
    return Variant();
  });
}
STDMETHODIMP CTxmEvents::RaiseAnswerError(short* code, BSTR* text, VARIANT* result) noexcept {
  return plain_method_with_result(result, [&] {
    fire_plain(kOnAnswerError, ref(*required(code)), ref(*required(text)));
    return Variant();
  });
}
STDMETHODIMP CTxmEvents::RaiseOnTimeInterrupt(VARIANT* result) noexcept {
  return raise(result, kOnTimeInterrupt, __builtin_FUNCTION());
}
STDMETHODIMP CTxmEvents::RaiseOnWindowList(BSTR* new_id, WindowListTypes mode, BSTR* old_id,
                                           VARIANT* result) noexcept {
  return plain_method_with_result(result, [&] {
    fire_plain(kOnWindowList, ref(*required(new_id)), value(static_cast<long>(mode)),
               ref(*required(old_id)));
    return Variant();
  });
}

}  // namespace pv
