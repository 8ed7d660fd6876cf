#include "apartment/localized.h"
#include "apartment/shared_objects.h"
#include "classes/txm/CTxm.h"
#include "com/fetch.h"
#include "core/text/number_text.h"
#include "dialogs/message_box.h"

// Finding the transmitter on its port, and the modem.
namespace pv {
namespace {

constexpr int kModemQuestion = 401;
constexpr int kWarning = 402;
constexpr int kPortName = 403;
constexpr int kModemName = 404;
constexpr short kYesNo = 4;
constexpr short kQuestion = 32;
constexpr short kYes = 6;

// Modes of the port object that carries its settings as a number.
std::wstring settings_of_mode(long mode) {
  switch (mode) {
    case 0:
      return L"1200,n,8,1";
    case 1:
      return L"9600,n,8,1";
    case 2:
      return L"19200,n,8,1";
    default:
      return L"?";  // the user sees that the settings are not known
  }
}

}  // namespace

bool CTxm::modem_connected() const {
  if (!is_modem()) return true;
  if (!parent_) return false;
  const LateBound modem = LateBound(parent_).get_object(L"Modem");
  if (!modem) return false;
  if (boolean_of(modem.get(L"Connected"))) return true;
  MessageBoxRequest question;
  question.prompt = formatted(txmNameFull) + L"\r\n" + localized(kModemQuestion);
  question.title = localized(kWarning);
  question.picture = kQuestion;
  question.buttons = kYesNo;
  return show_message_box(question) == kYes && boolean_of(modem.call(L"ShowModemDialog"));
}

STDMETHODIMP CTxm::CheckModemConnection(VARIANT_BOOL* result) noexcept {
  return returning(result, [&] { return modem_connected(); });
}

bool CTxm::not_connected() {
  const auto events = shared_events();
  disconnect();
  Ref<_CTxm> self(this);
  fetch(events, &_CTxmEvents::TxmNotConnected, self.in_out());
  return false;
}

std::wstring CTxm::port_settings() const {
  const LateBound port(object_of(server_.call(L"GetComObject")));
  if (text_of(port.get(L"Name")) != L"ActiveHART1") return text_of(port.get(L"Settings"));
  return settings_of_mode(long_of(port.get(L"cComMode")));
}

bool CTxm::auto_connect(bool change_baud) {
  if (off_line_ || !modem_connected()) return not_connected();
  select_protocol();
  const std::wstring port =
      is_modem() ? localized(kModemName) : localized(kPortName) + integer_text(com_port_);
  const auto events = shared_events();
  fetch(events, &_CTxmEvents::RaiseAutoConnect, Bstr(port + L":" + com_settings_));

  VARIANT_BOOL may_change_baud = change_baud ? VARIANT_TRUE : VARIANT_FALSE;
  Variant version(port);
  const Bstr settings(com_settings_);
  const bool found = boolean_of(
      server_.call(L"AutoConnect", {ref_boolean(may_change_baud), value(address_), value(com_port_),
                                    value(settings), ref(version.bstrVal)}));
  if (!found) return not_connected();

  // An error of the port leaves the version known, but a lack of memory changes nothing.
  std::wstring other_version = text_of(version);
  version_.swap(other_version);
  try {
    com_settings_ = port_settings();
  } catch (const std::bad_alloc&) {
    version_.swap(other_version);
    throw;
  }
  connected_ = true;
  Ref<_CTxm> self(this);
  fetch(events, &_CTxmEvents::RaiseTxmConnected, self.in_out());
  return true;
}

STDMETHODIMP CTxm::AutoConnect(VARIANT_BOOL change_baud, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] { return auto_connect(change_baud != VARIANT_FALSE); });
}

STDMETHODIMP CTxm::ReadDisplay(BSTR* answer, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] {
    required(answer);
    if (off_line_ || !modem_connected()) {
      disconnect();
      return false;
    }
    select_protocol();
    const Bstr settings(com_settings_);
    return boolean_of(server_.call(
        L"ReadDisplay", {value(address_), ref(*answer), value(com_port_), value(settings)}));
  });
}

}  // namespace pv
