// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/event_source.h"

#include <algorithm>

#include "com/enumerator.h"

namespace pv {

// Found by the enumerators.
static void hand_out(const Ref<IConnectionPoint>& point, IConnectionPoint*& element) {
  element = Ref<IConnectionPoint>(point).detach();
}
static void hand_out(const Listener& listener, CONNECTDATA& element) {
  element = {Ref<IUnknown>(listener.sink).detach(), listener.cookie};
}

namespace {

using PointEnumerator = Enumerator<IEnumConnectionPoints, IConnectionPoint*, Ref<IConnectionPoint>>;
using ListenerEnumerator = Enumerator<IEnumConnections, CONNECTDATA, Listener>;

void forget(EXCEPINFO& exception) {
  for (BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile}) {
    SysFreeString(text);
  }
  exception = {};
}

}  // namespace

STDMETHODIMP ConnectionPoint::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (iid != IID_IUnknown && iid != IID_IConnectionPoint) return E_NOINTERFACE;
  *object = static_cast<IConnectionPoint*>(this);
  AddRef();
  return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* iid) {
  if (!iid) return E_POINTER;
  *iid = events_;
  return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (!container) return E_POINTER;
  *container = Ref<IConnectionPointContainer>(&owner_).detach();
  return S_OK;
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
  if (!sink || !cookie) return E_POINTER;
  *cookie = 0;
  // A listener offers the event interface itself, or just automation.
  Ref<IDispatch> listener;
  sink->QueryInterface(events_, reinterpret_cast<void**>(listener.put()));
  if (!listener) listener = query<IDispatch>(sink);
  if (!listener) return CONNECT_E_CANNOTCONNECT;
  return guarded(L"ConnectionPoint", "Advise", [&] {
    Listeners changed = *listeners_;
    changed.push_back({next_cookie_, listener});
    replace(std::move(changed));
    *cookie = next_cookie_++;
  });
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) {
  const auto is_meant = [&](const Listener& listener) { return listener.cookie == cookie; };
  if (std::none_of(listeners_->begin(), listeners_->end(), is_meant)) {
    return CONNECT_E_NOCONNECTION;
  }
  return guarded(L"ConnectionPoint", "Unadvise", [&] {
    Listeners changed = *listeners_;
    std::erase_if(changed, is_meant);
    replace(std::move(changed));
  });
}

// A listener whose last reference is released here may call back: it finds the new list.
void ConnectionPoint::replace(Listeners listeners) {
  auto next = std::make_shared<const Listeners>(std::move(listeners));
  listeners_.swap(next);
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** connections) {
  if (!connections) return E_POINTER;
  *connections = nullptr;
  return guarded(L"ConnectionPoint", "EnumConnections",
                 [&] { *connections = make<ListenerEnumerator>(*listeners_).detach(); });
}

void ConnectionPoint::fire(DISPID id, std::span<VARIANT> arguments) {
  std::reverse(arguments.begin(), arguments.end());
  DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  EXCEPINFO exception{};
  const auto listeners = listeners_;
  for (const Listener& listener : *listeners) {
    Variant ignored;
    listener.sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &ignored,
                          &exception, nullptr);
    if (exception.bstrSource || exception.bstrDescription || exception.bstrHelpFile) {
      forget(exception);
    }
  }
}

Ref<IEnumConnectionPoints> make_point_enumerator(const Ref<IConnectionPoint>& point) {
  return make<PointEnumerator>(std::vector{point});
}

}  // namespace pv
