#include "com/event_source.h"

#include <algorithm>

#include "com/simple_object.h"

namespace pv {
namespace {

// The two connection enumerators differ only in what they hand out.
template <class Interface, class Element>
class ConnectionEnumerator final
    : public SimpleObject<ConnectionEnumerator<Interface, Element>, Interface> {
 public:
  ConnectionEnumerator(const ConnectionEnumerator&) = delete;
  ConnectionEnumerator& operator=(const ConnectionEnumerator&) = delete;
  explicit ConnectionEnumerator(std::vector<Element> elements, std::size_t next = 0)
      : elements_(std::move(elements)), next_(next) {
    for (const Element& element : elements_) object_of(element)->AddRef();
  }

  STDMETHODIMP Next(ULONG count, Element* elements, ULONG* fetched) override {
    if (fetched) *fetched = 0;
    if (!elements || (!fetched && count != 1)) return E_POINTER;
    ULONG given = 0;
    for (; given < count && next_ < elements_.size(); ++given, ++next_) {
      elements[given] = elements_[next_];
      object_of(elements[given])->AddRef();
    }
    if (fetched) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const auto skipped = std::min<std::size_t>(count, elements_.size() - next_);
    next_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    next_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(Interface** copy) override {
    if (!copy) return E_POINTER;
    *copy = nullptr;
    return guarded(L"ConnectionEnumerator", "Clone",
                   [&] { *copy = make<ConnectionEnumerator>(elements_, next_).detach(); });
  }

  ~ConnectionEnumerator() {
    for (const Element& element : elements_) object_of(element)->Release();
  }

 private:
  static IUnknown* object_of(IConnectionPoint* point) { return point; }
  static IUnknown* object_of(const CONNECTDATA& connection) { return connection.pUnk; }

  std::vector<Element> elements_;
  std::size_t next_;
};

using PointEnumerator = ConnectionEnumerator<IEnumConnectionPoints, IConnectionPoint*>;
using SinkEnumerator = ConnectionEnumerator<IEnumConnections, CONNECTDATA>;

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
  sink->QueryInterface(events_, reinterpret_cast<void**>(listener.receive()));
  if (!listener) listener = query<IDispatch>(sink);
  if (!listener) return CONNECT_E_CANNOTCONNECT;
  return guarded(L"ConnectionPoint", "Advise", [&] {
    Connections changed = *connections_;
    changed.push_back({next_cookie_, listener});
    replace(std::move(changed));
    *cookie = next_cookie_++;
  });
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) {
  const auto is_meant = [&](const Connection& connection) { return connection.cookie == cookie; };
  if (std::none_of(connections_->begin(), connections_->end(), is_meant)) {
    return CONNECT_E_NOCONNECTION;
  }
  return guarded(L"ConnectionPoint", "Unadvise", [&] {
    Connections changed = *connections_;
    std::erase_if(changed, is_meant);
    replace(std::move(changed));
  });
}

// A listener that goes may look at the list: it is the new one by then.
void ConnectionPoint::replace(Connections connections) {
  auto next = std::make_shared<const Connections>(std::move(connections));
  connections_.swap(next);
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** connections) {
  if (!connections) return E_POINTER;
  *connections = nullptr;
  return guarded(L"ConnectionPoint", "EnumConnections", [&] {
    std::vector<CONNECTDATA> data;
    for (const Connection& connection : *connections_) {
      data.push_back({connection.sink.get(), connection.cookie});
    }
    *connections = make<SinkEnumerator>(std::move(data)).detach();
  });
}

void ConnectionPoint::fire(DISPID id, std::span<VARIANT> arguments) {
  std::reverse(arguments.begin(), arguments.end());
  DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  const auto listeners = connections_;
  for (const Connection& listener : *listeners) {
    Variant ignored;
    EXCEPINFO exception{};
    listener.sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &ignored,
                          &exception, nullptr);
    for (BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile}) {
      if (text) SysFreeString(text);
    }
  }
}

Ref<IEnumConnectionPoints> make_point_enumerator(const Ref<IConnectionPoint>& point) {
  return make<PointEnumerator>(std::vector<IConnectionPoint*>{point.get()});
}

}  // namespace pv
