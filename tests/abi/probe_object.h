// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/abi/CProbe.h"
#include "tests/support/object.h"

namespace pv::test {

/// A late-bound client of a fresh probe.
inline Object make_probe() {
  const Ref<CProbe> probe = make<CProbe>();
  return Object(Ref<IDispatch>(static_cast<_Probe*>(probe.get())));
}

}  // namespace pv::test
