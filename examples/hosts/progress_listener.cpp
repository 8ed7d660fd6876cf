// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "progress_listener.h"

#include <atomic>
#include <cwchar>

namespace fluxor {
namespace {

// Dispatch numbers of __CTxmEvents.
enum : DISPID {
  kSending = 2,
  kReceiving = 3,
  kTimeOut = 4,
  kSmartWaiting = 5,
  kAutoConnet = 6,
  kTxmConnected = 7,
  kTxmNotConnected = 8,
  kHistoryChanged = 9,
  kOnAnswerError = 15,
};

// Control characters as points.
std::wstring readable(std::wstring telegram) {
  for (wchar_t& character : telegram) {
    if (character < L' ') character = L'.';
  }
  return telegram;
}

std::wstring describe(const ComPtr<_CComHistory>& history) {
  const auto newest = get(history, &_CComHistory::get_Item, _variant_t(1L));
  return L"exchange: " + readable(get(newest, &_CComDetail::get_CmdString)) + L" -> " +
         readable(get(newest, &_CComDetail::get_AnswString)) + L", attempt " +
         std::to_wstring(get(newest, &_CComDetail::get_Repeat));
}

std::wstring waiting(float seconds) {
  if (seconds <= 0) return {};
  wchar_t line[40];
  swprintf(line, 40, L"waiting for %.2f s", static_cast<double>(seconds));
  return line;
}

// Arguments stand in reversed order and come by reference.
std::wstring line_of(DISPID event, const DISPPARAMS& arguments) {
  switch (event) {
    case kTimeOut:
      return L"no answer in time";
    case kSmartWaiting:
      return waiting(*V_R4REF(&arguments.rgvarg[0]));
    case kAutoConnet:
      return L"looking for the transmitter at " + std::wstring(*V_BSTRREF(&arguments.rgvarg[0]));
    case kTxmConnected:
      return L"connected";
    case kTxmNotConnected:
      return L"not connected";
    case kHistoryChanged:
      return describe(query<_CComHistory>(*V_DISPATCHREF(&arguments.rgvarg[0])));
    case kOnAnswerError:
      return L"the transmitter says: " + std::wstring(*V_BSTRREF(&arguments.rgvarg[0]));
    default:
      return {};
  }
}

class Sink final : public IDispatch {
 public:
  explicit Sink(ProgressListener::Tell tell) : tell_(std::move(tell)) {}
  virtual ~Sink() = default;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(__CTxmEvents);
    *object = known ? static_cast<IDispatch*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    try {
      const std::wstring line = line_of(event, *arguments);
      if (!line.empty()) tell_(line);
      return S_OK;
    } catch (const std::exception&) {
      return E_FAIL;
    }
  }

 private:
  ProgressListener::Tell tell_;
  std::atomic<ULONG> references_{0};
};

}  // namespace

ProgressListener::ProgressListener(const ComPtr<_CTxmEvents>& hub, Tell tell) {
  const auto container = query<IConnectionPointContainer>(hub.Get());
  check(container ? container->FindConnectionPoint(__uuidof(__CTxmEvents), point_.GetAddressOf())
                  : E_NOINTERFACE);
  const ComPtr<IDispatch> sink(new Sink(std::move(tell)));
  check(point_->Advise(sink.Get(), &cookie_));
}

ProgressListener::~ProgressListener() { point_->Unadvise(cookie_); }

}  // namespace fluxor
