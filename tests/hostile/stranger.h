#pragma once

#include <functional>
#include <utility>

#include "com/automation.h"

namespace pv::test {

/// What a stranger does when it is called: it may do anything, answer anything and change
/// by-reference arguments. The result is initialised.
using Mischief = std::function<HRESULT(DISPPARAMS& given, VARIANT& result)>;

/// An object of the host that knows every member and answers each call by mischief: a server, a
/// form, a listener of any event interface.
class Stranger final : public IDispatch {
 public:
  /// `events` is the event interface that it listens to besides, if any; it outlives the object.
  explicit Stranger(Mischief mischief, const IID* events = nullptr)
      : mischief_(std::move(mischief)), events_(events) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override;

 private:
  ~Stranger() = default;

  Mischief mischief_;
  const IID* events_;
  ULONG references_ = 0;
};

}  // namespace pv::test
