// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/dispatch/invoke.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <optional>

#include "com/dispatch/argument.h"
#include "com/failure.h"
#include "com/module.h"
#include "com/variant.h"

namespace pv {
namespace {

HRESULT argument_failed(HRESULT result, UINT index, UINT* argument_error) {
  if (argument_error) *argument_error = index;
  return result;
}

/// The arguments of an invocation, found by the position or name of a parameter.
class Arguments {
 public:
  Arguments(const Member& member, const DISPPARAMS& given) : member_(member), given_(given) {}

  // Surplus and badly named arguments are refused, with their index.
  HRESULT validate(UINT* argument_error) const {
    const std::size_t expected = member_.parameter_count() - (names_new_value() ? 1 : 0);
    const UINT positional = given_.cArgs - given_.cNamedArgs;
    if (positional > expected) {
      return argument_failed(DISP_E_BADPARAMCOUNT, static_cast<UINT>(given_.cArgs - 1 - expected),
                             argument_error);
    }
    for (UINT i = 0; i < given_.cNamedArgs; ++i) {
      const std::size_t parameter = parameter_named(given_.rgdispidNamedArgs[i]);
      bool fits = parameter >= positional && parameter < member_.parameter_count();
      for (UINT k = 0; k < i; ++k) {
        fits = fits && parameter_named(given_.rgdispidNamedArgs[k]) != parameter;
      }
      if (!fits) return argument_failed(DISP_E_PARAMNOTFOUND, i, argument_error);
    }
    return S_OK;
  }

  // Index into rgvarg, or nothing for an omitted argument.
  std::optional<UINT> index_of(std::size_t parameter) const {
    const UINT positional = given_.cArgs - given_.cNamedArgs;
    for (UINT i = 0; i < given_.cNamedArgs; ++i) {
      if (parameter_named(given_.rgdispidNamedArgs[i]) == parameter) return i;
    }
    if (parameter < positional) return static_cast<UINT>(given_.cArgs - 1 - parameter);
    return std::nullopt;
  }

  const VARIANT* at(std::optional<UINT> index) const {
    return index ? &given_.rgvarg[*index] : nullptr;
  }

 private:
  // The new value of a property is its last parameter; no parameter has the place SIZE_MAX.
  std::size_t parameter_named(DISPID name) const {
    if (name == DISPID_PROPERTYPUT && member_.is_put()) return member_.parameter_count() - 1;
    return name < 0 ? SIZE_MAX : static_cast<std::size_t>(name);
  }

  bool names_new_value() const {
    const DISPID* names = given_.rgdispidNamedArgs;
    return member_.is_put() && std::find(names, names + given_.cNamedArgs, DISPID_PROPERTYPUT) !=
                                   names + given_.cNamedArgs;
  }

  const Member& member_;
  const DISPPARAMS& given_;
};

/// The arguments that are brought to the types of their parameters: made as the member needs them.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): only places below count_ are in use.
class BoundArguments {
 public:
  static constexpr std::size_t kMost = 16;

  BoundArguments() = default;
  BoundArguments(const BoundArguments&) = delete;
  BoundArguments& operator=(const BoundArguments&) = delete;
  ~BoundArguments() { std::destroy_n(first(), count_); }

  Argument& add(std::optional<UINT> index) {
    indices_[count_] = index.value_or(0);
    return *std::construct_at(first() + count_++);
  }

  /// What the member changed goes back to the variables of the caller.
  HRESULT write_back(UINT* argument_error) {
    for (std::size_t i = 0; i < count_; ++i) {
      const HRESULT written = first()[i].write_back();
      if (FAILED(written)) return argument_failed(written, indices_[i], argument_error);
    }
    return S_OK;
  }

 private:
  Argument* first() { return std::launder(reinterpret_cast<Argument*>(places_)); }

  alignas(Argument) std::byte places_[kMost * sizeof(Argument)];
  UINT indices_[kMost];  // of the caller's arguments
  std::size_t count_ = 0;
};

HRESULT fill_exception(HRESULT result, EXCEPINFO* exception) {
  if (!exception) return DISP_E_EXCEPTION;
  Ref<IErrorInfo> info;
  GetErrorInfo(0, info.put());
  *exception = EXCEPINFO{};
  exception->scode = result;
  if (info) {
    info->GetSource(&exception->bstrSource);
    info->GetDescription(&exception->bstrDescription);
    info->GetHelpFile(&exception->bstrHelpFile);
    info->GetHelpContext(&exception->dwHelpContext);
  }
  return DISP_E_EXCEPTION;
}

HRESULT call_member(void* object, const Member& member, const DISPPARAMS& given, VARIANT* result,
                    EXCEPINFO* exception, UINT* argument_error) {
  const Arguments arguments(member, given);
  if (const HRESULT valid = arguments.validate(argument_error); FAILED(valid)) return valid;

  const std::size_t count = member.parameter_count();
  if (count > BoundArguments::kMost) return E_UNEXPECTED;
  BoundArguments bound;
  Argument result_value;
  CallWords words;
  words.push(object);
  for (std::size_t i = 0; i < count; ++i) {
    const Parameter parameter = member.parameter(i);
    const std::optional<UINT> index = arguments.index_of(i);
    const VARIANT* const source = arguments.at(index);
    if (!words.has_room_for(Argument::words_of(parameter) + 1)) return E_UNEXPECTED;
    if (const void* plain = plain_argument(source, parameter)) {
      words.push_value(plain, size_of(parameter.type()));
      continue;
    }
    Argument& argument = bound.add(index);
    const HRESULT binding = argument.bind(source, parameter);
    if (!index && binding == DISP_E_PARAMNOTOPTIONAL) return DISP_E_BADPARAMCOUNT;
    if (FAILED(binding)) return argument_failed(binding, index.value_or(0), argument_error);
    argument.push_to(words);
  }
  if (member.has_result()) {
    result_value.bind_result(member.result());
    result_value.push_to(words);
  }

  const HRESULT called = call_vtable(object, member.slot(), words);
  if (FAILED(called)) return fill_exception(called, exception);

  if (const HRESULT written = bound.write_back(argument_error); FAILED(written)) return written;
  if (result && member.has_result()) *result = result_value.take();
  return S_OK;
}

// "Variables(2)" on a property without parameters means the default member of its result.
bool means_default_of_result(const Member& member, const DISPPARAMS& given) {
  return member.kind() == INVOKE_PROPERTYGET && member.parameter_count() == 0 && given.cArgs > 0 &&
         member.has_result() && member.result().type() == VT_DISPATCH;
}

HRESULT invoke_default_of_result(void* object, const Member& member, DISPPARAMS* given,
                                 VARIANT* result, EXCEPINFO* exception, UINT* argument_error) {
  Variant collection;
  DISPPARAMS none{};
  const HRESULT got = call_member(object, member, none, &collection, exception, argument_error);
  if (FAILED(got)) return got;
  if (!collection.pdispVal) {
    SetErrorInfo(0, make_error_info(library().name, error_text(ErrorCode::kObjectNotSet)).get());
    return fill_exception(hresult_of(ErrorCode::kObjectNotSet), exception);
  }
  return collection.pdispVal->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT,
                                     DISPATCH_METHOD | DISPATCH_PROPERTYGET, given, result,
                                     exception, argument_error);
}

}  // namespace

HRESULT ids_of_names(const DispatchTable& table, REFIID iid, LPOLESTR* names, UINT count,
                     DISPID* ids) noexcept {
  if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  if (!names || !ids) return E_POINTER;
  if (count == 0) return E_INVALIDARG;
  ids[0] = names[0] ? table.id_of(names[0]) : DISPID_UNKNOWN;
  bool all_known = ids[0] != DISPID_UNKNOWN;
  for (UINT i = 1; i < count; ++i) {
    ids[i] = ids[0] != DISPID_UNKNOWN && names[i] ? table.parameter_id(ids[0], names[i])
                                                  : DISPID_UNKNOWN;
    all_known = all_known && ids[i] != DISPID_UNKNOWN;
  }
  return all_known ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT invoke(IDispatch* object, const DispatchTable& table, DISPID id, REFIID iid, WORD flags,
               DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
               UINT* argument_error) noexcept {
  const Ref<IUnknown> alive(object);
  if (result) result->vt = VT_EMPTY;
  if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  DISPPARAMS none{};
  DISPPARAMS* given = parameters ? parameters : &none;
  if (given->cNamedArgs > given->cArgs) return DISP_E_BADPARAMCOUNT;
  try {
    const std::optional<Member> member = table.find(id, flags);
    if (!member) return DISP_E_MEMBERNOTFOUND;
    if (means_default_of_result(*member, *given)) {
      return invoke_default_of_result(object, *member, given, result, exception, argument_error);
    }
    return call_member(object, *member, *given, result, exception, argument_error);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace pv
