#pragma once

#include "classes/txm/CProtocol.h"
#include "com/collection.h"

namespace pv {

class CProtocols final : public Collection<CProtocols, _CProtocols, ::CProtocols, CProtocol,
                                           _CProtocol, Missing::kRaises> {
 public:
  static constexpr const wchar_t* kClassName = L"CProtocols";

  STDMETHODIMP Add(IDispatch* server, BSTR name, ProtocolTypes index, BSTR key,
                   _CProtocol** result) noexcept override;
  STORED(ActiveProtocol, ProtocolTypes, active_protocol_)

 private:
  ProtocolTypes active_protocol_ = protNotDefined;
};

}  // namespace pv
