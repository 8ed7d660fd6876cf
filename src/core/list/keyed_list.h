// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/errors/automation_error.h"
#include "core/list/key_index.h"

namespace pv {

/// An ordered list whose members are reached by 1-based position or, where they have one, by text
/// key. Keys compare without regard to case; an empty key means none.
/// Errors: kSubscript for a bad position, kInvalidCall for an unknown key, kKeyInUse for a
/// duplicate. A failed operation changes nothing.
template <class T>
class KeyedList {
  struct Entry : Keyed<Entry> {
    Entry(T member, std::wstring_view key, const KeyCase& keys)
        : Keyed<Entry>(key, keys), value(std::move(member)) {}
    bool has_key() const { return !this->folded_key.empty(); }
    T value;
  };
  using Entries = std::vector<std::unique_ptr<Entry>>;

 public:
  explicit KeyedList(const KeyCase& keys) : index_(keys) {}

  class const_iterator {
   public:
    explicit const_iterator(typename Entries::const_iterator at) : at_(at) {}
    const T& operator*() const { return (*at_)->value; }
    const_iterator& operator++() {
      ++at_;
      return *this;
    }
    bool operator==(const const_iterator&) const = default;

   private:
    typename Entries::const_iterator at_;
  };

  const_iterator begin() const { return const_iterator(entries_.begin()); }
  const_iterator end() const { return const_iterator(entries_.end()); }
  long size() const { return static_cast<long>(entries_.size()); }
  bool empty() const { return entries_.empty(); }
  bool contains(std::wstring_view key) const { return find(key) != nullptr; }

  const T& at(long position) const { return entries_[index_of(position)]->value; }
  const T& at(std::wstring_view key) const { return entry_of(key).value; }

  /// Position of a member; 0 for a value that is none.
  long position_of(const T& value) const {
    long position = 0;
    for (const auto& entry : entries_) {
      ++position;
      if (entry->value == value) return position;
    }
    return 0;
  }

  /// Raises the capacity by so many members; saves memory where their number is known.
  void reserve(std::size_t more) { raise_capacity(more); }

  void append(T value, std::wstring_view key = {}) {
    insert_at(entries_.size(), std::move(value), key);
  }
  /// Inserts before `position`, which must exist.
  void insert(long position, T value, std::wstring_view key = {}) {
    insert_at(index_of(position), std::move(value), key);
  }

  /// Puts another value, under a key of its own, in the place of a member and moves it to
  /// `new_position`. What fails changes nothing, which removing and inserting could not promise.
  void replace(long position, T value, std::wstring_view key, long new_position) {
    const std::size_t index = index_of(position);
    const std::size_t new_index = index_of(new_position);
    auto entry = std::make_unique<Entry>(std::move(value), key, index_.keys());
    const Entry* taken = find_same(*entry);
    if (taken && taken != entries_[index].get()) throw in_use(key);
    // Releasing the former member may run foreign code: the list is consistent by then.
    std::swap(entry, entries_[index]);
    unlink(*entry);
    link(*entries_[index]);
    move_entry(index, new_index);
  }

  /// Moves the members of another list to the end of this one; those whose keys are in use here are
  /// dropped.
  /// What fails changes neither list.
  void take_over(KeyedList&& others) {
    raise_capacity(others.entries_.size());
    others.index_.clear();
    Entries doomed;  // releases what is not taken over
    doomed.swap(others.entries_);
    for (auto& entry : doomed) {
      if (find_same(*entry)) continue;
      link(*entry);
      entries_.push_back(std::move(entry));
    }
  }

  void remove(long position) { remove_at(index_of(position)); }
  void remove(std::wstring_view key) {
    const Entry* entry = &entry_of(key);
    std::size_t index = 0;
    while (entries_[index].get() != entry) ++index;
    remove_at(index);
  }

  void clear() {
    index_.clear();
    // Releasing members may run foreign code: the list is empty by then.
    Entries doomed = std::exchange(entries_, {});
  }

  /// Puts the members into a new order: the k-th member becomes the one at `order[k]`, 0-based. A
  /// member that comes to another place is reached by the key `key_of(member)` from then on.
  template <class KeyOf>
  void reorder(const std::vector<std::size_t>& order, KeyOf&& key_of) {
    KeyedList sorted(index_.keys());
    sorted.raise_capacity(entries_.size());
    for (std::size_t place = 0; place < order.size(); ++place) {
      const Entry& former = *entries_[order[place]];
      auto entry = order[place] == place
                       ? std::make_unique<Entry>(former)
                       : std::make_unique<Entry>(former.value, key_of(former.value), index_.keys());
      if (sorted.find_same(*entry)) throw in_use(entry->folded_key);
      sorted.link(*entry);
      sorted.entries_.push_back(std::move(entry));
    }
    std::swap(*this, sorted);
  }

 private:
  std::size_t index_of(long position) const {
    if (position < 1 || position > size()) {
      throw automation_error(ErrorCode::kSubscript, L"position " + std::to_wstring(position));
    }
    return static_cast<std::size_t>(position - 1);
  }

  Entry* find(std::wstring_view key) const {
    if (key.empty()) return nullptr;
    if (!index_.empty()) return index_.find(key);
    const auto has_key = [&](const auto& entry) {
      return index_.keys().folds_to(key, entry->folded_key);
    };
    const auto found = std::find_if(entries_.begin(), entries_.end(), has_key);
    return found == entries_.end() ? nullptr : found->get();
  }

  Entry* find_same(const Entry& entry) const {
    if (!entry.has_key()) return nullptr;
    if (!index_.empty()) return index_.find_same(entry);
    const auto is_same = [&](const auto& each) { return each->folded_key == entry.folded_key; };
    const auto found = std::find_if(entries_.begin(), entries_.end(), is_same);
    return found == entries_.end() ? nullptr : found->get();
  }

  const Entry& entry_of(std::wstring_view key) const {
    const Entry* found = find(key);
    if (!found) {
      throw automation_error(ErrorCode::kInvalidCall, L"key \"" + std::wstring(key) + L"\"");
    }
    return *found;
  }

  void insert_at(std::size_t index, T value, std::wstring_view key) {
    auto entry = std::make_unique<Entry>(std::move(value), key, index_.keys());
    if (find_same(*entry)) throw in_use(key);
    raise_capacity(1);
    link(*entry);
    entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(index), std::move(entry));
  }

  // For more entries, so that nothing can fail once their keys are known.
  void raise_capacity(std::size_t more) {
    const std::size_t needed = entries_.size() + more;
    if (needed > entries_.capacity()) entries_.reserve(std::max(needed, entries_.size() * 2));
    if (needed <= kFew) return;
    const bool is_first = index_.empty();
    index_.reserve(entries_.capacity());
    if (!is_first) return;
    for (const auto& entry : entries_) {
      if (entry->has_key()) index_.link(entry.get());
    }
  }

  void remove_at(std::size_t index) {
    const auto at = entries_.begin() + static_cast<std::ptrdiff_t>(index);
    std::unique_ptr<Entry> doomed = std::move(*at);
    entries_.erase(at);
    unlink(*doomed);
  }

  void link(Entry& entry) {
    if (entry.has_key() && !index_.empty()) index_.link(&entry);
  }
  void unlink(const Entry& entry) {
    if (entry.has_key() && !index_.empty()) index_.unlink(&entry);
  }

  void move_entry(std::size_t from, std::size_t to) {
    const auto at = [&](std::size_t index) {
      return entries_.begin() + static_cast<std::ptrdiff_t>(index);
    };
    if (from < to) std::rotate(at(from), at(from + 1), at(to + 1));
    if (to < from) std::rotate(at(to), at(from), at(from + 1));
  }

  static automation_error in_use(std::wstring_view key) {
    return automation_error(ErrorCode::kKeyInUse, L"key \"" + std::wstring(key) + L"\"");
  }

  static constexpr std::size_t kFew = 8;  // up to so many, looking at each is as fast

  Entries entries_;
  KeyIndex<Entry> index_;  // of all entries with a key, once there are more than a few entries
};

}  // namespace pv
