// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/txm/CProtocol.h"
#include "com/collection.h"

namespace pv {

AUTOMATION_CLASS(CProtocols)

/// The protocols of a transmitter server.
class CProtocols final : public Collection<CProtocols, CProtocol, Missing::kRaises> {
 public:
  STDMETHODIMP Add(IDispatch* server, BSTR name, ProtocolTypes index, BSTR key,
                   _CProtocol** result) noexcept override;
  STORED(ActiveProtocol, ProtocolTypes, active_protocol_)

 private:
  ProtocolTypes active_protocol_ = protNotDefined;
};

}  // namespace pv
