// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "NorvakProtocol.h"
#include "automation_object.h"

namespace fluxor {

/// The transmitter server of the Fluxor: the object that a host attaches to pvItems32.CTxm.Server.
/// Owns the item database, units, display lists, functions and protocols of one transmitter and
/// talks to it. Every member that the library calls by name is in the constructor's tables.
class FluxorServer final : public AutomationObject {
 public:
  FluxorServer();

 private:
  void offer_data();
  void offer_settings();
  void offer_exchanges();
  void offer_outcome();
  void offer_pictures_and_functions();

  bool load(const std::wstring& name);
  void forget_values();
  bool save(const std::wstring& name);

  /// The protocol object behind the active protocol, with its port open; empty when there is none.
  ComPtr<_CProtocol> active_protocol(short port, const std::wstring& settings);
  bool exchange_item(Arguments& arguments,
                     HRESULT (STDMETHODCALLTYPE _CProtocol::*member)(short, _CItem**,
                                                                     VARIANT_BOOL*));
  bool read_display(Arguments& arguments);
  bool read_password(Arguments& arguments);
  bool auto_connect(Arguments& arguments);
  bool connect(short address, short port, const std::wstring& settings, std::wstring& version);

  short configure(const std::wstring& message);

  ComPtr<_CItems> items_ = create<_CItems>(CLSID_CItems);
  ComPtr<_CDimensions> dimensions_ = create<_CDimensions>(CLSID_CDimensions);
  ComPtr<_CDLists> lists_ = create<_CDLists>(CLSID_CDLists);
  ComPtr<_CFunctions> functions_ = create<_CFunctions>(CLSID_CFunctions);
  ComPtr<_CProtocols> protocols_ = create<_CProtocols>(CLSID_CProtocols);
  ComPtr<NorvakProtocol> norvak_;
  std::wstring file_name_;
};

}  // namespace fluxor
