// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "tests/support/object.h"
#include "tests/support/type_library.h"

namespace pv::test {

/// Is called for an event by the name of its handler.
using EventHandler = std::function<HRESULT(const std::wstring& name, const DISPPARAMS& arguments)>;

/// Listens to the default events of any object, as its class describes them, for as long as it
/// exists.
class EventConnection {
 public:
  /// The handlers' names are those of the events behind the prefix. Throws CallFailed for an object
  /// without events.
  EventConnection(const Object& source, const std::wstring& prefix, EventHandler handler);
  EventConnection(const EventConnection&) = delete;
  EventConnection& operator=(const EventConnection&) = delete;
  ~EventConnection();

  bool is_to(const Object& object) const { return source_ == object; }
  /// The events of the source that have not come so far.
  std::vector<std::wstring> missing_events() const;

 private:
  class Sink;

  const Object source_;
  const TypeInfo events_;
  Ref<Sink> sink_;
  Ref<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

}  // namespace pv::test
