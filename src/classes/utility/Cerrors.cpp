// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/Cerrors.h"

#include "com/call.h"

namespace pv {

template ClassEntry class_entry<Cerrors>();

void Cerrors::number_members() {
  long position = 0;
  for (const auto& error : list_) call<_CError>(error.get(), &_CError::put_Index, ++position);
}

STDMETHODIMP Cerrors::Remove(VARIANT index) noexcept {
  return method([&] {
    remove(index);
    number_members();
  });
}

STDMETHODIMP Cerrors::Add(VARIANT number, BSTR description, DATE when, VARIANT tag,
                          _CError** result) noexcept {
  return method_with_result(result, [&] {
    auto error = make<CError>();
    const Ref<_CError> properties = error;
    call(properties, &_CError::put_Number, to_long(dereferenced(number)));
    call(properties, &_CError::put_Description, description);
    call(properties, &_CError::put_When, when);
    if (!is_missing(tag)) call(properties, &_CError::put_Tag, tag);
    call(properties, &_CError::put_Index, list_.size() + 1);
    list_.append(error);
    return error;
  });
}

STDMETHODIMP Cerrors::ReIndex() noexcept {
  return method([&] { number_members(); });
}

}  // namespace pv
