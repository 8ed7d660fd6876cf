// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/txm/CProtocols.h"

#include "com/call.h"

namespace pv {

template ClassEntry class_entry<CProtocols>();

STDMETHODIMP CProtocols::Add(IDispatch* server, BSTR name, ProtocolTypes index, BSTR key,
                             _CProtocol** result) noexcept {
  return method_with_result(result, [&] {
    auto protocol = make<CProtocol>();
    const Ref<_CProtocol> properties = protocol;
    call(properties, &_CProtocol::putref_Server, server);
    call(properties, &_CProtocol::put_Name, name);
    call(properties, &_CProtocol::put_Index, index);
    call(properties, &_CProtocol::put_Key, key);
    list_.append(protocol, view_of(key));
    return protocol;
  });
}

}  // namespace pv
