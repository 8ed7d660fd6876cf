#pragma once

#include "com/dispatch_table.h"
#include "com/variant.h"
#include "com/vtable_call.h"

namespace pv {

/// Where the value of a by-value parameter can be taken from as it is: the source, or what it
/// refers to, when that has the parameter's type; the plain default of one that is left out. Null
/// for all other arguments, which are to be bound.
const void* plain_argument(const VARIANT* source, const Parameter& parameter);

/// One argument of a late-bound call on its way into a typed parameter and back. `source` may be
/// null for an omitted argument.
class Argument {
 public:
  Argument() = default;
  Argument(const Argument&) = delete;
  Argument& operator=(const Argument&) = delete;
  ~Argument();

  /// Brings the source to the parameter's type.
  HRESULT bind(const VARIANT* source, const Parameter& parameter);

  /// Makes room for a result of the parameter's type.
  void bind_result(const Parameter& parameter);

  void push_to(CallWords& words) const;
  static std::size_t words_of(const Parameter& parameter);

  /// After the call: a value that the member changed goes back to where the source came from.
  HRESULT write_back();

  /// The result as the caller gets it; the caller owns it.
  VARIANT take();

 private:
  HRESULT bind_default();
  HRESULT bind_by_reference(const VARIANT* origin);
  HRESULT bind_by_value(const VARIANT& value);
  HRESULT convert(const VARIANT& value);
  HRESULT convert_object(const VARIANT& value);
  HRESULT remember();
  bool changed() const;
  void* payload();
  const void* payload() const { return const_cast<Argument*>(this)->payload(); }

  const Parameter* parameter_ = nullptr;
  VARIANT value_{};                  // the typed value, or the VARIANT itself
  Variant before_;                   // what the value was before the call, when it can go back
  bool owned_ = false;               // value_ must be cleared
  const VARIANT* origin_ = nullptr;  // where a changed value goes back to
  void* direct_ = nullptr;  // the caller's own variable, when it has the right type already
};

}  // namespace pv
