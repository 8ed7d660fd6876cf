// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "tests/support/counted.h"
#include "tests/support/dispatch_object.h"
#include "tests/support/object.h"

namespace pv::test {

/// An enumerator of somebody else that is given back when the host says so, whoever still holds
/// this one.
class LentEnumerator final : public Counted<IEnumVARIANT> {
 public:
  explicit LentEnumerator(Ref<IEnumVARIANT> members) : members_(std::move(members)) {}

  void give_back() { members_.reset(); }

  STDMETHODIMP Next(ULONG count, VARIANT* members, ULONG* fetched) override {
    return members_ ? members_->Next(count, members, fetched) : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override { return members_ ? members_->Skip(count) : S_FALSE; }
  STDMETHODIMP Reset() override { return members_ ? members_->Reset() : S_FALSE; }
  STDMETHODIMP Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

 private:
  Ref<IEnumVARIANT> members_;
};

/// The enumerators that the scripts of a host got, until its end.
class LentEnumerators {
 public:
  LentEnumerators() = default;
  LentEnumerators(const LentEnumerators&) = delete;
  LentEnumerators& operator=(const LentEnumerators&) = delete;
  ~LentEnumerators() {
    for (const auto& enumerator : lent_) enumerator->give_back();
  }

  /// An object to enumerate in place of the collection. It does not outlive this.
  Value lend(const Object& collection);

 private:
  class Collection;

  std::vector<Ref<LentEnumerator>> lent_;
};

}  // namespace pv::test
