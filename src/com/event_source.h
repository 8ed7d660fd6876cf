// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "com/automation.h"
#include "com/object.h"

namespace pv {

/// A connected listener.
struct Listener {
  DWORD cookie;
  Ref<IDispatch> sink;
};

/// The connection point of one event interface: keeps the listeners and calls them in order. A
/// listener may connect or disconnect anyone while it is called: the list that is being called
/// stays as it was.
class ConnectionPoint final : public IConnectionPoint {
 public:
  /// `owner` is the object whose events these are; the point lives and dies with it.
  ConnectionPoint(IConnectionPointContainer& owner, REFIID events)
      : owner_(owner), events_(events) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return owner_.AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return owner_.Release(); }

  STDMETHODIMP GetConnectionInterface(IID* iid) override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

  bool has_listeners() const { return !listeners_->empty(); }

  /// In the floating-point state of the host, calls every listener's event `id`. Arguments come in
  /// the order of the event's parameters and are left reversed; by-reference ones are changed in
  /// place. What a listener answers does not matter. A listener may release the owner, which is not
  /// touched afterwards.
  void fire(DISPID id, std::span<VARIANT> arguments = {});

 private:
  using Listeners = std::vector<Listener>;

  void replace(Listeners listeners);

  IConnectionPointContainer& owner_;
  IID events_;
  // A list is never changed, only replaced: an event that is under way keeps the one it began with.
  std::shared_ptr<const Listeners> listeners_ = std::make_shared<const Listeners>();
  DWORD next_cookie_ = 1;
};

/// Adds events to an automation base: `EventSource<AutomationObject<CTxmEvents>>`.
template <class Base>
class EventSource : public Base, public IConnectionPointContainer {
  using Events = typename Contract<typename Base::Class>::Events;

 public:
  static const IID* source_interface() { return &__uuidof(Events); }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    return Base::QueryInterface(iid, object);
  }
  STDMETHODIMP_(ULONG) AddRef() override { return Base::AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return Base::Release(); }

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
  STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
    if (!point) return E_POINTER;
    *point = nullptr;
    if (iid != __uuidof(Events)) return CONNECT_E_NOCONNECTION;
    *point = Ref<IConnectionPoint>(&events_).detach();
    return S_OK;
  }

  void* find_interface(REFIID iid) {
    if (iid == IID_IConnectionPointContainer) return static_cast<IConnectionPointContainer*>(this);
    return Base::find_interface(iid);
  }

 protected:
  /// Within a body that computes.
  template <class... A>
  void fire(DISPID id, A... arguments) {
    if (!events_.has_listeners())
      return;  // as in the constructor, where nobody may hold the object
    const Ref<typename Base::Class> alive(static_cast<typename Base::Class*>(this));
    const HostFloatingPoint in_host;
    fire_plain(id, arguments...);
  }
  /// As the last step of a body that computes nothing, in the host's own floating-point state.
  template <class... A>
  void fire_plain(DISPID id, A... arguments) {
    if (!events_.has_listeners()) return;
    VARIANT given[sizeof...(A) + 1] = {arguments...};
    events_.fire(id, {given, sizeof...(A)});
  }

 private:
  ConnectionPoint events_{*this, __uuidof(Events)};
};

/// Enumerators that hosts may ask for.
Ref<IEnumConnectionPoints> make_point_enumerator(const Ref<IConnectionPoint>& point);

template <class Base>
STDMETHODIMP EventSource<Base>::EnumConnectionPoints(IEnumConnectionPoints** points) {
  if (!points) return E_POINTER;
  *points = nullptr;
  return guarded(Base::kName, "EnumConnectionPoints",
                 [&] { *points = make_point_enumerator(&events_).detach(); });
}

}  // namespace pv
