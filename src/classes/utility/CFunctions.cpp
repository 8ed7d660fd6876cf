// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/CFunctions.h"

#include "com/call.h"

namespace pv {

template ClassEntry class_entry<CFunctions>();

STDMETHODIMP CFunctions::Add(VARIANT key, IDispatch* server_form, DATE version_date, BSTR version,
                             short picture_id, FunctionTypes* type, short protection,
                             _CFunction** result) noexcept {
  return method_with_result(result, [&] {
    auto function = make<CFunction>();
    const Ref<_CFunction> properties = function;
    const Variant plain_key = dereferenced(key);
    call(properties, &_CFunction::put_Key, plain_key);
    call(properties, &_CFunction::put_Index, static_cast<short>(list_.size() + 1));
    call(properties, &_CFunction::put_VerDateTime, version_date);
    call(properties, &_CFunction::put_Version, version);
    call(properties, &_CFunction::put_PictureID, picture_id);
    if (type && *type == 0) *type = pvFuncButton;
    call(properties, &_CFunction::put_FuncType, type ? *type : pvFuncButton);
    call(properties, &_CFunction::put_Protected, protection);
    call(properties, &_CFunction::putref_ServerForm, server_form);
    list_.append(function, optional_text(plain_key));
    return function;
  });
}

}  // namespace pv
