// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/script_host/member_object.h"

#include "tests/script_host/script_text.h"

namespace pv::test {

const Value& required(const MemberObject::Arguments& arguments, std::size_t position) {
  if (position >= arguments.size()) throw CallFailed("an argument is missing");
  return arguments[position];
}

DISPID MemberObject::id_of(std::wstring_view name) {
  for (std::size_t i = 0; i < members_.size(); ++i) {
    if (is_same_name(members_[i].name, name)) return static_cast<DISPID>(i) + 1;
  }
  return DISPID_UNKNOWN;
}

STDMETHODIMP MemberObject::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result,
                                  EXCEPINFO* exception, UINT*) {
  if (id < 1 || static_cast<std::size_t>(id) > members_.size()) return DISP_E_MEMBERNOTFOUND;
  Arguments arguments;
  for (UINT i = given->cArgs; i-- > 0;) {
    arguments.emplace_back(dereferenced(given->rgvarg[i]));
  }
  try {
    Value answer = members_[static_cast<std::size_t>(id) - 1].function(arguments);
    if (result) *result = answer.detach();
    return S_OK;
  } catch (const std::exception& error) {
    return raise({.code = E_FAIL, .source = L"Host", .description = widened(error.what())},
                 exception);
  }
}

}  // namespace pv::test
