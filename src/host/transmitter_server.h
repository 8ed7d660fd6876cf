// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

#include "host/late_bound.h"
#include "pvItems32.h"

namespace pv {

/// Where a transmitter is: its address on the line, and the line.
struct Station {
  short address;
  short port;
  const std::wstring& settings;  // of the port: "4800,n,8,1"
};

/// A transmitter server: one function for each member that docs/server_contract.md asks of it.
/// Errors of the server pass to the caller; an empty reference raises kObjectNotSet unless the
/// function says otherwise, an answer that is an object of another class kTypeMismatch.
class TransmitterServer {
 public:
  TransmitterServer() = default;
  explicit TransmitterServer(Ref<IDispatch> server) : server_(std::move(server)) {}

  explicit operator bool() const { return static_cast<bool>(server_); }
  const Ref<IDispatch>& object() const { return server_.object(); }

  // Its objects; Nothing without a server. The version is set before every get of the items.
  Ref<_CItems> items(const std::wstring& version) const;
  Ref<_CDimensions> dimensions() const;
  Ref<_CDLists> lists() const;
  Ref<_CFunctions> functions() const;
  Ref<_CItem> default_item() const;
  std::wstring type_name() const;

  // Its settings files.
  std::wstring file_name() const;
  void set_file_name(const std::wstring& file) const;
  bool load_settings(const std::wstring& file) const { return transfer(L"LoadSettings", file); }
  bool save_settings(const std::wstring& file) const { return transfer(L"SaveSettings", file); }

  // Exchanges with the device. The server may replace the item or the answer.
  void select_protocol(ProtocolTypes protocol) const;
  bool read(const Station& station, _CItem** item) const;
  bool write(const Station& station, _CItem** item) const;
  bool read_display(const Station& station, BSTR* answer) const;
  /// The version of the device that was found. `port` is the name of the port, for the server's
  /// display.
  std::optional<std::wstring> auto_connect(const Station& station, bool change_baud,
                                           const std::wstring& port) const;
  /// The settings of the port object, "?" when its mode is unknown.
  std::wstring port_settings() const;
  /// The open password level, nothing when the server refuses.
  std::optional<short> read_password(const Station& station) const;

  // The last exchange.
  long com_error() const;
  short answer_error() const;
  std::wstring answer_error_text() const;

  // Pictures and functions.
  Ref<IPictureDisp> picture(short number) const;
  std::wstring function_title(short& function) const;
  bool start_function(const VARIANT& index_or_key, IDispatch* txm) const;

  // Messages that host and server agree on; errors are ignored.
  short send_message(BSTR message) const;
  std::wstring get_message() const;

 private:
  template <class I>
  Ref<I> kept(std::wstring_view property) const;
  bool transfer(std::wstring_view method, const std::wstring& file) const;
  bool exchange(std::wstring_view method, const Station& station, _CItem** item) const;

  LateBound server_;
};

}  // namespace pv
