// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "com/automation.h"
#include "com/boundary.h"
#include "com/ref.h"
#include "com/simple_object.h"

namespace pv {

/// One of the platform's enumerators over a snapshot: `hand_out(member, element)` gives a member of
/// the snapshot out as an element of the interface, which the client then owns.
template <class Interface, class Element, class Member>
class Enumerator final : public SimpleObject<Enumerator<Interface, Element, Member>, Interface> {
 public:
  using Snapshot = std::shared_ptr<const std::vector<Member>>;

  explicit Enumerator(std::vector<Member> members)
      : members_(std::make_shared<const std::vector<Member>>(std::move(members))) {}
  Enumerator(Snapshot members, std::size_t next) : members_(std::move(members)), next_(next) {}

  STDMETHODIMP Next(ULONG count, Element* elements, ULONG* fetched) override {
    if (fetched) *fetched = 0;
    if (!elements || (!fetched && count != 1)) return E_POINTER;
    std::fill_n(elements, count, Element{});
    const std::size_t given = std::min<std::size_t>(count, left());
    for (std::size_t i = 0; i < given; ++i) hand_out((*members_)[next_++], elements[i]);
    if (fetched) *fetched = static_cast<ULONG>(given);
    return given == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const std::size_t skipped = std::min<std::size_t>(count, left());
    next_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    next_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(Interface** copy) override {
    if (!copy) return E_POINTER;
    *copy = nullptr;
    return guarded(L"Enumerator", "Clone",
                   [&] { *copy = make<Enumerator>(members_, next_).detach(); });
  }

 private:
  std::size_t left() const { return members_->size() - next_; }

  Snapshot members_;
  std::size_t next_ = 0;
};

inline void hand_out(const Ref<IDispatch>& object, VARIANT& value) {
  value.vt = VT_DISPATCH;
  value.pdispVal = Ref<IDispatch>(object).detach();
}

/// What `For Each` walks over: objects, each handed out as VT_DISPATCH.
using ObjectEnumerator = Enumerator<IEnumVARIANT, VARIANT, Ref<IDispatch>>;

inline Ref<IEnumVARIANT> make_enumerator(std::vector<Ref<IDispatch>> objects) {
  return make<ObjectEnumerator>(std::move(objects));
}

}  // namespace pv
