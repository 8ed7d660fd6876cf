// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "FluxorServer.h"

#include <wchar.h>

#include <vector>

#include "functions.h"
#include "item_data.h"
#include "pictures.h"

namespace fluxor {
namespace {

constexpr const wchar_t* kTypeName = L"Fluxor";
constexpr const wchar_t* kDefaultItem = L"1";
constexpr short kSoftwareVersion = 112;  // the item that names the transmitter's software
constexpr std::size_t kVersionRoom = 6;
constexpr const wchar_t* kErrorList = L"ERROR_TEXT";
constexpr const wchar_t* kOtherBaudRates[] = {L"19200", L"9600", L"4800", L"2400", L"1200"};
constexpr short kAttemptsToConnect = 4;  // at each baud rate

// What the device said, in the words of its display list.
std::wstring error_text(const ComPtr<_CDLists>& lists, short code) {
  if (code == 0) return {};
  try {
    const auto list = get(lists, &_CDLists::get_Item, _variant_t(kErrorList));
    const auto members = get(list, &_CDList::get_ListMembers);
    const auto member = get(members, &_CDListMembers::get_Item, text_value(std::to_wstring(code)));
    return get(member, &_CDListMember::get_Caption);
  } catch (const CallFailure&) {  // no such list or member
    return L"Error " + std::to_wstring(code);
  }
}

// The four settings files stand beside each other; a host may name them all or any one.
std::wstring common_name(const std::wstring& file_name) {
  for (const wchar_t* extension : {L".itm", L".ver", L".dim", L".lst"}) {
    if (file_name.size() > 4 &&
        _wcsicmp(file_name.c_str() + file_name.size() - 4, extension) == 0) {
      return file_name.substr(0, file_name.size() - 4);
    }
  }
  return file_name;
}

// Lists and versions are added to those that are there. A file that cannot be loaded changes
// nothing.
template <class Collection>
bool load_anew(const ComPtr<Collection>& collection, REFCLSID class_id, const std::wstring& file) {
  if (!get(create<Collection>(class_id), &Collection::LoadSettingsNew, bstr(file))) return false;
  put(collection, &Collection::Clear);
  return get(collection, &Collection::LoadSettingsNew, bstr(file)) != 0;
}

// Dimensions are appended to a file, and a reader takes the first table in it: so they go to a new
// file, which then replaces the former one.
bool save_anew(const ComPtr<_CDimensions>& dimensions, const std::wstring& file) {
  const std::wstring new_file = file + L".new";
  DeleteFileW(new_file.c_str());
  return get(dimensions, &_CDimensions::SaveSettingsNew, bstr(new_file)) &&
         MoveFileExW(new_file.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING);
}

std::wstring trimmed(const std::wstring& text) {
  const auto first = text.find_first_not_of(L' ');
  if (first == std::wstring::npos) return {};
  return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

// The wanted settings first, then the same at the other baud rates.
std::vector<std::wstring> settings_to_try(const std::wstring& wanted, bool change_baud) {
  std::vector<std::wstring> all{wanted};
  const auto comma = wanted.find(L',');
  if (!change_baud || comma == std::wstring::npos) return all;
  for (const wchar_t* rate : kOtherBaudRates) {
    const std::wstring other = rate + wanted.substr(comma);
    if (other != wanted) all.push_back(other);
  }
  return all;
}

}  // namespace

FluxorServer::FluxorServer() {
  norvak_ = make<NorvakProtocol>([lists = lists_](short code) { return error_text(lists, code); });
  const auto protocol = get(protocols_, &_CProtocols::Add, norvak_.Get(), bstr(L"Norvak"),
                            protNorvak, bstr(L"Norvak"));
  const auto utility = create<_CUtility>(CLSID_CUtility);
  const auto hub = get(utility, &_CUtility::get_TxmEvents);
  put(protocol, &_CProtocol::putref_TxmEvents, hub.Get());
  add_functions(functions_);

  offer_data();
  offer_settings();
  offer_exchanges();
  offer_outcome();
  offer_pictures_and_functions();
}

// --- What the library calls by name --------------------------------------------------------------

void FluxorServer::offer_data() {
  property(L"Items", [this](Arguments&) { return object_value(items_.Get()); });
  property(L"Dimensions", [this](Arguments&) { return object_value(dimensions_.Get()); });
  property(L"Lists", [this](Arguments&) { return object_value(lists_.Get()); });
  property(L"Functions", [this](Arguments&) { return object_value(functions_.Get()); });
  property(L"Protocols", [this](Arguments&) { return object_value(protocols_.Get()); });
  property(L"TypeName", [](Arguments&) { return _variant_t(kTypeName); });
  property(L"DefaultItem", [this](Arguments&) {
    return object_value(get(items_, &_CItems::get_Item, _variant_t(kDefaultItem)).Get());
  });
  property(
      L"Version", [this](Arguments&) { return text_value(get(items_, &_CItems::get_Version)); },
      [this](Arguments& arguments) {
        put(items_, &_CItems::put_Version, bstr(arguments.text(0)));
      });
}

void FluxorServer::offer_settings() {
  property(
      L"FileName", [this](Arguments&) { return text_value(file_name_); },
      [this](Arguments& arguments) { file_name_ = arguments.text(0); });
  method(L"LoadSettings",
         [this](Arguments& arguments) { return _variant_t(load(arguments.text(0))); });
  method(L"SaveSettings",
         [this](Arguments& arguments) { return _variant_t(save(arguments.text(0))); });
}

void FluxorServer::offer_exchanges() {
  method(L"ReadTxm", [this](Arguments& arguments) {
    return _variant_t(exchange_item(arguments, &_CProtocol::ReadTxm));
  });
  method(L"WriteTxm", [this](Arguments& arguments) {
    return _variant_t(exchange_item(arguments, &_CProtocol::WriteTxm));
  });
  method(L"ReadDisplay",
         [this](Arguments& arguments) { return _variant_t(read_display(arguments)); });
  method(L"ReadPassword",
         [this](Arguments& arguments) { return _variant_t(read_password(arguments)); });
  method(L"AutoConnect",
         [this](Arguments& arguments) { return _variant_t(auto_connect(arguments)); });
  property(L"GetComObject", [this](Arguments&) { return object_value(norvak_->port().Get()); });
}

void FluxorServer::offer_outcome() {
  property(L"ComError",
           [this](Arguments&) { return _variant_t(static_cast<long>(norvak_->error())); });
  property(L"ComAnswerError", [this](Arguments&) { return _variant_t(norvak_->answer_error()); });
  property(L"ComAnswerErrorText",
           [this](Arguments&) { return text_value(norvak_->answer_error_text()); });
  // A channel of this server's own: SendMessage sets it up, GetMessage tells how it is.
  method(L"SendMessage",
         [this](Arguments& arguments) { return _variant_t(configure(arguments.text(0))); });
  method(L"GetMessage", [this](Arguments&) { return text_value(norvak_->summary()); });
}

void FluxorServer::offer_pictures_and_functions() {
  method(L"Picture", [](Arguments& arguments) {
    return object_value(make_picture(arguments.integer(0)).Get());
  });
  method(L"FunctionTitle",
         [](Arguments& arguments) { return text_value(function_title(arguments.integer(0))); });
  method(L"StartFunction", [this](Arguments& arguments) {
    const auto function = get(functions_, &_CFunctions::get_Item, arguments.value(0));
    return _variant_t(get(function, &_CFunction::Start, arguments.required<_CTxm>(1).Get()) != 0);
  });
}

// --- Settings ------------------------------------------------------------------------------------

bool FluxorServer::load(const std::wstring& name) {
  file_name_ = name;
  const std::wstring common = common_name(name);
  const auto versions = get(items_, &_CItems::get_Versions);
  const bool loaded = get(dimensions_, &_CDimensions::LoadSettingsNew, bstr(common + L".dim")) &&
                      load_anew(lists_, CLSID_CDLists, common + L".lst") &&
                      get(items_, &_CItems::LoadSettingsNew, bstr(common + L".itm")) &&
                      load_anew(versions, CLSID_CVersions, common + L".ver");
  forget_values();
  return loaded;
}

// No value is known before it was read. A selected version would hide the items that it lacks.
void FluxorServer::forget_values() {
  const std::wstring version = get(items_, &_CItems::get_Version);
  put(items_, &_CItems::put_Version, bstr(L""));
  const long count = get(items_, &_CItems::get_AllItemCount);
  for (long i = 1; i <= count; ++i) {
    if (const auto item = get(items_, &_CItems::get_Item, _variant_t(i))) set_dirty(item, true);
  }
  put(items_, &_CItems::put_Version, bstr(version));
}

bool FluxorServer::save(const std::wstring& name) {
  file_name_ = name;
  const std::wstring common = common_name(name);
  const auto versions = get(items_, &_CItems::get_Versions);
  return save_anew(dimensions_, common + L".dim") &&
         get(lists_, &_CDLists::SaveSettingsNew, bstr(common + L".lst")) &&
         get(items_, &_CItems::SaveSettingsNew, bstr(common + L".itm")) &&
         get(versions, &_CVersions::SaveSettingsNew, bstr(common + L".ver"));
}

// --- Exchanges -----------------------------------------------------------------------------------

ComPtr<_CProtocol> FluxorServer::active_protocol(short port, const std::wstring& settings) {
  const ProtocolTypes wanted = get(protocols_, &_CProtocols::get_ActiveProtocol);
  const long count = get(protocols_, &_CProtocols::get_Count);
  for (long i = 1; i <= count; ++i) {
    auto protocol = get(protocols_, &_CProtocols::get_Item, _variant_t(i));
    if (get(protocol, &_CProtocol::get_Index) != wanted) continue;
    return norvak_->open(port, settings) ? protocol : nullptr;
  }
  norvak_->set_error(ComErrIllegalCommand);
  return nullptr;
}

// Address, item, port, port settings. The item that the protocol leaves becomes the caller's.
bool FluxorServer::exchange_item(Arguments& arguments,
                                 HRESULT (STDMETHODCALLTYPE _CProtocol::*member)(short, _CItem**,
                                                                                 VARIANT_BOOL*)) {
  auto item = arguments.required<_CItem>(1);
  const auto protocol = active_protocol(arguments.integer(2), arguments.text(3));
  if (!protocol) {
    set_dirty(item, true);
    return false;
  }
  const bool done = get(protocol, member, arguments.integer(0), item.GetAddressOf()) != 0;
  arguments.set(1, object_value(item.Get()));
  return done;
}

// Address, answer, port, port settings.
bool FluxorServer::read_display(Arguments& arguments) {
  const auto protocol = active_protocol(arguments.integer(2), arguments.text(3));
  _bstr_t text = bstr(L"");
  if (!protocol ||
      !get(protocol, &_CProtocol::ReadDisplay, arguments.integer(0), &text.GetBSTR())) {
    return false;
  }
  arguments.set(1, _variant_t(text));
  return true;
}

// Address, level, port, port settings.
bool FluxorServer::read_password(Arguments& arguments) {
  short level = 0;
  if (!active_protocol(arguments.integer(2), arguments.text(3)) ||
      !norvak_->read_password_level(arguments.integer(0), level)) {
    return false;
  }
  arguments.set(1, _variant_t(level));
  return true;
}

// Whether to change the baud rate, address, port, port settings, text that becomes the version.
bool FluxorServer::auto_connect(Arguments& arguments) {
  const short address = arguments.integer(1);
  const short port = arguments.integer(2);
  for (const std::wstring& settings : settings_to_try(arguments.text(3), arguments.flag(0))) {
    std::wstring version;
    if (!connect(address, port, settings, version)) continue;
    arguments.set(4, text_value(version));
    return true;
  }
  return false;
}

bool FluxorServer::connect(short address, short port, const std::wstring& settings,
                           std::wstring& version) {
  if (!active_protocol(port, settings)) return false;
  const short attempts = norvak_->attempts();
  norvak_->set_attempts(kAttemptsToConnect);
  const bool connected = norvak_->read_raw(address, kSoftwareVersion, kVersionRoom, version);
  norvak_->set_attempts(attempts);
  version = trimmed(version);
  return connected;
}

// "Attempts=6", "ResponseTime=0.5" (seconds): 1 when understood, else 0.
short FluxorServer::configure(const std::wstring& message) {
  const auto equals = message.find(L'=');
  if (equals == std::wstring::npos) return 0;
  const std::wstring name = message.substr(0, equals);
  const double value = std::wcstod(message.c_str() + equals + 1, nullptr);
  if (value <= 0 || value > 100) return 0;
  if (_wcsicmp(name.c_str(), L"Attempts") == 0) {
    norvak_->set_attempts(static_cast<short>(value));
  } else if (_wcsicmp(name.c_str(), L"ResponseTime") == 0) {
    norvak_->set_response_time(value);
  } else {
    return 0;
  }
  return 1;
}

}  // namespace fluxor
