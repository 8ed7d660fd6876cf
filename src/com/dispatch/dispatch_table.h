// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "com/automation.h"
#include "core/list/key_index.h"

namespace pv {

/// One parameter of a published member.
struct Parameter {
  std::wstring name;
  VARTYPE type = VT_EMPTY;  // of the value itself; VT_DISPATCH or VT_UNKNOWN for interfaces
  IID iid{};                // the interface wanted
  bool by_ref = false;      // passed by pointer: the member may change it
  bool optional = false;
  std::optional<VARIANT> default_value;  // plain values only
  std::optional<std::wstring> default_text;

  bool is_interface() const { return type == VT_DISPATCH || type == VT_UNKNOWN; }
};

/// One published member in one of its kinds (method, get, put, putref).
struct Member {
  DISPID id = DISPID_UNKNOWN;
  INVOKEKIND kind = INVOKE_FUNC;
  std::size_t slot = 0;  // position in the vtable
  std::vector<Parameter> parameters;
  std::optional<Parameter> result;

  bool is_put() const { return kind == INVOKE_PROPERTYPUT || kind == INVOKE_PROPERTYPUTREF; }
};

/// The members of one dual interface, read from our own type library once.
class DispatchTable {
 public:
  explicit DispatchTable(REFIID iid);

  /// DISPID_UNKNOWN when there is no such member. Case does not count.
  DISPID id_of(std::wstring_view name) const;

  /// Position of a named parameter of a member, DISPID_UNKNOWN when there is none.
  DISPID parameter_id(DISPID member, std::wstring_view name) const;

  /// The member that an invocation means: puts match puts of either kind, a get may be called as
  /// a method and the other way round.
  const Member* find(DISPID id, WORD flags) const;

 private:
  static constexpr DISPID kLowestId = DISPID_NEWENUM;
  enum Kind { kCallable, kPut, kPutRef, kKinds };
  using Kinds = std::array<std::int16_t, kKinds>;  // index into members_, -1 for none
  struct Name : Keyed<Name> {
    Name(std::wstring_view name, DISPID member);
    DISPID id;
  };

  void add_member(ITypeInfo* info, const FUNCDESC& function);
  void add_name(std::wstring_view name, DISPID id);
  const Kinds* kinds_of(DISPID id) const;

  std::vector<Member> members_;
  std::vector<Kinds> by_id_;  // indexed by id - kLowestId
  std::vector<std::unique_ptr<Name>> names_;
  KeyIndex<Name> index_;  // of all names
};

}  // namespace pv
