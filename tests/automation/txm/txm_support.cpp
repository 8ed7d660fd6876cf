// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/automation/txm/txm_support.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/letter_case.h"
#include "tests/support/dialogs/child_window.h"

namespace pv::test {

namespace {

std::string type_name(VARTYPE type) {
  switch (type) {
    case VT_I2:
      return "I2";
    case VT_I4:
      return "I4";
    case VT_R4:
      return "R4";
    case VT_R8:
      return "R8";
    case VT_BOOL:
      return "BOOL";
    case VT_BSTR:
      return "BSTR";
    case VT_DISPATCH:
      return "DISPATCH";
    case VT_VARIANT:
      return "VARIANT";
    case VT_EMPTY:
      return "EMPTY";
    default:
      return "VT " + std::to_string(type);
  }
}

}  // namespace

std::string CallLog::plain_text(const Value& value) const {
  if (value.is_object()) {
    if (value.is_nothing()) return "Nothing";
    const auto found = std::find_if(names_.begin(), names_.end(),
                                    [&](const auto& entry) { return entry.first == value; });
    return found == names_.end() ? "object" : found->second;
  }
  if (value.is_text()) return '"' + printable(value.text()) + '"';
  if (value.vt == VT_BOOL) return value.boolVal == VARIANT_TRUE ? "True" : "False";
  if (value.is_whole_number()) return std::to_string(value.number());
  if (value.vt == VT_R4 || value.vt == VT_R8) return std::to_string(value.real());
  return "";
}

std::string CallLog::text_of(const VARIANT& value) const {
  const Value plain(dereferenced(value));
  std::string type = type_name(static_cast<VARTYPE>(value.vt & ~VT_BYREF));
  if (value.vt & VT_BYREF) type += '&';
  if (value.vt == (VT_BYREF | VT_VARIANT)) type += ' ' + type_name(plain.vt);
  const std::string content = plain_text(plain);
  return content.empty() ? type : type + ' ' + content;
}

class HostDispatch final : public DispatchObject {
 public:
  HostDispatch(CallLog& log, std::string name, HostObject::Kind kind)
      : DispatchObject(kind), log_(&log), name_(std::move(name)) {
    lacks(L"apply");  // it is no function of a script
  }

  void on(const std::wstring& member, HostObject::Action action) {
    actions_[key_case().fold(member)] = std::move(action);
  }
  void lacks(const std::wstring& member) { lacking_.push_back(key_case().fold(member)); }
  void numbers(const std::vector<std::wstring>& members) { members_ = members; }
  // The log and the actions belong to a test that is over.
  void retire() {
    log_ = nullptr;
    actions_.clear();
  }

  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override {
    if (!log_ || id < 1 || id > static_cast<DISPID>(members_.size())) return DISP_E_MEMBERNOTFOUND;
    const Ref<HostDispatch> alive(this);
    const std::wstring member = members_[static_cast<std::size_t>(id - 1)];
    const Arguments arguments(*parameters);
    log_->add(line_of(member, flags, arguments));
    const auto found = actions_.find(key_case().fold(member));
    if (found == actions_.end()) return S_OK;
    const HostObject::Action action = found->second;  // it may be replaced meanwhile
    try {
      Value answer = action(arguments);
      if (result) *result = answer.detach();
      return S_OK;
    } catch (const HostError& error) {
      return raise(error, exception);
    } catch (const std::exception& error) {
      ADD_FAILURE() << printable(member) << ": " << error.what();
      return E_FAIL;
    }
  }

 private:
  DISPID id_of(std::wstring_view name) override {
    const std::wstring folded = key_case().fold(name);
    if (std::count(lacking_.begin(), lacking_.end(), folded)) return DISPID_UNKNOWN;
    auto found = std::find_if(members_.begin(), members_.end(), [&](const auto& member) {
      return key_case().fold(member) == folded;
    });
    if (found == members_.end()) found = members_.insert(found, std::wstring(name));
    return static_cast<DISPID>(found - members_.begin() + 1);
  }
  std::string line_of(const std::wstring& member, WORD flags, const Arguments& arguments) const {
    const bool is_set = (flags & DISPATCH_PROPERTYPUTREF) != 0;
    const bool is_put = is_set || (flags & DISPATCH_PROPERTYPUT) != 0;
    const std::string kind = is_set                          ? "set "
                             : is_put                        ? "put "
                             : flags == DISPATCH_PROPERTYGET ? "get "
                                                             : "call ";
    std::string list;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      list += (i ? ", " : "") + log_->text_of(arguments[i]);
    }
    const std::string line = kind + name_ + "." + printable(member);
    if (is_put) return line + " = " + list;
    return list.empty() ? line : line + "(" + list + ")";
  }

  CallLog* log_;
  const std::string name_;
  std::vector<std::wstring> members_;
  std::vector<std::wstring> lacking_;
  std::map<std::wstring, HostObject::Action> actions_;
};

HostObject::HostObject(CallLog& log, std::string name, Kind kind)
    : dispatch_(new HostDispatch(log, name, kind)) {
  log.name(Value(get()), std::move(name));
}
HostObject::~HostObject() { dispatch_->retire(); }
void HostObject::on(const std::wstring& member, Action action) {
  dispatch_->on(member, std::move(action));
}
void HostObject::answer(const std::wstring& member, Value value) {
  on(member, [value](const Arguments&) { return value; });
}
void HostObject::fail(const std::wstring& member, HostError error) {
  on(member, [error](const Arguments&) -> Value { throw error; });
}
void HostObject::lacks(const std::wstring& member) { dispatch_->lacks(member); }
void HostObject::numbers(const std::vector<std::wstring>& members) { dispatch_->numbers(members); }
ULONG HostObject::references() const { return references_of(get()) - 1; }
IDispatch* HostObject::get() const { return dispatch_.get(); }

ItemVariable::ItemVariable(const Object& item) : item_(Ref<IDispatch>(item.get()).detach()) {}
ItemVariable::~ItemVariable() {
  if (item_) item_->Release();
}
// The test client copies argument values, and a copied reference still leads here.
ItemVariable::operator Value() const {
  VARIANT reference = by_ref(const_cast<IDispatch*&>(item_));
  return Value(reference);
}

Transmitter::Transmitter(HostObject::Kind kind)
    : server(log, "server", kind),
      protocols(log, "protocols", kind),
      application(log, "application") {
  server.answer(L"Protocols", protocols);
  server.answer(L"Items", items);
  server.answer(L"Dimensions", dimensions);
  server.answer(L"Lists", lists);
  server.answer(L"TypeName", L"Fluxor");
  application.answer(L"Title", L"Kalvos 7");
  txm.set(L"Server", server.get());
  log.name(txm, "txm");
}

Transmitter::~Transmitter() {
  utility.try_set(L"Application", Value::nothing());
  txm.try_set(L"Server", Value::nothing());
}

Object Transmitter::add_item(short id, short access, bool historian, const Value& value) {
  const Object item = items.call_object(L"Add", std::to_wstring(id), id, true, access, historian,
                                        false, 0.5f, 4, Value::missing());
  item.get_object(L"Variables")
      .call(L"Add", L"1", L"Caption 1", L"", L"", 0, 17, 1, 2, value, 0, 4);
  return item;
}

void Transmitter::device_answers(bool answer) {
  server.answer(L"ReadTxm", answer);
  server.answer(L"WriteTxm", answer);
}

Lines Transmitter::exchange_lines(const std::string& method, const std::string& item) const {
  return {"get server.Protocols", "put protocols.ActiveProtocol = I4 1",
          "call server." + method + "(I2 1, DISPATCH& " + item + ", I2 1, BSTR \"4800,n,8,1\")"};
}

Lines joined(std::initializer_list<Lines> parts) {
  Lines all;
  for (const Lines& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

namespace {

constexpr DWORD kPause = 5;        // milliseconds between two looks
constexpr DWORD kPatience = 1000;  // milliseconds after which a button is pressed again
constexpr wchar_t kResponded[] = L"pv.responded";

BOOL CALLBACK take_dialog(HWND window, LPARAM result) {
  const HWND button = child_window(window, DialogResponder::kFirst);
  if (!button || !IsWindowVisible(button) || !IsWindowEnabled(window)) return TRUE;
  *reinterpret_cast<HWND*>(result) = window;
  return FALSE;
}

// A thread that was busy with other tests for seconds counts as hung, and is waited for all the
// same.
std::wstring window_text(HWND window) {
  wchar_t text[1024] = L"";
  DWORD_PTR length = 0;
  SendMessageTimeoutW(window, WM_GETTEXT, ARRAYSIZE(text), reinterpret_cast<LPARAM>(text),
                      SMTO_NORMAL, 2000, &length);
  return {text, static_cast<std::size_t>(length)};
}

BOOL CALLBACK note_control(HWND control, LPARAM texts) {
  if (IsWindowVisible(control)) {
    (*reinterpret_cast<std::map<int, std::wstring>*>(texts))[GetDlgCtrlID(control)] =
        window_text(control);
  }
  return TRUE;
}

}  // namespace

DialogResponder::DialogResponder(int button, std::map<int, std::wstring> typed)
    : thread_(GetCurrentThreadId()),
      button_(button),
      typed_(std::move(typed)),
      stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      responder_([this] {
        while (WaitForSingleObject(stop_, kPause) == WAIT_TIMEOUT) {
          HWND dialog = nullptr;
          EnumThreadWindows(thread_, &take_dialog, reinterpret_cast<LPARAM>(&dialog));
          if (dialog) respond(dialog);
        }
      }) {}

DialogResponder::~DialogResponder() {
  SetEvent(stop_);
  responder_.join();
  CloseHandle(stop_);
}

void DialogResponder::respond(HWND dialog) {
  const auto now = static_cast<std::intptr_t>(GetTickCount() | 1);
  const auto before = reinterpret_cast<std::intptr_t>(GetPropW(dialog, kResponded));
  if (before && static_cast<DWORD>(now - before) < kPatience) return;
  if (!before) {
    Shown shown{window_text(dialog), {}};
    EnumChildWindows(dialog, &note_control, reinterpret_cast<LPARAM>(&shown.texts));
    shown_.push_back(std::move(shown));
  }
  SetPropW(dialog, kResponded, reinterpret_cast<HANDLE>(now));
  for (const auto& [id, text] : typed_) {
    SendMessageTimeoutW(child_window(dialog, id), WM_SETTEXT, 0,
                        reinterpret_cast<LPARAM>(text.c_str()), SMTO_NORMAL, 2000, nullptr);
  }
  if (button_ == kCloseBox) {
    PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
  } else {
    PostMessageW(child_window(dialog, button_), BM_CLICK, 0, 0);
  }
}

Connection::Connection(const Object& source, const HostObject& sink, const IID& events) {
  const auto container = source.as<IConnectionPointContainer>();
  if (!container || FAILED(container->FindConnectionPoint(events, point_.put())) ||
      FAILED(point_->Advise(sink.get(), &cookie_))) {
    throw CallFailed("the object takes no listener");
  }
}

void Connection::disconnect() {
  if (cookie_) point_->Unadvise(std::exchange(cookie_, 0));
}

HubListener::HubListener(CallLog& log, const std::string& name) : sink(log, name) {
  sink.numbers({L"Finished", L"Sending", L"Receiving", L"TimeOut", L"SmartWaiting", L"AutoConnet",
                L"TxmConnected", L"TxmNotConnected", L"HistoryChanged", L"ActiveTxmChanged",
                L"TransmitterAdded", L"TransmitterRemoved", L"OnServerLoading", L"OnServerLoaded",
                L"OnAnswerError", L"OnTimeInterrupt", L"OnWindowList"});
}

Object event_hub() { return Object::create(L"pvItems32.CUtility").get_object(L"TxmEvents"); }

}  // namespace pv::test
