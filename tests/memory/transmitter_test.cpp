// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Calls that go on to a server of the host, and events that go to its listeners. What the host has
// been told cannot be taken back; what the library keeps is as it was.

#include <gtest/gtest.h>

#include <algorithm>

#include "pvItems32.h"
#include "tests/memory/host.h"
#include "tests/memory/tables.h"
#include "tests/memory/trial.h"
#include "tests/support/own_file.h"

namespace pv::test {
namespace {

Value answer_of_protocol(const std::wstring&, const HostArguments&) { return Value(); }

Value answer_of_port(const std::wstring& member, const HostArguments&) {
  return member == L"Name" ? Value(L"A port that is not short") : Value(L"9600,n,8,1 and more");
}

/// A server with tables. It reads and writes without changing items.
Object server() {
  const Object items = two_items();
  const Object dimensions = a_dimension();
  const Object lists = a_list();
  return host_object([=](const std::wstring& member, const HostArguments& given) -> Value {
    if (member == L"Items") return items;
    if (member == L"Dimensions") return dimensions;
    if (member == L"Lists") return lists;
    if (member == L"Protocols") return host_object(answer_of_protocol);
    if (member == L"GetComObject") return host_object(answer_of_port);
    if (member == L"AutoConnect") change_argument(given[4], L"a version that is not short");
    if (member == L"ReadDisplay") change_argument(given[1], L"a display that is not short");
    if (member == L"GetMessage" || member == L"FileName") return kLongText;
    if (member == L"SendMessage" || member == L"ComError" || member == L"ComAnswerError") return 1;
    return member == L"TypeName" || member == L"ComAnswerErrorText" ? Value(kLongText) : true;
  });
}

Object transmitter() {
  const Object txm = create(L"CTxm");
  txm.set(L"Server", server());
  return txm;
}

/// A variable of the client that holds an object.
struct ObjectVariable {
  explicit ObjectVariable(const Object& object) : held(object.as<IDispatch>().detach()) {}
  ObjectVariable(const ObjectVariable&) = delete;
  ObjectVariable& operator=(const ObjectVariable&) = delete;
  ~ObjectVariable() {
    if (held) held->Release();
  }
  IDispatch* held;
};

/// A transmitter, and an item that is passed by reference before the other arguments.
Scene with_item(const Object& txm, std::vector<Value> arguments, bool historian = false) {
  const Object item = txm.get_object(L"Items").get_object(L"Item", 1);
  item.put(L"Historian", historian);
  const auto variable = std::make_shared<ObjectVariable>(item);
  arguments.insert(arguments.begin(), Value(by_ref(variable->held)));
  return {txm, arguments, variable};
}

TEST(ATransmitterWithoutMemory, StaysAsItWasInExchanges) {
  EXPECT_GT(fail_everywhere({[] {
                               return with_item(transmitter(), {false, false});
                             },
                             L"ReadTxm"}),
            0);
  EXPECT_GT(fail_everywhere({[] {
                               return with_item(transmitter(), {true, true});
                             },
                             L"ReadTxm"}),
            0);
  EXPECT_GT(fail_everywhere({[] { return with_item(transmitter(), {false}); }, L"WriteTxm"}), 0);
  EXPECT_GT(fail_everywhere(transmitter, L"AutoConnect", {true}), 0);
}

TEST(ATransmitterWithoutMemory, StaysAsItWasInCallsOfItsServer) {
  for (const wchar_t* member :
       {L"Items", L"Dimensions", L"Lists", L"TxmTypeName", L"ComError", L"ComAnswerErrorText"}) {
    fail_everywhere(transmitter, member, {}, DISPATCH_PROPERTYGET);
  }
  EXPECT_GT(fail_everywhere(transmitter, L"SendMessage", {kLongText}), 0);
  EXPECT_GT(fail_everywhere(transmitter, L"GetMessage"), 0);
  EXPECT_GT(fail_everywhere(transmitter, L"NameFormatted", {7}), 0);
  EXPECT_GT(fail_everywhere(transmitter, L"StartFunction", {1}), 0);
}

TEST(ATransmitterWithoutMemory, ShowsAndTakesValuesWholeOrNotAtAll) {
  const auto value_of = [](std::vector<Value> arguments) {
    const Object txm = transmitter();
    const Object item = txm.get_object(L"Items").get_object(L"Item", 1);
    item.put(L"Dimension", 1, 1);
    arguments.insert(arguments.begin(), Value(item));
    return Scene{txm, arguments};
  };
  EXPECT_GT(fail_everywhere({[&] {
                               return value_of({1, -1, 2, smValueAndUnit, true, true});
                             },
                             L"ItemValue", DISPATCH_PROPERTYGET}),
            0);
  EXPECT_GT(fail_everywhere({[&] {
                               return value_of({1, -1, 2, smValueOnly, true, true, L"12,5"});
                             },
                             L"ItemValue", DISPATCH_PROPERTYPUT}),
            0);
}

// The audit log gets whole entries.
TEST(ATransmitterWithoutMemory, RecordsAnEntryWholeOrNotAtAll) {
  constexpr int kHistoryFolder = 8;
  const Object utility = create(L"CUtility");
  const OwnFile file(L"Historian.csv");
  utility.put(L"AppDirectory", kHistoryFolder, file.folder().path());
  const auto lines = [&] {
    const std::string bytes = file.bytes();
    return std::to_wstring(std::count(bytes.begin(), bytes.end(), '\n'));
  };
  Trial trial;
  trial.prepare = [&] {
    DeleteFileW(file.path().c_str());
    const Object txm = transmitter();
    txm.put(L"Historian", histSilent);
    return with_item(txm, {false}, true);
  };
  trial.member = L"WriteTxm";
  trial.surroundings = lines;
  EXPECT_GT(fail_everywhere(trial), 50);
  utility.put(L"AppDirectory", kHistoryFolder, L"");
}

/// A source of events with a listener that counts what it hears.
class Heard {
 public:
  Object source(const wchar_t* class_name, const IID& events) {
    count_ = 0;
    const Object source = create(class_name);
    Ref<IConnectionPoint> point;
    query<IConnectionPointContainer>(source.get())->FindConnectionPoint(events, point.put());
    DWORD cookie = 0;
    const Object listener = host_object([this](const std::wstring&, const HostArguments& given) {
      ++count_;
      if (given.size() == 1 && given[0].vt == (VT_BYREF | VT_BSTR)) {
        change_argument(given[0], L"a change that is not short");
      }
      return Value();
    });
    if (!point || FAILED(point->Advise(listener.get(), &cookie))) throw CallFailed("no listener");
    return source;
  }

  int fail_everywhere(const wchar_t* class_name, const IID& events, const wchar_t* member,
                      const std::vector<Value>& arguments, WORD kind = DISPATCH_METHOD,
                      bool works = true) {
    return test::fail_everywhere({[&] {
                                    return Scene{source(class_name, events), arguments};
                                  },
                                  member, kind, 1, works,
                                  [this] { return std::to_wstring(count_); }});
  }

 private:
  int count_ = 0;
};

TEST(AnEventWithoutMemory, IsHeardAsOftenAsItsCallWorks) {
  Heard heard;
  const IID& hub = __uuidof(__CTxmEvents);
  EXPECT_GT(heard.fail_everywhere(L"CTxmEvents", hub, L"RaiseAutoConnect", {kLongText}), 0);
  heard.fail_everywhere(L"CTxmEvents", hub, L"RaiseOnServerLoading", {kLongText});
  heard.fail_everywhere(L"CTxmEvents", hub, L"RaiseTxmConnected", {create(L"CTxm")});
  EXPECT_GT(heard.fail_everywhere(L"CTxmEvents", hub, L"RaiseAnswerError", {1, 4711}), 0);
  heard.fail_everywhere(L"CTxmEvents", hub, L"RaiseSending", {});
  EXPECT_GT(heard.fail_everywhere(L"CLanguages", __uuidof(__CLanguages), L"RegisterLanguages", {}),
            0);
  heard.fail_everywhere(L"CLanguages", __uuidof(__CLanguages), L"ActiveLanguageID", {3},
                        DISPATCH_PROPERTYPUT);
  EXPECT_GT(heard.fail_everywhere(L"CPasswords", __uuidof(__CPasswords), L"Load",
                                  {L"3|BA**|BA**||BA**|||"}),
            0);
  EXPECT_GT(heard.fail_everywhere(L"CPasswords", __uuidof(__CPasswords), L"Load",
                                  {L"3|BA**|BA**||"}, DISPATCH_METHOD, false),
            0);
}

// A text by reference comes back as the listener left it.
TEST(AnEventWithoutMemory, KeepsTheTextOfItsCaller) {
  Heard heard;
  fail_everywhere({[&] {
                     const auto text = std::make_shared<Value>(kLongText);
                     return Scene{heard.source(L"CTxmEvents", __uuidof(__CTxmEvents)),
                                  {Value(by_ref(*text))},
                                  text};
                   },
                   L"RaiseOnServerLoading"});
}

}  // namespace
}  // namespace pv::test
