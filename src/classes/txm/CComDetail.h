// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "platform/locale.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CComDetail)

/// The record of one exchange with a transmitter.
class CComDetail final : public AutomationObject<CComDetail> {
 public:
  STORED(Key, VARIANT, key_)
  STDMETHODIMP putref_Key(VARIANT value) noexcept override { return put_Key(value); }
  STORED(Protocol, BSTR, protocol_)
  STORED(Connection, short, connection_)
  STORED(ComSettings, BSTR, com_settings_)
  STORED(DataCount, short, data_count_)
  STORED(DateStamp, DATE, date_stamp_)
  STORED(ComError, ComErrorsType, com_error_)
  STORED(State, short, state_)
  STORED(Repeat, short, repeat_)
  STORED(TimeOut, float, time_out_)
  STORED(AnswString, BSTR, answer_)
  STORED(AnswLength, short, answer_length_)
  STORED(AnswData, BSTR, answer_data_)
  STORED(AnswItemID, short, answer_item_id_)
  STORED(AnswError, short, answer_error_)
  STORED(AnswAddress, short, answer_address_)
  STORED(CmdLength, short, command_length_)
  STORED(CmdString, BSTR, command_)
  STORED(CmdData, BSTR, command_data_)
  STORED(CmdLetter, BSTR, command_letter_)
  STORED(CmdItemID, short, command_item_id_)
  STORED(CmdAddress, short, command_address_)
  STORED(TxmType, TransmitterTypes, txm_type_)
  STORED(InBuffer, BSTR, in_buffer_)

 private:
  Variant key_{std::wstring_view(L"1")};
  std::wstring protocol_ = L"0";
  short connection_ = 0;
  std::wstring com_settings_;
  short data_count_ = 0;
  DATE date_stamp_ = current_moment();
  ComErrorsType com_error_ = ComErrNone;
  short state_ = 0;
  short repeat_ = 1;
  float time_out_ = 1.0f;
  std::wstring answer_ = L"0";
  short answer_length_ = 0;
  std::wstring answer_data_;
  short answer_item_id_ = 0;
  short answer_error_ = 0;
  short answer_address_ = 0;
  short command_length_ = 0;
  std::wstring command_;
  std::wstring command_data_;
  std::wstring command_letter_ = L"0";
  short command_item_id_ = 0;
  short command_address_ = 0;
  TransmitterTypes txm_type_ = txmFluxor;
  std::wstring in_buffer_;
};

}  // namespace pv
