#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "com/automation_error.h"
#include "com/key_index.h"

namespace pv {

/// An ordered list whose members are reached by 1-based position or, where they have one, by text
/// key. Keys compare without regard to case; an empty key means none.
/// Errors: kSubscript for a bad position, kInvalidCall for an unknown key, kKeyInUse for a
/// duplicate. A failed operation changes nothing.
template <class T>
class KeyedList {
  struct Entry : Keyed<Entry> {
    Entry(T member, std::wstring_view key) : Keyed<Entry>(key), value(std::move(member)) {}
    bool has_key() const { return !this->folded_key.empty(); }
    T value;
  };
  using Entries = std::vector<std::unique_ptr<Entry>>;

 public:
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

  /// Makes room for members to come; sparing with memory where their number is known.
  void reserve(std::size_t count) { entries_.reserve(count); }

  void append(T value, std::wstring_view key = {}) {
    insert_at(entries_.size(), std::move(value), key);
  }
  /// Inserts before `position`, which must exist.
  void insert(long position, T value, std::wstring_view key = {}) {
    insert_at(index_of(position), std::move(value), key);
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
    // Members may run foreign code when they go: the list is empty by then.
    Entries doomed = std::exchange(entries_, {});
  }

  /// Puts the members into a new order: the k-th member becomes the one at `order[k]`, 0-based.
  void reorder(const std::vector<std::size_t>& order) {
    Entries sorted;
    sorted.reserve(entries_.size());
    for (std::size_t index : order) sorted.push_back(std::move(entries_[index]));
    entries_ = std::move(sorted);
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
    const auto has_key = [&](const auto& entry) { return folds_to(key, entry->folded_key); };
    const auto found = std::find_if(entries_.begin(), entries_.end(), has_key);
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
    auto entry = std::make_unique<Entry>(std::move(value), key);
    if (find(key)) {
      throw automation_error(ErrorCode::kKeyInUse, L"key \"" + std::wstring(key) + L"\"");
    }
    make_room();
    if (entry->has_key() && !index_.empty()) index_.link(entry.get());
    entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(index), std::move(entry));
  }

  // For one more entry, so that nothing can fail once its key is known.
  void make_room() {
    if (entries_.size() == entries_.capacity()) {
      entries_.reserve(std::max<std::size_t>(1, entries_.size() * 2));
    }
    if (entries_.size() < kFew) return;
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
    if (doomed->has_key() && !index_.empty()) index_.unlink(doomed.get());
  }

  static constexpr std::size_t kFew = 8;  // up to so many, looking at each is as fast

  Entries entries_;
  KeyIndex<Entry> index_;  // of all entries with a key, once there are more than a few entries
};

}  // namespace pv
