// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "com/automation.h"
#include "com/ref.h"

// Plain C++ views of a compiled type library, for the tests that walk it.
namespace pv::test {

/// A type description with its attributes, released together.
class TypeInfo {
 public:
  explicit TypeInfo(Ref<ITypeInfo> info);
  TypeInfo(const TypeInfo& other) : TypeInfo(other.info_) {}
  TypeInfo& operator=(const TypeInfo&) = delete;
  ~TypeInfo() { info_->ReleaseTypeAttr(attributes_); }

  ITypeInfo* get() const { return info_.get(); }
  const TYPEATTR& attributes() const { return *attributes_; }
  std::wstring name() const { return name_of(MEMBERID_NIL); }
  std::wstring name_of(MEMBERID member) const;
  std::wstring help_of(MEMBERID member) const;
  DWORD help_context_of(MEMBERID member) const;
  TypeInfo referenced(HREFTYPE reference) const;
  /// An implemented interface, by index.
  TypeInfo implemented(UINT index) const;
  int implementation_flags(UINT index) const;

 private:
  Ref<ITypeInfo> info_;
  TYPEATTR* attributes_ = nullptr;
};

struct ParameterInfo {
  std::wstring name;  // empty for the new value of a put
  TYPEDESC type;      // belongs to the function
  USHORT flags;
  const VARIANT* default_value;  // null for none

  bool is_result() const { return (flags & PARAMFLAG_FRETVAL) != 0; }
  bool is_optional() const { return (flags & (PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT)) != 0; }
  bool is_in_out() const { return (flags & PARAMFLAG_FIN) && (flags & PARAMFLAG_FOUT); }
};

/// A function description, released with it.
class FunctionInfo {
 public:
  FunctionInfo(const TypeInfo& owner, UINT index);
  FunctionInfo(const FunctionInfo&) = delete;
  FunctionInfo(FunctionInfo&& other) noexcept;
  ~FunctionInfo();

  const FUNCDESC& description() const { return *description_; }
  const std::wstring& name() const { return name_; }
  const std::vector<ParameterInfo>& parameters() const { return parameters_; }
  bool has_result() const { return !parameters_.empty() && parameters_.back().is_result(); }
  /// The parameters except the result.
  std::span<const ParameterInfo> inputs() const;
  /// Sets a property, by value or by reference.
  bool is_put() const;

 private:
  Ref<ITypeInfo> owner_;
  FUNCDESC* description_ = nullptr;
  std::wstring name_;
  std::vector<ParameterInfo> parameters_;
};

/// All types of a library, in their order.
std::vector<TypeInfo> types_of(ITypeLib* library);

/// The functions that an interface adds to IDispatch: for a dual interface as its vtable has them.
std::vector<FunctionInfo> functions_of(const TypeInfo& type);
TypeInfo vtable_view_of(const TypeInfo& type);

/// What automation passes for a type: enumerations are VT_I4, interfaces VT_DISPATCH or
/// VT_UNKNOWN, aliases what they stand for; `pointers` counts the levels above that.
struct PlainType {
  VARTYPE type = VT_EMPTY;
  IID iid{};  // of an interface
  int pointers = 0;

  bool is_interface() const { return type == VT_DISPATCH || type == VT_UNKNOWN; }
};
PlainType plain_type_of(const TypeInfo& owner, const TYPEDESC& type);

/// A creatable class.
struct ClassInfo {
  std::wstring name;
  CLSID clsid;
  TypeInfo type;
  TypeInfo interface_type;  // the default one, as vtable
  IID source = IID_NULL;    // of its events, IID_NULL for none

  std::wstring prog_id() const { return L"pvItems32." + name; }
  /// The name as parameterised tests have it.
  std::string plain_name() const { return {name.begin(), name.end()}; }
};
std::vector<ClassInfo> classes_of(ITypeLib* library);

/// The class of this plain name; throws std::runtime_error when there is none.
const ClassInfo& class_named(const std::vector<ClassInfo>& classes, std::string_view plain_name);
/// The class with this default interface, null for none.
const ClassInfo* class_with(const std::vector<ClassInfo>& classes, REFIID default_interface);

std::wstring text_of_guid(REFGUID guid);

}  // namespace pv::test
