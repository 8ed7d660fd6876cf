// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/txm/CTxm.h"
#include "com/call.h"
#include "core/text/number_text.h"

// The members that the transmitter server answers.
namespace pv {
namespace {

constexpr short kPictureConnected = 200;
constexpr short kPictureNotConnected = 201;

}  // namespace

Ref<_CItem> CTxm::item_with_id(long id) const {
  return result_of(items(), &_CItems::get_Item, Variant(format_integer(id)));
}

STDMETHODIMP CTxm::get_Items(_CItems** result) noexcept {
  return method_with_result(result, [&] { return items(); });
}

STDMETHODIMP CTxm::get_Dimensions(_CDimensions** result) noexcept {
  return method_with_result(result, [&] { return server_.dimensions(); });
}

STDMETHODIMP CTxm::get_Lists(_CDLists** result) noexcept {
  return method_with_result(result, [&] { return server_.lists(); });
}

STDMETHODIMP CTxm::get_Functions(_CFunctions** result) noexcept {
  return method_with_result(result, [&] { return server_.functions(); });
}

STDMETHODIMP CTxm::get_TxmTypeName(BSTR* result) noexcept {
  return method_with_result(result, [&] { return server_.type_name(); });
}

STDMETHODIMP CTxm::get_DefaultItem(_CItem** result) noexcept {
  return method_with_result(result, [&] { return server_.default_item(); });
}

STDMETHODIMP CTxm::get_PictureTransmitter(IPictureDisp** result) noexcept {
  return method_with_result(result, [&] {
    return server_.picture(connected_ ? kPictureConnected : kPictureNotConnected);
  });
}

STDMETHODIMP CTxm::get_PictureFunction(VARIANT function, IPictureDisp** result) noexcept {
  return method_with_result(result, [&] {
    const auto found = result_of(server_.functions(), &_CFunctions::get_Item, function);
    return server_.picture(result_of(found, &_CFunction::get_PictureID));
  });
}

STDMETHODIMP CTxm::get_ComError(ComErrorsType* result) noexcept {
  return method_with_result(result, [&] { return server_.com_error(); });
}

STDMETHODIMP CTxm::get_ComAnswerError(short* result) noexcept {
  return method_with_result(result, [&] { return server_.answer_error(); });
}

STDMETHODIMP CTxm::get_ComAnswerErrorText(BSTR* result) noexcept {
  return method_with_result(result, [&] { return server_.answer_error_text(); });
}

STDMETHODIMP CTxm::FunctionTitle(short* function, BSTR* result) noexcept {
  return method_with_result(result, [&] { return server_.function_title(*required(function)); });
}

STDMETHODIMP CTxm::SendMessage(BSTR message, short* result) noexcept {
  return method_with_result(result, [&] { return server_.send_message(message); });
}

STDMETHODIMP CTxm::GetMessage(BSTR* result) noexcept {
  return method_with_result(result, [&] { return server_.get_message(); });
}

STDMETHODIMP CTxm::StartFunction(VARIANT index_key, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    select_protocol();
    return server_.start_function(dereferenced(index_key), this);
  });
}

// An empty name means the one that is known.
void CTxm::take_file_name(BSTR file_name) {
  if (SysStringLen(file_name) > 0) file_name_ = view_of(file_name);
}

STDMETHODIMP CTxm::LoadSettings(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    take_file_name(file_name);
    return server_ && server_.load_settings(file_name_);
  });
}

STDMETHODIMP CTxm::SaveSettings(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    take_file_name(file_name);
    return server_ && server_.save_settings(file_name_);
  });
}

}  // namespace pv
