// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/list/key_case.h"

namespace pv {

/// What an entry carries to be found by its key.
template <class Entry>
struct Keyed {
  Keyed(std::wstring_view key, const KeyCase& keys)
      : folded_key(keys.fold(key)), hash(keys.hash(folded_key)) {}

  std::wstring folded_key;
  std::size_t hash;
  Entry* next = nullptr;  // in the same bucket of the index
};

/// Finds entries by their keys. The entries are chained through their own links, so that a search
/// touches little memory besides the entry that it finds. Owns nothing.
template <class Entry>
class KeyIndex {
 public:
  explicit KeyIndex(const KeyCase& keys) : keys_(&keys) {}

  const KeyCase& keys() const { return *keys_; }
  bool empty() const { return buckets_.empty(); }

  Entry* find(std::wstring_view key) const {
    const std::size_t hash = keys_->hash(key);
    Entry* entry = buckets_[place_of(hash)];
    while (entry && !(entry->hash == hash && keys_->folds_to(key, entry->folded_key)))
      entry = entry->next;
    return entry;
  }

  /// The entry with the same key as another one. Needs no memory.
  Entry* find_same(const Entry& other) const {
    Entry* entry = buckets_[place_of(other.hash)];
    while (entry && !(entry->hash == other.hash && entry->folded_key == other.folded_key)) {
      entry = entry->next;
    }
    return entry;
  }

  /// Sets the capacity to at least `count` entries; the only step that allocates. What fails
  /// changes nothing.
  void reserve(std::size_t count) {
    if (count <= buckets_.size()) return;
    std::size_t size = 16;
    while (size < count) size *= 2;
    const auto former = std::exchange(buckets_, std::vector<Entry*>(size));
    for (Entry* entry : former) {
      while (entry) link(std::exchange(entry, entry->next));
    }
  }

  void link(Entry* entry) {
    Entry*& first = buckets_[place_of(entry->hash)];
    entry->next = std::exchange(first, entry);
  }

  void unlink(const Entry* entry) {
    Entry** at = &buckets_[place_of(entry->hash)];
    while (*at != entry) at = &(*at)->next;
    *at = entry->next;
  }

  void clear() { buckets_.clear(); }

 private:
  std::size_t place_of(std::size_t hash) const { return hash & (buckets_.size() - 1); }

  const KeyCase* keys_;
  std::vector<Entry*> buckets_;  // their number is a power of two
};

}  // namespace pv
