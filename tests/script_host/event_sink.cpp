// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/script_host/event_sink.h"

#include "tests/support/counted.h"

namespace pv::test {
namespace {

constexpr int kDefaultSource = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;

TypeInfo default_source_of(const Object& object) {
  const auto provider = object.as<IProvideClassInfo>();
  Ref<ITypeInfo> info;
  if (!provider || FAILED(provider->GetClassInfo(info.put()))) {
    throw CallFailed("the object does not describe its class");
  }
  const TypeInfo description(info);
  for (UINT i = 0; i < description.attributes().cImplTypes; ++i) {
    if ((description.implementation_flags(i) & kDefaultSource) == kDefaultSource) {
      return description.implemented(i);
    }
  }
  throw CallFailed("the object has no events");
}

}  // namespace

class EventConnection::Sink final : public Counted<IDispatch> {
 public:
  Sink(const TypeInfo& events, std::wstring prefix, EventHandler handler)
      : Counted(events.attributes().guid),
        events_(events),
        prefix_(std::move(prefix)),
        handler_(std::move(handler)) {}

  bool has_come(DISPID event) const { return came_.contains(event); }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    const Ref<Sink> alive(this);  // the handler may disconnect it
    came_.insert(id);
    return handler_(prefix_ + events_.name_of(id), *given);
  }

 private:
  const TypeInfo events_;
  const std::wstring prefix_;
  const EventHandler handler_;
  std::set<DISPID> came_;
};

EventConnection::EventConnection(const Object& source, const std::wstring& prefix,
                                 EventHandler handler)
    : source_(source),
      events_(default_source_of(source)),
      sink_(new Sink(events_, prefix, std::move(handler))) {
  const auto container = source.as<IConnectionPointContainer>();
  if (!container ||
      FAILED(container->FindConnectionPoint(events_.attributes().guid, point_.put())) ||
      FAILED(point_->Advise(sink_.get(), &cookie_))) {
    throw CallFailed("the events cannot be listened to");
  }
}

EventConnection::~EventConnection() { point_->Unadvise(cookie_); }

std::vector<std::wstring> EventConnection::missing_events() const {
  std::vector<std::wstring> missing;
  for (const FunctionInfo& event : functions_of(events_)) {
    if (!sink_->has_come(event.description().memid)) missing.push_back(event.name());
  }
  return missing;
}

}  // namespace pv::test
