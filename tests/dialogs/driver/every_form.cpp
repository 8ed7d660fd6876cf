// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/dialogs/driver/every_form.h"

#include <gtest/gtest.h>

#include <ostream>

namespace pv::dialogs_test {
namespace {

using test::Object;
using test::Value;

constexpr long kQuestion = 401, kWarning = 402, kIncorrect = 610, kRepeat = 611;
constexpr long kYourName = 303, kEnterPassword = 602, kLongPrompt = 302;

FormKind message_box(short set, short picture, long prompt_id, long first_answer) {
  FormKind kind{.name = "frmMsgBox-", .form = L"frmMsgBox", .ask = {}};
  kind.name += std::to_string(set);
  kind.ask = [=](const Utility& utility, HWND owner) {
    return first_answer == utility.message_box({.prompt = utility.text(prompt_id),
                                                .buttons = set,
                                                .picture = picture,
                                                .title = utility.text(kWarning),
                                                .owner = owner});
  };
  kind.takes_owner = true;
  kind.has_host_texts = true;
  kind.can_be_cancelled = set % 2 == 1;
  return kind;
}

FormKind password_dialog(const char* name, bool modifies) {
  FormKind kind{.name = name, .form = L"frmPW", .ask = {}};
  kind.ask = [=](const Utility&, HWND) {
    const Object passwords = Object::create(L"pvItems32.CPasswords");
    passwords.call(L"Add", L"secret", modifies ? L"secret" : L"");
    return passwords.call(L"Edit", 1).boolean();
  };
  if (modifies) {
    kind.ready = [](const Dialog& dialog) {
      constexpr int kModify = 1002, kNewPassword = 1021;
      dialog.click(kModify);
      EXPECT_TRUE(wait_until([&] { return dialog.focused() == kNewPassword; }));
      dialog.drain();
    };
  }
  return kind;
}

FormKind access_editor() {
  FormKind kind{.name = "frmAccessEdit", .form = L"frmAccessEdit", .ask = {}};
  kind.ask = [](const Utility& utility, HWND) {
    const Device device;
    const Object item = device.add_item(33, 19, L"Damping");
    return utility.object().call(L"ItemAccessEdit", device.txm, item).boolean();
  };
  return kind;
}

FormKind input_box(const char* name, const wchar_t* method, long prompt_id, const Value& initial,
                   const wchar_t* unit) {
  FormKind kind{.name = name, .form = L"frmInputBox", .ask = {}};
  kind.ask = [=](const Utility& utility, HWND window) {
    const Object box = Object::create(L"pvItems32.CInputBox");
    HostObject owner;
    owner.answer(L"hWnd", static_cast<long>(reinterpret_cast<LONG_PTR>(window)));
    const bool confirmed = box.call(method, utility.text(prompt_id), utility.text(kWarning),
                                    initial, unit, window ? Value(owner.get()) : Value::nothing())
                               .boolean();
    EXPECT_EQ(confirmed, box.get(L"Value") != Value());
    return confirmed;
  };
  kind.takes_owner = true;
  kind.has_host_texts = true;
  return kind;
}

FormKind technician_prompt() {
  FormKind kind{.name = "frmTechName", .form = L"frmTechName", .ask = {}};
  kind.ask = [](const Utility&, HWND) {
    const Device device;
    device.txm.put(L"Historian", 2);
    device.txm.put(L"HistorianTechName", L"before");
    Value item = device.add_item(33, 0, L"Damping");
    device.txm.call(L"WriteTxm", test::by_ref(item), false);
    return device.txm.get(L"HistorianTechName") != L"before";
  };
  return kind;
}

// A transmitter on its pipe, with an alarm lamp.
constexpr const wchar_t* kSymbol =
    L"S1:P45B6P24B3J4B3P4M5P11B2J10B2P2MO3MP10B2J12B2PMO3MP9B2J14B2MO3MP9BJ16BM5P8B2J16B2P12BJ"
    L"2A14J2BP12BJ2AP12AJ2BP12BJ2APC2PCPC2PC2PAJ2BP11B2J2APC2PCPC2PC2PAJ2B2P11BJ2APC2PCPC2PC2P"
    L"AJ2BP12BJ2AP12AJ2BP12BJ2A14J2BP12B2J16B2P13BJ16BP14B2J14B2P15B2J12B2P17B2J10B2P20B3J4B3P"
    L"24B6P26I6P26I6P26I6P13I32H64I32P96";

FormKind symbol_editor(const char* name, const wchar_t* symbol) {
  FormKind kind{.name = name, .form = L"frmSymbolEdit", .ask = {}};
  kind.ask = [=](const Utility& utility, HWND) {
    const Device device;
    const Object item = device.add_item(33, 0);
    item.put(L"Symbol", symbol);
    return utility.object().call(L"ItemSymbolEdit", item).boolean();
  };
  return kind;
}

}  // namespace

bool FormKind::show(const Utility& utility, const Script& script, HWND owner) const {
  bool confirmed = false;
  drive(
      form, [&] { confirmed = ask(utility, owner); },
      [&](const Dialog& dialog) {
        ready(dialog);
        script(dialog);
      });
  return confirmed;
}

void PrintTo(const FormKind& kind, std::ostream* out) { *out << kind.name; }

const std::vector<FormKind>& every_form() {
  static const std::vector<FormKind> kinds = {
      message_box(0, 16, kIncorrect, 1),
      message_box(1, 64, kRepeat, 1),
      message_box(2, 48, kQuestion, 3),
      message_box(3, 32, kQuestion, 6),
      message_box(4, 32, kQuestion, 6),
      message_box(5, 0, kRepeat, 4),
      password_dialog("frmPW-enter", false),
      password_dialog("frmPW-modify", true),
      access_editor(),
      input_box("frmInputBox-text", L"ShowMe", kYourName, L"12.5", L"m\u00B3/h"),
      input_box("frmInputBox-masked", L"ShowMePW", kEnterPassword, L"secret", L""),
      input_box("frmInputBox-moment", L"ShowMeDT", kLongPrompt, 45000.75, L"UTC"),
      technician_prompt(),
      symbol_editor("frmSymbolEdit-new", L""),
      symbol_editor("frmSymbolEdit-drawn", kSymbol),
  };
  return kinds;
}

}  // namespace pv::dialogs_test
