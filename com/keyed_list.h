#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "com/automation_error.h"
#include "com/key_fold.h"

namespace pv {

/// An ordered list whose members are reached by 1-based position or, where they have one, by text
/// key. Keys compare without regard to case; an empty key means none.
/// Errors: kSubscript for a bad position, kInvalidCall for an unknown key, kKeyInUse for a
/// duplicate. A failed operation changes nothing.
template <class T>
class KeyedList {
  struct Entry {
    T value;
    std::wstring folded_key;
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
  bool contains(std::wstring_view key) const { return keys_.contains(fold_key(key)); }

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
    keys_.clear();
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

  const Entry& entry_of(std::wstring_view key) const {
    const auto found = keys_.find(fold_key(key));
    if (found == keys_.end()) {
      throw automation_error(ErrorCode::kInvalidCall, L"key \"" + std::wstring(key) + L"\"");
    }
    return *found->second;
  }

  void insert_at(std::size_t index, T value, std::wstring_view key) {
    auto entry = std::make_unique<Entry>(Entry{std::move(value), fold_key(key)});
    entries_.reserve(entries_.size() < 8 ? 8 : grown(entries_.size()));
    if (!key.empty() && !keys_.emplace(entry->folded_key, entry.get()).second) {
      throw automation_error(ErrorCode::kKeyInUse, L"key \"" + std::wstring(key) + L"\"");
    }
    entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(index), std::move(entry));
  }

  // Room is made before the key is entered, so that nothing can fail half-way.
  std::size_t grown(std::size_t size) const {
    return size < entries_.capacity() ? entries_.capacity() : size * 2;
  }

  void remove_at(std::size_t index) {
    const auto at = entries_.begin() + static_cast<std::ptrdiff_t>(index);
    std::unique_ptr<Entry> doomed = std::move(*at);
    entries_.erase(at);
    if (!doomed->folded_key.empty()) keys_.erase(doomed->folded_key);
  }

  Entries entries_;
  std::unordered_map<std::wstring_view, Entry*> keys_;  // views the entries' own keys
};

}  // namespace pv
