// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "library.h"

namespace fluxor {

/// Reports the progress of an exchange to the listeners of the event hub, if there is one.
class Progress {
 public:
  void set_hub(ComPtr<_CTxmEvents> hub) { hub_ = std::move(hub); }

  void sending() const { raise(&_CTxmEvents::RaiseSending); }
  void receiving() const { raise(&_CTxmEvents::RaiseReceiving); }
  void time_out() const { raise(&_CTxmEvents::RaiseTimeOut); }
  void finished() const { raise(&_CTxmEvents::RaiseFinished); }

  /// Seconds left to wait. A listener may change them; the answer is what it leaves.
  float waiting(float seconds) const {
    raise(&_CTxmEvents::RaiseSmartWaiting, &seconds);
    return seconds;
  }

  void history_changed(const ComPtr<_CComHistory>& history) const {
    ComPtr<_CComHistory> shown = history;
    raise(&_CTxmEvents::RaiseHistoryChanged, shown.GetAddressOf());
  }

  void answer_error(short code, const std::wstring& text) const {
    _bstr_t shown = bstr(text);
    raise(&_CTxmEvents::RaiseAnswerError, &code, &shown.GetBSTR());
  }

 private:
  template <class... P, class... A>
  void raise(HRESULT (STDMETHODCALLTYPE _CTxmEvents::*event)(P...), A... arguments) const {
    if (hub_) get(hub_, event, arguments...);
  }

  ComPtr<_CTxmEvents> hub_;
};

}  // namespace fluxor
