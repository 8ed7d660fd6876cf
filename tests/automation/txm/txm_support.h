// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What the tests of transmitters share: host objects whose calls end up, in order and with the
// kinds of their arguments, in one log.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "pvItems32.h"
#include "tests/support/dispatch_object.h"
#include "tests/support/object.h"

namespace pv::test {

/// Lines such as
///   get server.Protocols
///   put protocols.ActiveProtocol = I4 1
///   call server.ReadTxm(I2 1, DISPATCH& item, I2 1, BSTR "4800,n,8,1")
/// "&" marks a reference; a reference to a value, which script objects get, reads "VARIANT& I2 1".
class CallLog {
 public:
  void add(std::string line) { lines_.push_back(std::move(line)); }
  /// Objects appear in the log by these names.
  void name(const Value& object, std::string name) { names_.push_back({object, std::move(name)}); }
  std::string text_of(const VARIANT& value) const;
  /// The lines since the last time they were asked for.
  std::vector<std::string> taken() { return std::exchange(lines_, {}); }

 private:
  std::string plain_text(const Value& value) const;

  std::vector<std::string> lines_;
  std::vector<std::pair<Value, std::string>> names_;
};
using Lines = std::vector<std::string>;

/// The arguments of a call, in the order of the member's parameters.
class Arguments {
 public:
  explicit Arguments(const DISPPARAMS& given) : given_(given) {}
  std::size_t size() const { return given_.cArgs; }
  const VARIANT& operator[](std::size_t i) const { return given_.rgvarg[size() - 1 - i]; }
  Value value(std::size_t i) const { return Value(dereferenced((*this)[i])); }
  /// Changes the variable behind a by-reference argument.
  void set(std::size_t i, const Value& value) const { change_argument((*this)[i], value); }

 private:
  const DISPPARAMS& given_;
};

/// Thrown by an action of a host object: the error that the caller gets.
using HostError = RaisedError;

class HostDispatch;

/// An object of the host. It knows every member, notes each call in the log, and answers with what
/// the test says (nothing otherwise).
class HostObject {
 public:
  using Kind = ObjectKind;
  using Action = std::function<Value(const Arguments&)>;

  HostObject(CallLog& log, std::string name, Kind kind = Kind::kCompiled);
  HostObject(const HostObject&) = delete;
  HostObject& operator=(const HostObject&) = delete;
  ~HostObject();

  void on(const std::wstring& member, Action action);
  void answer(const std::wstring& member, Value value);
  void fail(const std::wstring& member, HostError error = {});
  /// The object has no such member.
  void lacks(const std::wstring& member);
  /// Fixed dispatch numbers 1, 2, ... as an event sink has them.
  void numbers(const std::vector<std::wstring>& members);

  ULONG references() const;
  IDispatch* get() const;
  operator Value() const { return Value(get()); }

 private:
  Ref<HostDispatch> dispatch_;
};

/// A variable of the client, passed by reference.
class ItemVariable {
 public:
  explicit ItemVariable(const Object& item);
  ~ItemVariable();
  ItemVariable(const ItemVariable&) = delete;
  ItemVariable& operator=(const ItemVariable&) = delete;
  operator Value() const;
  Object object() const { return Object(Ref<IDispatch>(item_)); }

 private:
  IDispatch* item_;
};

/// A transmitter of the library with a server that has items, dimensions and display lists.
struct Transmitter {
  explicit Transmitter(HostObject::Kind kind = HostObject::Kind::kCompiled);
  ~Transmitter();
  Transmitter(const Transmitter&) = delete;
  Transmitter& operator=(const Transmitter&) = delete;

  /// An item under its number as key: a variable "Caption 1" of value `value`, no dimension.
  Object add_item(short id, short access = 0, bool historian = false, const Value& value = 7);
  /// Lets the server's ReadTxm and WriteTxm answer.
  void device_answers(bool answer);
  Lines exchange_lines(const std::string& method, const std::string& item = "item") const;
  Lines calls() { return log.taken(); }

  CallLog log;
  HostObject server;
  HostObject protocols;
  HostObject application;
  Object utility = Object::create(L"pvItems32.CUtility");
  Object items = Object::create(L"pvItems32.CItems");
  Object dimensions = Object::create(L"pvItems32.CDimensions");
  Object lists = Object::create(L"pvItems32.CDLists");
  Object txm = Object::create(L"pvItems32.CTxm");
};

Lines joined(std::initializer_list<Lines> parts);

/// Answers the dialogs of the thread that made it from a thread of its own.
class DialogResponder {
 public:
  struct Shown {
    std::wstring caption;
    std::map<int, std::wstring> texts;  ///< visible controls, by their id
  };
  enum Button { kFirst = 1000, kSecond = 1001, kCloseBox = -1 };

  /// Types texts into fields, then presses a button, in every dialog that appears.
  explicit DialogResponder(int button, std::map<int, std::wstring> typed = {});
  ~DialogResponder();
  DialogResponder(const DialogResponder&) = delete;
  DialogResponder& operator=(const DialogResponder&) = delete;

  /// The dialogs so far. To be asked when the call that shows them is over.
  const std::vector<Shown>& shown() const { return shown_; }

 private:
  void respond(HWND dialog);

  DWORD thread_;
  int button_;
  std::map<int, std::wstring> typed_;
  std::vector<Shown> shown_;
  HANDLE stop_;
  std::thread responder_;
};

/// The listener of an event source: a host object connected to it.
class Connection {
 public:
  Connection(const Object& source, const HostObject& sink,
             const IID& events = __uuidof(__CTxmEvents));
  ~Connection() { disconnect(); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  void disconnect();

 private:
  Ref<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

/// A listener of the event hub, with the published dispatch numbers.
struct HubListener {
  HubListener(CallLog& log, const std::string& name = "events");
  HostObject sink;
};
/// The hub that all transmitters of this thread raise.
Object event_hub();

}  // namespace pv::test
