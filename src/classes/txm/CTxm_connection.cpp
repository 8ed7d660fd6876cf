// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "apartment/localized.h"
#include "apartment/shared_objects.h"
#include "classes/txm/CTxm.h"
#include "com/call.h"
#include "core/text/number_text.h"
#include "dialogs/message_box.h"
#include "resources/text_ids.h"

// Finding the transmitter on its port, and the modem.
namespace pv {
namespace {

constexpr short kYesNo = 4;
constexpr short kQuestion = 32;
constexpr short kYes = 6;

}  // namespace

bool CTxm::modem_connected() const {
  if (!is_modem()) return true;
  if (!parent_) return false;
  const LateBound modem = LateBound(parent_).get_object(L"Modem");
  if (!modem) return false;
  if (to_bool(modem.get(L"Connected"))) return true;
  MessageBoxRequest question;
  question.prompt = formatted(txmNameFull) + L"\r\n" + localized(TEXT_MODEM_QUESTION);
  question.title = localized(TEXT_WARNING);
  question.picture = kQuestion;
  question.buttons = kYesNo;
  return show_message_box(question) == kYes && to_bool(modem.call(L"ShowModemDialog"));
}

STDMETHODIMP CTxm::CheckModemConnection(VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return modem_connected(); });
}

bool CTxm::not_connected() {
  const auto events = shared_events();
  disconnect();
  Ref<_CTxm> self(this);
  result_of(events, &_CTxmEvents::TxmNotConnected, self.in_out());
  return false;
}

bool CTxm::auto_connect(bool change_baud) {
  if (off_line_ || !modem_connected()) return not_connected();
  select_protocol();
  const std::wstring port = is_modem() ? localized(TEXT_MODEM_NAME)
                                       : localized(TEXT_PORT_NAME) + format_integer(com_port_);
  const auto events = shared_events();
  result_of(events, &_CTxmEvents::RaiseAutoConnect, Bstr(port + L":" + com_settings_));

  std::optional<std::wstring> version = server_.auto_connect(station(), change_baud, port);
  if (!version) return not_connected();

  // An error of the port object keeps the new version; running out of memory changes nothing.
  version_.swap(*version);
  try {
    com_settings_ = server_.port_settings();
  } catch (const std::bad_alloc&) {
    version_.swap(*version);
    throw;
  }
  connected_ = true;
  Ref<_CTxm> self(this);
  result_of(events, &_CTxmEvents::RaiseTxmConnected, self.in_out());
  return true;
}

STDMETHODIMP CTxm::AutoConnect(VARIANT_BOOL change_baud, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return auto_connect(change_baud != VARIANT_FALSE); });
}

STDMETHODIMP CTxm::ReadDisplay(BSTR* answer, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    required(answer);
    if (off_line_ || !modem_connected()) {
      disconnect();
      return false;
    }
    select_protocol();
    return server_.read_display(station(), answer);
  });
}

}  // namespace pv
