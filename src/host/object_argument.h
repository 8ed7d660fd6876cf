// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "core/errors/automation_error.h"
#include "host/late_bound.h"

namespace pv {

/// One of our objects on its way through a by-reference argument of a host object, which may
/// replace it.
template <class I>
class ObjectArgument {
 public:
  explicit ObjectArgument(I** object)
      : object_(object), passed_(Ref<IDispatch>(*object).detach()) {}
  ObjectArgument(const ObjectArgument&) = delete;
  ObjectArgument& operator=(const ObjectArgument&) = delete;
  ~ObjectArgument() {
    if (passed_) passed_->Release();
  }

  VARIANT reference() { return ref(passed_); }

  /// After the call: the caller's variable holds the object that came back. Error: kTypeMismatch
  /// for an object of another class.
  void hand_back() {
    if (passed_ == static_cast<IDispatch*>(*object_)) return;
    Ref<I> replacement = query<I>(passed_);
    if (passed_ && !replacement) {
      throw automation_error(ErrorCode::kTypeMismatch, L"an object of another class came back");
    }
    const Ref<I> former = Ref<I>::attach(*object_);
    *object_ = replacement.detach();
  }

 private:
  I** object_;
  IDispatch* passed_;
};

}  // namespace pv
