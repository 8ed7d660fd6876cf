// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/txm/CTxm.h"

#include "com/call.h"
#include "core/text/number_text.h"
#include "core/txm/txm_name.h"

namespace pv {

template ClassEntry class_entry<CTxm>();

namespace {

constexpr short kModemPort = 9;

}  // namespace

STDMETHODIMP CTxm::get_Server(IDispatch** result) noexcept {
  return method_with_result(result, [&] { return server_.object(); });
}

STDMETHODIMP CTxm::putref_Server(IDispatch* value) noexcept {
  return method([&] { server_ = TransmitterServer(Ref<IDispatch>(value)); });
}

STDMETHODIMP CTxm::get_FileName(BSTR* result) noexcept {
  return method_with_result(result, [&] { return server_ ? server_.file_name() : file_name_; });
}

STDMETHODIMP CTxm::put_FileName(BSTR value) noexcept {
  return method([&] {
    file_name_ = view_of(value);
    if (server_) server_.set_file_name(file_name_);
  });
}

bool CTxm::is_modem() const { return com_port_ == kModemPort; }

STDMETHODIMP CTxm::get_Modem(VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return is_modem(); });
}

// The modem is chosen by its port number alone.
STDMETHODIMP CTxm::put_Modem(VARIANT_BOOL) noexcept {
  return method([] {});
}

// The type name comes from the server, so it is asked for only where it is shown.
std::wstring CTxm::formatted(int parts) const {
  const bool with_type = (parts & kNameType) != 0;
  return formatted_name({index_, name_, with_type ? server_.type_name() : std::wstring()}, parts);
}

STDMETHODIMP CTxm::NameFormatted(TxmNameTypes mode, BSTR* result) noexcept {
  return method_with_result(result, [&] { return formatted(mode); });
}

std::wstring CTxm::item_label(_CItem* item) const {
  return format_integer(result_of(item, &_CItem::get_ItemID)) + L", " +
         result_of(item, &_CItem::get_Caption, short{1});
}

}  // namespace pv
