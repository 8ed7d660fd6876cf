// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "com/automation.h"
#include "com/variant.h"

namespace pv {

/// A host object reached by member name. Errors that the object raises pass to the caller
/// unchanged, with their help file and topic, and so does the object's lack of memory; an empty
/// reference raises kObjectNotSet.
///
/// By-reference arguments (`ref(...)`) are typed for compiled objects; script objects, which see
/// changes only in references to values, get those.
class LateBound {
 public:
  LateBound() = default;
  explicit LateBound(Ref<IDispatch> object);

  explicit operator bool() const { return static_cast<bool>(object_); }
  const Ref<IDispatch>& object() const { return object_; }

  bool has(std::wstring_view member) const;

  Variant get(std::wstring_view property) const { return get(property, {}); }
  Variant get(std::wstring_view property, std::initializer_list<VARIANT> arguments) const;
  void put(std::wstring_view property, const VARIANT& value) const;
  void set(std::wstring_view property, IDispatch* object) const;
  Variant call(std::wstring_view method, std::initializer_list<VARIANT> arguments = {}) const;

  /// The object that a property holds; empty for Nothing.
  LateBound get_object(std::wstring_view property) const;

 private:
  DISPID find(std::wstring_view member) const;
  DISPID id_of(std::wstring_view member) const;
  Variant invoke(std::wstring_view member, WORD flags, std::span<const VARIANT> arguments) const;
  HRESULT of_script(HRESULT called, DISPID id, WORD flags, DISPPARAMS& parameters, Variant& result,
                    EXCEPINFO& exception) const;
  HRESULT try_invoke(DISPID id, WORD flags, DISPPARAMS& parameters, VARIANT& result,
                     EXCEPINFO& exception) const;

  Ref<IDispatch> object_;
  Ref<IDispatch> script_;  // set when the object belongs to a script engine
  struct Known {
    std::wstring member;
    DISPID id;
  };
  mutable std::vector<Known> known_;  // few: a search looks at each
};

/// Typed by-reference arguments for LateBound calls. The variable must outlive the call.
VARIANT ref(short& value);
VARIANT ref_boolean(VARIANT_BOOL& value);  // VARIANT_BOOL is a short to the compiler
VARIANT ref(float& value);
VARIANT ref(BSTR& value);
VARIANT ref(IDispatch*& value);

/// Borrowed by-value arguments.
VARIANT value(short number);
VARIANT value(long number);
VARIANT value(bool flag);
VARIANT value(BSTR text);
VARIANT value(IDispatch* object);

}  // namespace pv
