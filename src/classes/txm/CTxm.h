// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>

#include "com/object.h"
#include "core/access/access_word.h"
#include "host/transmitter_server.h"

namespace pv {

struct TechnicianNote;
class VariableReader;

AUTOMATION_CLASS(CTxm)

/// A transmitter: its settings and state, and the policy of reading and writing. Item data lives in
/// the transmitter server, which is reached by member name.
class CTxm final : public AutomationObject<CTxm> {
 public:
  // Settings and state (CTxm.cpp).
  STDMETHODIMP get_Server(IDispatch** result) noexcept override;
  STDMETHODIMP putref_Server(IDispatch* value) noexcept override;
  STORED(Name, BSTR, name_)
  STDMETHODIMP get_FileName(BSTR* result) noexcept override;
  STDMETHODIMP put_FileName(BSTR value) noexcept override;
  STORED(Version, BSTR, version_)
  STORED(Address, short, address_)
  STORED(ComPort, short, com_port_)
  STORED(ComSettings, BSTR, com_settings_)
  STORED(Protocol, ProtocolTypes, protocol_)
  STORED(TxmType, TransmitterTypes, txm_type_)
  STORED(Index, short, index_)
  STORED(Connected, VARIANT_BOOL, connected_)
  STORED(OffLine, VARIANT_BOOL, off_line_)
  STORED(Selected, VARIANT_BOOL, selected_)
  STORED(Historian, HistorianMode, historian_)
  STORED(HistorianTechName, BSTR, historian_tech_name_)
  STORED(HistorianComment, BSTR, historian_comment_)
  STORED_OBJECT(Parent, IDispatch, parent_)
  STORED(Password, short, password_)
  STDMETHODIMP get_Modem(VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP put_Modem(VARIANT_BOOL value) noexcept override;
  STDMETHODIMP NameFormatted(TxmNameTypes mode, BSTR* result) noexcept override;

  // What the server keeps (CTxm_server.cpp).
  STDMETHODIMP get_Items(_CItems** result) noexcept override;
  STDMETHODIMP get_Dimensions(_CDimensions** result) noexcept override;
  STDMETHODIMP get_Lists(_CDLists** result) noexcept override;
  STDMETHODIMP get_Functions(_CFunctions** result) noexcept override;
  STDMETHODIMP get_TxmTypeName(BSTR* result) noexcept override;
  STDMETHODIMP get_DefaultItem(_CItem** result) noexcept override;
  STDMETHODIMP get_PictureTransmitter(IPictureDisp** result) noexcept override;
  STDMETHODIMP get_PictureFunction(VARIANT function, IPictureDisp** result) noexcept override;
  STDMETHODIMP get_ComError(ComErrorsType* result) noexcept override;
  STDMETHODIMP get_ComAnswerError(short* result) noexcept override;
  STDMETHODIMP get_ComAnswerErrorText(BSTR* result) noexcept override;
  STDMETHODIMP FunctionTitle(short* function, BSTR* result) noexcept override;
  STDMETHODIMP SendMessage(BSTR message, short* result) noexcept override;
  STDMETHODIMP GetMessage(BSTR* result) noexcept override;
  STDMETHODIMP StartFunction(VARIANT index_key, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP LoadSettings(BSTR file_name, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP SaveSettings(BSTR file_name, VARIANT_BOOL* result) noexcept override;

  // Reading, writing and connecting (CTxm_exchange.cpp, CTxm_connection.cpp).
  STDMETHODIMP ReadTxm(_CItem** item, VARIANT_BOOL read_parent, VARIANT_BOOL access_control,
                       VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP WriteTxm(_CItem** item, VARIANT_BOOL access_control,
                        VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP AutoConnect(VARIANT_BOOL change_baud, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP CheckModemConnection(VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP ReadDisplay(BSTR* answer, VARIANT_BOOL* result) noexcept override;

  // Values as shown (CTxm_values.cpp).
  STDMETHODIMP get_ItemValue(_CItem* item, short variable, short unit, short decimals,
                             ShowModeTypes display, VARIANT_BOOL period_as_decimal,
                             VARIANT_BOOL show_meaning, VARIANT* result) noexcept override;
  STDMETHODIMP put_ItemValue(_CItem* item, short variable, short unit, short decimals,
                             ShowModeTypes display, VARIANT_BOOL period_as_decimal,
                             VARIANT_BOOL show_meaning, VARIANT value) noexcept override;
  STDMETHODIMP get_ItemDimID(_CItem* item, short variable, short* result) noexcept override;
  STDMETHODIMP put_ItemDimID(_CItem* item, short variable, short value) noexcept override;
  STDMETHODIMP ItemSlope(_CItem* item, short variable, short unit, float* result) noexcept override;
  STDMETHODIMP ItemOffset(_CItem* item, short variable, short unit,
                          float* result) noexcept override;

  // The audit log (CTxm_historian.cpp).
  STDMETHODIMP DoHistorian(_CItem* item, BSTR tech_name, BSTR comment,
                           VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP DoHistorianX(_CItem* item, BSTR tech_name, BSTR comment,
                            VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP WriteLine(VARIANT_BOOL* result) noexcept override;

  // Password levels (CTxm_access.cpp).
  STDMETHODIMP GetPassword(short* result) noexcept override;
  STDMETHODIMP GetReadPWLevel(_CItem* item, short* result) noexcept override;
  STDMETHODIMP GetWritePWLevel(_CItem* item, short* result) noexcept override;
  STDMETHODIMP IsReadable(_CItem* item, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP IsWriteable(_CItem* item, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP IsPasswordMask(_CItem* item, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP IsUpdatePW(_CItem* item, VARIANT_BOOL* result) noexcept override;

 private:
  /// What becomes of a write. Cancelled: the item is read instead and shows the device's value.
  enum class WriteDecision { kRefused, kCancelled, kUnrecorded, kRecorded };
  /// Dimension and unit that a variable has by reference to other items.
  struct Resolved {
    short dimension = 0;
    short unit = 0;
  };

  // A host may release its last reference within a call: in an event or while the server answers.
  template <class Out, class Body>
  HRESULT method_with_result(Out* out, Body&& body,
                             const char* member = __builtin_FUNCTION()) noexcept {
    const Ref<_CTxm> alive(this);
    return AutomationObject::method_with_result(out, std::forward<Body>(body), member);
  }

  bool is_modem() const;
  std::wstring formatted(int parts) const;
  std::wstring item_label(_CItem* item) const;

  Station station() const { return {address_, com_port_, com_settings_}; }
  Ref<_CItems> items() const { return server_.items(version_); }
  Ref<_CItem> item_with_id(long id) const;
  void take_file_name(BSTR file_name);

  void select_protocol() const { server_.select_protocol(protocol_); }
  bool read(_CItem** item, bool read_parent, bool access_control);
  bool read_parent(_CItem* item) const;
  bool write(_CItem** item, bool access_control);
  WriteDecision decide_write(_CItem* item);
  void refuse(int text, _CItem* item, short level) const;
  void disconnect() { connected_ = false; }

  bool auto_connect(bool change_baud);
  bool modem_connected() const;
  bool not_connected();

  Variant shown_value(_CItem* item, short variable, short unit, short decimals,
                      ShowModeTypes display, bool period_as_decimal, bool show_meaning) const;
  Variant meaning(const VariableReader& variable, ShowModeTypes display, bool show_meaning) const;
  void enter_value(_CItem* item, short variable, short unit, const VARIANT& value) const;
  short dimension_of(_CItem* item, const VariableReader& variable) const;
  std::optional<Resolved> resolve(_CItem* item, short parent) const;
  long selected_item_id(_CItem* selector) const;
  Ref<_CUnit> unit_of(_CItem* item, short variable, short unit) const;

  bool record_change(_CItem* item, const TechnicianNote& note);
  /// The file that the entry went to, nothing when it could not be written.
  std::optional<std::wstring> append_entry(_CItem* item, const TechnicianNote& note);

  AccessRules rules_of(_CItem* item) const;
  short needed_level(_CItem* item, int AccessRules::*level) const;
  bool allows(_CItem* item, int AccessRules::*level) const;
  short password_from_device() const;

  TransmitterServer server_;
  std::wstring name_ = L"Untitled TXM";
  std::wstring file_name_;
  std::wstring version_;
  short address_ = 1;
  short com_port_ = 1;
  std::wstring com_settings_ = L"4800,n,8,1";
  ProtocolTypes protocol_ = protNorvak;
  TransmitterTypes txm_type_ = txmFluxor;
  short index_ = 1;
  bool connected_ = false;
  bool off_line_ = false;
  bool selected_ = false;
  HistorianMode historian_ = histEnabled;
  std::wstring historian_tech_name_;
  std::wstring historian_comment_;
  Ref<IDispatch> parent_;
  short password_ = 0;
};

}  // namespace pv
