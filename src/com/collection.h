// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "com/call.h"
#include "com/enumerator.h"
#include "com/index_key.h"
#include "com/object.h"
#include "core/list/keyed_list.h"

namespace pv {

/// What `Item` does when nothing is found. Where it answers Nothing, `Remove` passes over a member
/// that does not exist, too.
enum class Missing { kRaises, kIsNothing };

/// The members that every collection class has, over a keyed list of its member objects.
template <class Derived, class Element, Missing kMissing>
class Collection : public AutomationObject<Derived> {
  using ElementInterface = typename InterfaceOf<Element>::type;

 public:
  using Members = KeyedList<Ref<Element>>;

  STDMETHODIMP get_Item(VARIANT index, ElementInterface** result) noexcept override {
    return this->plain_method_with_result(result, [&] {
      if constexpr (kMissing == Missing::kRaises) {
        return at(index);
      } else {
        Ref<Element> found;
        attempt([&] { found = at(index); });
        return found;
      }
    });
  }
  STDMETHODIMP get_Count(long* result) noexcept override {
    return this->plain_method_with_result(result, [&] { return list_.size(); });
  }
  STDMETHODIMP Remove(VARIANT index) noexcept override {
    return this->method([&] {
      if constexpr (kMissing == Missing::kRaises) {
        remove(index);
      } else {
        attempt([&] { remove(index); });
      }
    });
  }
  STDMETHODIMP Clear() noexcept override {
    return this->method([&] { list_.clear(); });
  }
  STDMETHODIMP get_NewEnum(IUnknown** result) noexcept override {
    return this->method_with_result(result, [&] { return make_enumerator(snapshot()); });
  }

  const Members& list() const { return list_; }
  Members& list() { return list_; }

  /// The member that a client's index or key names; errors of the keyed list.
  const Ref<Element>& at(const VARIANT& index) const {
    return std::visit([&](const auto& key) -> const Ref<Element>& { return list_.at(key); },
                      index_key_of(index));
  }

  void remove(const VARIANT& index) {
    std::visit([&](const auto& key) { list_.remove(key); }, index_key_of(index));
  }

 protected:
  static Members no_members() { return Members(library().keys); }

  /// Appends a member; Nothing when its key is in use.
  Ref<Element> added(std::wstring_view key, Ref<Element> element) {
    return attempt([&] { list_.append(element, key); }) ? element : Ref<Element>();
  }

  std::vector<Ref<IDispatch>> snapshot() const {
    std::vector<Ref<IDispatch>> objects;
    objects.reserve(static_cast<std::size_t>(list_.size()));
    for (const Ref<Element>& element : list_) objects.emplace_back(element);
    return objects;
  }

  Members list_ = no_members();
};

/// Gives a collection the members of another that was made for it, in the place of its own. One of
/// our own takes them over, which cannot fail; one of a host is cleared and asked to add copies,
/// one by one: `add` does that.
template <class Members, class Interface, class Add>
void give_members(const Ref<Members>& members, const Ref<Interface>& target, Add&& add) {
  if (const Ref<Members> own = Members::from_interface(target.get())) {
    std::swap(own->list(), members->list());
    return;
  }
  call(target, &Interface::Clear);
  for (const auto& member : members->list()) add(target, *member);
}

/// Replaces the member at `position` by `replacement` under another key, as renaming a keyed
/// member works: a key that is in use removes the old member and fails. A bad position changes
/// nothing.
template <class Element>
void replace_member(KeyedList<Ref<Element>>& list, long position, const Ref<Element>& replacement,
                    std::wstring_view key) {
  try {
    list.replace(position, replacement, key, position);
  } catch (const automation_error& error) {
    if (error.code() == ErrorCode::kKeyInUse) list.remove(position);
    throw;
  }
}

/// Renames the member at `position`, which is replaced by a copy under the new name.
template <class Element>
void rename_member(KeyedList<Ref<Element>>& list, long position, std::wstring_view name) {
  const auto copy = make<Element>();
  list.at(position)->copy_to(copy.get());
  copy->rename(name);
  replace_member(list, position, copy, name);
}

}  // namespace pv
