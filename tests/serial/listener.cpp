// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/serial/listener.h"

#include <algorithm>

#include "pvItems32.h"
#include "tests/support/counted.h"

namespace pv::test {

class Listener::Sink final : public Counted<IDispatch> {
 public:
  explicit Sink(Action action) : Counted(__uuidof(__CTxmEvents)), action_(std::move(action)) {}

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    events.push_back(id);
    if (action_) action_(id, *parameters);
    return S_OK;
  }

  std::vector<DISPID> events;

 private:
  Action action_;
};

Listener::Listener(Action action) : sink_(new Sink(std::move(action))) {
  const Object hub = Object::create(L"pvItems32.CUtility").get_object(L"TxmEvents");
  const auto container = hub.as<IConnectionPointContainer>();
  if (!container || FAILED(container->FindConnectionPoint(__uuidof(__CTxmEvents), point_.put())) ||
      FAILED(point_->Advise(sink_.get(), &cookie_))) {
    throw CallFailed("the event hub takes no listener");
  }
}

Listener::~Listener() { point_->Unadvise(cookie_); }

std::vector<DISPID> Listener::events() const { return sink_->events; }

long Listener::count(Event event) const {
  return static_cast<long>(std::count(sink_->events.begin(), sink_->events.end(), event));
}

void Listener::forget() { sink_->events.clear(); }

}  // namespace pv::test
