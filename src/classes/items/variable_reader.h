// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <type_traits>
#include <utility>

#include "classes/items/CVariable.h"
#include "com/call.h"

namespace pv {

/// The fields of a variable: of one of our own without the way through its interface, which costs
/// more than all the fields.
class VariableReader {
 public:
  explicit VariableReader(const Ref<CVariable>& own) : variable_(own), own_(own.get()) {}
  explicit VariableReader(Ref<_CVariable> variable)
      : variable_(std::move(variable)), own_(CVariable::from_interface(variable_.get()).get()) {}

  const Ref<_CVariable>& variable() const { return variable_; }
  Variant value() const { return of(&CVariable::value, &_CVariable::get_Value); }
  Variant list_id() const { return of(&CVariable::list_id, &_CVariable::get_ListID); }
  short parent() const { return of(&CVariable::parent_variable, &_CVariable::get_ParentVariable); }
  short dimension_id() const { return of(&CVariable::dimension_id, &_CVariable::get_DimensionID); }
  short unit_id() const { return of(&CVariable::unit_id, &_CVariable::get_UnitID); }
  short decimals() const { return of(&CVariable::decimals, &_CVariable::get_Decimals); }
  bool dirty() const { return of(&CVariable::dirty, &_CVariable::get_Dirty); }

 private:
  template <class Own, class Out>
  std::remove_cvref_t<Own> of(Own (CVariable::*field)() const,
                              HRESULT (STDMETHODCALLTYPE _CVariable::*property)(Out*)) const {
    if (own_) return (own_->*field)();
    return static_cast<std::remove_cvref_t<Own>>(result_of(variable_, property));
  }

  Ref<_CVariable> variable_;
  const CVariable* own_;  // the same, if it is one
};

}  // namespace pv
