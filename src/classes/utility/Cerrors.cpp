#include "classes/utility/Cerrors.h"

#include "com/fetch.h"

namespace pv {

void Cerrors::number_members() {
  long position = 0;
  for (const auto& error : list_) call<_CError>(error.get(), &_CError::put_Index, ++position);
}

STDMETHODIMP Cerrors::Remove(VARIANT index) noexcept {
  return doing([&] {
    remove(index);
    number_members();
  });
}

STDMETHODIMP Cerrors::Add(VARIANT number, BSTR description, DATE when, VARIANT tag,
                          _CError** result) noexcept {
  return returning(result, [&] {
    auto error = make<CError>();
    const Ref<_CError> properties = error;
    call(properties, &_CError::put_Number, long_of(dereferenced(number)));
    call(properties, &_CError::put_Description, description);
    call(properties, &_CError::put_When, when);
    if (!is_missing(tag)) call(properties, &_CError::put_Tag, tag);
    call(properties, &_CError::put_Index, list_.size() + 1);
    list_.append(error);
    return error;
  });
}

STDMETHODIMP Cerrors::ReIndex() noexcept {
  return doing([&] { number_members(); });
}

}  // namespace pv
