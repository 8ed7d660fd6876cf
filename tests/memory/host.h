// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The host side of a call whose memory fails: a server, a listener, a list box.
#pragma once

#include <functional>
#include <string>

#include "tests/support/dispatch_object.h"
#include "tests/support/object.h"

namespace pv::test {

/// The arguments of a call, in the order of the member's parameters.
class HostArguments {
 public:
  explicit HostArguments(const DISPPARAMS& given) : given_(given) {}
  std::size_t size() const { return given_.cArgs; }
  const VARIANT& operator[](std::size_t i) const { return given_.rgvarg[size() - 1 - i]; }

 private:
  const DISPPARAMS& given_;
};

/// What an object of the host answers to a member, in its own memory, which does not fail.
using HostAnswer = std::function<Value(const std::wstring& member, const HostArguments& given)>;

/// An object of the host that knows every member. `events` is the event interface that it listens
/// to besides; the members of an event are then named by their numbers, like "#5".
Object host_object(HostAnswer answer, const IID* events = nullptr);

}  // namespace pv::test
