// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/dispatch/dispatch_table.h"

#include <algorithm>
#include <memory>
#include <new>

#include "com/failure.h"
#include "com/type_library.h"
#include "com/variant.h"
#include "core/text/ascii.h"

namespace pv {
namespace {

// Member names are ASCII: any other character stays, so that it matches nothing.
constexpr KeyCase kNameCase([](std::wstring& name) {
  for (wchar_t& c : name) c = lower_ascii(c);
});

// Descriptions are lent by the type that they belong to.
struct GiveBack {
  ITypeInfo* info = nullptr;
  void operator()(TYPEATTR* attributes) const { info->ReleaseTypeAttr(attributes); }
  void operator()(FUNCDESC* function) const { info->ReleaseFuncDesc(function); }
};
using Attributes = std::unique_ptr<TYPEATTR, GiveBack>;
using Function = std::unique_ptr<FUNCDESC, GiveBack>;

Attributes attributes_of(ITypeInfo* info) {
  TYPEATTR* attributes = nullptr;
  check(info->GetTypeAttr(&attributes));
  return Attributes(attributes, {info});
}

Function function_of(ITypeInfo* info, UINT index) {
  FUNCDESC* function = nullptr;
  check(info->GetFuncDesc(index, &function));
  return Function(function, {info});
}

// The name of a member and those of its parameters; a new value may have none.
class Names {
 public:
  Names(ITypeInfo* info, const FUNCDESC& function) {
    check(info->GetNames(function.memid, texts_.data(), static_cast<UINT>(texts_.size()), &count_));
    // The platform leaves a name out when memory runs out.
    const UINT certain = function.invkind & (INVOKE_FUNC | INVOKE_PROPERTYGET) ? count_ : 1;
    if (!std::all_of(texts_.begin(), texts_.begin() + certain, [](BSTR text) { return text; })) {
      release();
      throw std::bad_alloc();
    }
  }
  Names(const Names&) = delete;
  Names& operator=(const Names&) = delete;
  ~Names() { release(); }

  /// Empty for a parameter without a name; the member itself is number 0.
  std::wstring_view at(UINT number) const {
    return number < count_ ? view_of(texts_[number]) : std::wstring_view();
  }

 private:
  void release() {
    for (BSTR text : texts_) SysFreeString(text);
  }

  std::array<BSTR, 64> texts_{};
  UINT count_ = 0;
};

struct ResolvedType {
  VARTYPE type = VT_EMPTY;
  IID iid{};
  int pointers = 0;  // levels of indirection, an interface's own pointer not counted
};

ResolvedType resolve(ITypeInfo* info, const TYPEDESC& type);

ResolvedType resolve_named(ITypeInfo* info, HREFTYPE reference) {
  Ref<ITypeInfo> named;
  check(info->GetRefTypeInfo(reference, named.put()));
  const Attributes attributes = attributes_of(named.get());
  ResolvedType resolved;
  switch (attributes->typekind) {
    case TKIND_ENUM:
      resolved.type = VT_I4;
      break;
    case TKIND_ALIAS:
      resolved = resolve(named.get(), attributes->tdescAlias);
      break;
    default:
      resolved = {VT_DISPATCH, attributes->guid, -1};
      break;
  }
  return resolved;
}

ResolvedType resolve(ITypeInfo* info, const TYPEDESC& type) {
  switch (type.vt) {
    case VT_PTR: {
      ResolvedType pointee = resolve(info, *type.lptdesc);
      ++pointee.pointers;
      return pointee;
    }
    case VT_USERDEFINED:
      return resolve_named(info, type.hreftype);
    case VT_DISPATCH:
      return {VT_DISPATCH, IID_IDispatch, 0};
    case VT_UNKNOWN:
      return {VT_UNKNOWN, IID_IUnknown, 0};
    case VT_INT:
      return {VT_I4, {}, 0};
    default:
      return {type.vt, {}, 0};
  }
}

Parameter parameter_of(ITypeInfo* info, const ELEMDESC& element) {
  const ResolvedType resolved = resolve(info, element.tdesc);
  const USHORT flags = element.paramdesc.wParamFlags;
  Parameter parameter;
  parameter.type = resolved.type;
  parameter.iid = resolved.iid;
  parameter.by_ref = resolved.pointers > 0;
  parameter.optional = (flags & PARAMFLAG_FOPT) != 0;
  if (flags & PARAMFLAG_FHASDEFAULT) {
    const VARIANT& value = element.paramdesc.pparamdescex->varDefaultValue;
    parameter.optional = true;
    if (value.vt == VT_BSTR) {
      parameter.default_text = std::wstring(view_of(value.bstrVal));
    } else if (!parameter.is_interface()) {
      parameter.default_value = to_type(value, resolved.type);
    }
  }
  return parameter;
}

// The interface view of a dual interface shows its vtable: HRESULTs, results as last parameter.
Ref<ITypeInfo> vtable_view(Ref<ITypeInfo> info) {
  HREFTYPE reference = 0;
  if (FAILED(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference))) return info;
  Ref<ITypeInfo> view;
  check(info->GetRefTypeInfo(reference, view.put()));
  return view;
}

}  // namespace

DispatchTable::Name::Name(std::wstring_view name, DISPID member)
    : Keyed<Name>(name, kNameCase), id(member) {}

DispatchTable::DispatchTable(REFIID iid) : index_(kNameCase) {
  const Ref<ITypeInfo> info = vtable_view(own_type_info(iid));
  const UINT count = attributes_of(info.get())->cFuncs;
  for (UINT i = 0; i < count; ++i) add_member(info.get(), *function_of(info.get(), i));
}

void DispatchTable::add_member(ITypeInfo* info, const FUNCDESC& function) {
  Member member;
  member.id = function.memid;
  member.kind = function.invkind;
  member.slot = static_cast<std::size_t>(function.oVft) / sizeof(void*);

  const Names names(info, function);
  for (int i = 0; i < function.cParams; ++i) {
    const ELEMDESC& element = function.lprgelemdescParam[i];
    Parameter parameter = parameter_of(info, element);
    if (element.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) {
      member.result = std::move(parameter);
    } else {
      parameter.name = names.at(static_cast<UINT>(i) + 1);
      member.parameters.push_back(std::move(parameter));
    }
  }
  add_name(names.at(0), member.id);
  // The enumerator is known to some clients under the name that the platform's tools give it.
  if (member.id == DISPID_NEWENUM) add_name(L"_NewEnum", member.id);

  const auto at = static_cast<std::size_t>(member.id - kLowestId);
  if (by_id_.size() <= at) by_id_.resize(at + 1, Kinds{-1, -1, -1});
  const Kind kind = member.kind == INVOKE_PROPERTYPUT      ? kPut
                    : member.kind == INVOKE_PROPERTYPUTREF ? kPutRef
                                                           : kCallable;
  by_id_[at][kind] = static_cast<std::int16_t>(members_.size());
  members_.push_back(std::move(member));
}

void DispatchTable::add_name(std::wstring_view name, DISPID id) {
  index_.reserve(names_.size() + 1);
  if (index_.find(name)) return;
  names_.push_back(std::make_unique<Name>(name, id));
  index_.link(names_.back().get());
}

DISPID DispatchTable::id_of(std::wstring_view name) const {
  const Name* found = index_.find(name);
  return found ? found->id : DISPID_UNKNOWN;
}

const DispatchTable::Kinds* DispatchTable::kinds_of(DISPID id) const {
  if (id < kLowestId || static_cast<std::size_t>(id - kLowestId) >= by_id_.size()) return nullptr;
  return &by_id_[static_cast<std::size_t>(id - kLowestId)];
}

DISPID DispatchTable::parameter_id(DISPID member, std::wstring_view name) const {
  const Kinds* kinds = kinds_of(member);
  if (!kinds) return DISPID_UNKNOWN;
  for (std::int16_t index : *kinds) {
    if (index < 0) continue;
    const auto& parameters = members_[static_cast<std::size_t>(index)].parameters;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
      if (same_ascii(parameters[i].name, name)) return static_cast<DISPID>(i);
    }
  }
  return DISPID_UNKNOWN;
}

const Member* DispatchTable::find(DISPID id, WORD flags) const {
  const Kinds* kinds = kinds_of(id);
  if (!kinds) return nullptr;
  const auto member = [&](Kind kind) -> const Member* {
    const std::int16_t index = (*kinds)[kind];
    return index < 0 ? nullptr : &members_[static_cast<std::size_t>(index)];
  };
  if (flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) return member(kCallable);
  const bool by_reference = (flags & DISPATCH_PROPERTYPUTREF) != 0;
  const Member* wanted = member(by_reference ? kPutRef : kPut);
  return wanted ? wanted : member(by_reference ? kPut : kPutRef);
}

}  // namespace pv
