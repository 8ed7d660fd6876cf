#include "txm/CTxmEvents.h"

#include "com/object_argument.h"

namespace pv {
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
HRESULT CTxmEvents::raise(VARIANT* result, DISPID event, const Location& where,
                          A... arguments) noexcept {
  return returning(
      result,
      [&] {
        fire(event, arguments...);
        return Variant();
      },
      where);
}

HRESULT CTxmEvents::raise_text(VARIANT* result, DISPID event, BSTR* text,
                               const Location& where) noexcept {
  if (!text) return report_null_pointer(kClassName, where.function_name());
  return raise(result, event, where, ref(*text));
}

// Listeners see the object as automation object; one that they put in its place must be of the
// same class.
template <class I>
HRESULT CTxmEvents::raise_object(VARIANT* result, DISPID event, I** object,
                                 const Location& where) noexcept {
  if (!object) return report_null_pointer(kClassName, where.function_name());
  return returning(
      result,
      [&] {
        ObjectArgument argument(object);
        fire(event, argument.reference());
        argument.hand_back();
        return Variant();
      },
      where);
}

STDMETHODIMP CTxmEvents::RaiseTransmitterRemoved(short index, VARIANT* result) noexcept {
  return raise(result, kTransmitterRemoved, Location::current(), ref(index));
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
  return returning(result, [&] {
    // The caller's text is passed by value: listeners change a copy.
    BSTR copy = Bstr(view_of(com_settings)).detach();
    fire(kAutoConnet, ref(copy));
    SysFreeString(copy);
    return Variant();
  });
}
STDMETHODIMP CTxmEvents::RaiseFinished(VARIANT* result) noexcept {
  return raise(result, kFinished, Location::current());
}
STDMETHODIMP CTxmEvents::RaiseSending(VARIANT* result) noexcept {
  return raise(result, kSending, Location::current());
}
STDMETHODIMP CTxmEvents::RaiseReceiving(VARIANT* result) noexcept {
  return raise(result, kReceiving, Location::current());
}
STDMETHODIMP CTxmEvents::RaiseTimeOut(VARIANT* result) noexcept {
  return raise(result, kTimeOut, Location::current());
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
  if (!time_left) return report_null_pointer(kClassName, "RaiseSmartWaiting");
  return raise(result, kSmartWaiting, Location::current(), ref(*time_left));
}
STDMETHODIMP CTxmEvents::RaiseAnswerError(short* code, BSTR* text, VARIANT* result) noexcept {
  if (!code || !text) return report_null_pointer(kClassName, "RaiseAnswerError");
  return raise(result, kOnAnswerError, Location::current(), ref(*code), ref(*text));
}
STDMETHODIMP CTxmEvents::RaiseOnTimeInterrupt(VARIANT* result) noexcept {
  return raise(result, kOnTimeInterrupt, Location::current());
}
STDMETHODIMP CTxmEvents::RaiseOnWindowList(BSTR* new_id, WindowListTypes mode, BSTR* old_id,
                                           VARIANT* result) noexcept {
  if (!new_id || !old_id) return report_null_pointer(kClassName, "RaiseOnWindowList");
  return raise(result, kOnWindowList, Location::current(), ref(*new_id),
               value(static_cast<long>(mode)), ref(*old_id));
}

}  // namespace pv
