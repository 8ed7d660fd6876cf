// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

// The members of a dual interface, as calls by name need them. The build writes them down from the
// contract (tools/make_dispatch.py), as constants without pointers among themselves: nothing is
// read, allocated or relocated when a class is called for the first time.

#include <cstdint>
#include <optional>
#include <string_view>

#include "com/automation.h"

namespace pv {

/// What the tables of a library share.
struct DispatchPool {
  const char* texts;  // ASCII, each ends with NUL; names in small letters
  const IID* interfaces;
};

enum ParameterFlag : std::uint8_t {
  kByRef = 1,
  kOptional = 2,
  kPlainDefault = 4,
  kTextDefault = 8,
};

struct ParameterData {
  std::uint16_t name;  // among the texts; 0, the empty one, for none
  std::uint8_t type;   // of the value itself; VT_DISPATCH or VT_UNKNOWN for interfaces
  std::uint8_t flags;
  std::int32_t extra;  // the default value, its place among the texts, or that of an interface
};

struct MemberData {
  std::int16_t id;
  std::uint16_t slot;   // position in the vtable
  std::uint16_t first;  // of the parameters; a result follows them
  std::uint8_t inputs;  // their number without the result
  std::uint8_t kind;    // INVOKEKIND
  bool has_result;
};

/// A place in the hash table of names.
struct NameData {
  std::uint16_t name;  // 0 for an empty place
  std::int16_t id;
};

enum MemberKind { kCallable, kPut, kPutRef, kMemberKinds };

/// Where the members with an id stand, by kind.
struct KindsData {
  static constexpr std::uint8_t kNone = 0xFF;
  std::uint8_t places[kMemberKinds];
};

/// One parameter of a published member.
class Parameter {
 public:
  Parameter() = default;
  Parameter(const ParameterData& data, const DispatchPool& pool) : data_(&data), pool_(&pool) {}

  VARTYPE type() const { return data_->type; }
  bool is_interface() const { return type() == VT_DISPATCH || type() == VT_UNKNOWN; }
  /// The interface wanted.
  const IID& iid() const { return pool_->interfaces[data_->extra]; }
  /// Passed by pointer: the member may change it.
  bool by_ref() const { return has(kByRef); }
  bool optional() const { return has(kOptional); }
  /// In small letters.
  std::string_view name() const { return pool_->texts + data_->name; }
  /// A value of the parameter's type; null for none. Texts have one of their own.
  const std::int32_t* plain_default() const { return has(kPlainDefault) ? &data_->extra : nullptr; }
  std::optional<std::string_view> default_text() const {
    if (!has(kTextDefault)) return std::nullopt;
    return pool_->texts + data_->extra;
  }

 private:
  bool has(ParameterFlag flag) const { return (data_->flags & flag) != 0; }

  const ParameterData* data_ = nullptr;
  const DispatchPool* pool_ = nullptr;
};

/// One published member in one of its kinds (method, get, put, putref).
class Member {
 public:
  Member(const MemberData& data, const ParameterData* parameters, const DispatchPool& pool)
      : data_(&data), parameters_(parameters + data.first), pool_(&pool) {}

  DISPID id() const { return data_->id; }
  INVOKEKIND kind() const { return static_cast<INVOKEKIND>(data_->kind); }
  bool is_put() const { return (kind() & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0; }
  std::size_t slot() const { return data_->slot; }
  std::size_t parameter_count() const { return data_->inputs; }
  Parameter parameter(std::size_t index) const { return {parameters_[index], *pool_}; }
  bool has_result() const { return data_->has_result; }
  Parameter result() const { return parameter(data_->inputs); }

 private:
  const MemberData* data_;
  const ParameterData* parameters_;
  const DispatchPool* pool_;
};

/// The members of one dual interface. An aggregate, which the build fills.
struct DispatchTable {
  static constexpr DISPID kLowestId = DISPID_NEWENUM;

  /// DISPID_UNKNOWN when there is no such member. Case does not count.
  DISPID id_of(const wchar_t* name) const;

  /// Position of a named parameter of a member, DISPID_UNKNOWN when there is none.
  DISPID parameter_id(DISPID member, const wchar_t* name) const;

  /// The member that an invocation means: puts match puts of either kind, a get may be called as
  /// a method and the other way round.
  std::optional<Member> find(DISPID id, WORD flags) const;

  std::size_t member_count() const { return members_size; }
  /// In the order of the contract.
  Member member(std::size_t index) const { return {members[index], parameters, pool}; }

  const DispatchPool& pool;
  const MemberData* members;
  const ParameterData* parameters;
  const KindsData* kinds;  // by id - kLowestId
  const NameData* names;   // the hash table; their number is a power of two
  std::uint16_t members_size;
  std::uint16_t kinds_size;
  std::uint16_t names_size;

 private:
  const KindsData* kinds_of(DISPID id) const;
};

/// For lists of all tables.
struct NamedDispatchTable {
  const wchar_t* class_name;
  const DispatchTable* table;
};

}  // namespace pv
