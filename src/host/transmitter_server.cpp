// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "host/transmitter_server.h"

#include "com/failure.h"
#include "host/object_argument.h"

namespace pv {
namespace {

template <class I>
Ref<I> object_in(const Variant& answer) {
  const bool is_object = answer.vt == VT_DISPATCH || answer.vt == VT_UNKNOWN;
  if (is_nothing(answer)) return {};
  if (auto object = query<I>(is_object ? answer.punkVal : to_object(answer).get())) return object;
  throw automation_error(ErrorCode::kTypeMismatch,
                         L"the server answered an object of another class");
}

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

// Any other answer is a refusal, including one that is not a number: a text, Null or an object.
bool is_true(const Variant& answer) {
  bool result = false;
  attempt([&] { result = to_double(answer) == VARIANT_TRUE; });
  return result;
}

}  // namespace

template <class I>
Ref<I> TransmitterServer::kept(std::wstring_view property) const {
  return server_ ? object_in<I>(server_.get(property)) : Ref<I>();
}

Ref<_CItems> TransmitterServer::items(const std::wstring& version) const {
  if (!server_) return {};
  server_.put(L"Version", Variant(version));
  return kept<_CItems>(L"Items");
}

Ref<_CDimensions> TransmitterServer::dimensions() const {
  return kept<_CDimensions>(L"Dimensions");
}

Ref<_CDLists> TransmitterServer::lists() const { return kept<_CDLists>(L"Lists"); }

Ref<_CFunctions> TransmitterServer::functions() const { return kept<_CFunctions>(L"Functions"); }

Ref<_CItem> TransmitterServer::default_item() const {
  return object_in<_CItem>(server_.get(L"DefaultItem"));
}

std::wstring TransmitterServer::type_name() const { return to_text(server_.get(L"TypeName")); }

std::wstring TransmitterServer::file_name() const { return to_text(server_.get(L"FileName")); }

void TransmitterServer::set_file_name(const std::wstring& file) const {
  server_.put(L"FileName", Variant(file));
}

// The server gets the name by reference; what it changes there is ignored.
bool TransmitterServer::transfer(std::wstring_view method, const std::wstring& file) const {
  Variant name(file);
  return to_bool(server_.call(method, {ref(name.bstrVal)}));
}

void TransmitterServer::select_protocol(ProtocolTypes protocol) const {
  const LateBound protocols = server_.get_object(L"Protocols");
  protocols.put(L"ActiveProtocol", Variant(static_cast<long>(protocol)));
}

bool TransmitterServer::exchange(std::wstring_view method, const Station& station,
                                 _CItem** item) const {
  ObjectArgument argument(item);
  const Bstr settings(station.settings);
  const Variant answer = server_.call(
      method, {value(station.address), argument.reference(), value(station.port), value(settings)});
  argument.hand_back();
  return to_bool(answer);
}

bool TransmitterServer::read(const Station& station, _CItem** item) const {
  return exchange(L"ReadTxm", station, item);
}

bool TransmitterServer::write(const Station& station, _CItem** item) const {
  return exchange(L"WriteTxm", station, item);
}

bool TransmitterServer::read_display(const Station& station, BSTR* answer) const {
  const Bstr settings(station.settings);
  return to_bool(server_.call(L"ReadDisplay", {value(station.address), ref(*answer),
                                               value(station.port), value(settings)}));
}

std::optional<std::wstring> TransmitterServer::auto_connect(const Station& station,
                                                            bool change_baud,
                                                            const std::wstring& port) const {
  VARIANT_BOOL may_change_baud = change_baud ? VARIANT_TRUE : VARIANT_FALSE;
  Variant version(port);
  const Bstr settings(station.settings);
  const bool found = to_bool(
      server_.call(L"AutoConnect", {ref_boolean(may_change_baud), value(station.address),
                                    value(station.port), value(settings), ref(version.bstrVal)}));
  if (!found) return std::nullopt;
  return to_text(version);
}

std::wstring TransmitterServer::port_settings() const {
  const LateBound port(to_object(server_.call(L"GetComObject")));
  if (to_text(port.get(L"Name")) != L"ActiveHART1") return to_text(port.get(L"Settings"));
  return settings_of_mode(to_long(port.get(L"cComMode")));
}

std::optional<short> TransmitterServer::read_password(const Station& station) const {
  short level = 0;
  const Bstr settings(station.settings);
  const Variant answer = server_.call(
      L"ReadPassword", {value(station.address), ref(level), value(station.port), value(settings)});
  if (!is_true(answer)) return std::nullopt;
  return level;
}

long TransmitterServer::com_error() const { return to_long(server_.get(L"ComError")); }

short TransmitterServer::answer_error() const { return to_short(server_.get(L"ComAnswerError")); }

std::wstring TransmitterServer::answer_error_text() const {
  return to_text(server_.get(L"ComAnswerErrorText"));
}

Ref<IPictureDisp> TransmitterServer::picture(short number) const {
  return object_in<IPictureDisp>(server_.call(L"Picture", {value(number)}));
}

std::wstring TransmitterServer::function_title(short& function) const {
  return to_text(server_.call(L"FunctionTitle", {ref(function)}));
}

bool TransmitterServer::start_function(const VARIANT& index_or_key, IDispatch* txm) const {
  return to_bool(server_.call(L"StartFunction", {index_or_key, value(txm)}));
}

short TransmitterServer::send_message(BSTR message) const {
  short answer = 0;
  attempt([&] { answer = to_short(server_.call(L"SendMessage", {value(message)})); });
  return answer;
}

std::wstring TransmitterServer::get_message() const {
  std::wstring answer;
  attempt([&] { answer = to_text(server_.call(L"GetMessage")); });
  return answer;
}

}  // namespace pv
