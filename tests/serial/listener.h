// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <vector>

#include "tests/support/object.h"

namespace pv::test {

/// Dispatch numbers of the event hub's events.
enum Event : DISPID {
  kFinished = 1,
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

/// Listens to the event hub of this thread as long as it lives, and notes the events that came.
class Listener {
 public:
  /// The arguments stand in reversed order, as the dispatch interface has them.
  using Action = std::function<void(DISPID, DISPPARAMS&)>;

  explicit Listener(Action action = {});
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  ~Listener();

  std::vector<DISPID> events() const;
  long count(Event event) const;
  void forget();

 private:
  class Sink;
  Ref<Sink> sink_;
  Ref<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

}  // namespace pv::test
