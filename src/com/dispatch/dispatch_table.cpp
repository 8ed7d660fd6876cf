// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/dispatch/dispatch_table.h"

#include "core/text/ascii.h"

namespace pv {
namespace {

// Member names are ASCII: any other character matches nothing.
bool is_name(const wchar_t* name, const char* small) {
  for (; *small != '\0'; ++name, ++small) {
    if (lower_ascii(*name) != static_cast<unsigned char>(*small)) return false;
  }
  return *name == L'\0';
}

std::size_t hash_of(const wchar_t* name) {
  HashAscii hash;
  for (; *name != L'\0'; ++name) hash.add(*name);
  return hash.value();
}

}  // namespace

DISPID DispatchTable::id_of(const wchar_t* name) const {
  const std::size_t mask = names_size - 1u;
  for (std::size_t at = hash_of(name) & mask; names[at].name != 0; at = (at + 1) & mask) {
    if (is_name(name, pool.texts + names[at].name)) return names[at].id;
  }
  return DISPID_UNKNOWN;
}

const KindsData* DispatchTable::kinds_of(DISPID id) const {
  if (id < kLowestId || id >= kLowestId + kinds_size) return nullptr;
  return &kinds[id - kLowestId];
}

DISPID DispatchTable::parameter_id(DISPID id, const wchar_t* name) const {
  const KindsData* found = kinds_of(id);
  if (!found) return DISPID_UNKNOWN;
  for (const std::uint8_t place : found->places) {
    if (place == KindsData::kNone) continue;
    const Member one = member(place);
    for (std::size_t i = 0; i < one.parameter_count(); ++i) {
      if (is_name(name, one.parameter(i).name().data())) return static_cast<DISPID>(i);
    }
  }
  return DISPID_UNKNOWN;
}

std::optional<Member> DispatchTable::find(DISPID id, WORD flags) const {
  const KindsData* found = kinds_of(id);
  if (!found) return std::nullopt;
  std::uint8_t place = found->places[kCallable];
  if (!(flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET))) {
    const bool by_reference = (flags & DISPATCH_PROPERTYPUTREF) != 0;
    place = found->places[by_reference ? kPutRef : kPut];
    if (place == KindsData::kNone) place = found->places[by_reference ? kPut : kPutRef];
  }
  if (place == KindsData::kNone) return std::nullopt;
  return member(place);
}

}  // namespace pv
