// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <utility>

#include "tests/support/dispatch_object.h"

namespace pv::test {

/// What a stranger does when it is called: it may do anything, answer anything and change
/// by-reference arguments. The result is initialised.
using Mischief = std::function<HRESULT(DISPPARAMS& given, VARIANT& result)>;

/// An object of the host that knows every member and answers each call by mischief: a server, a
/// form, a listener of any event interface.
class Stranger final : public DispatchObject {
 public:
  /// `events` is the event interface that it listens to besides, if any; it outlives the object.
  explicit Stranger(Mischief mischief, const IID* events = nullptr)
      : DispatchObject(ObjectKind::kCompiled, events), mischief_(std::move(mischief)) {}

  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override;

 private:
  DISPID id_of(std::wstring_view) override { return 1; }

  Mischief mischief_;
};

}  // namespace pv::test
