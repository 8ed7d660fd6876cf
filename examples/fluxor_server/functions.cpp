// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "functions.h"

#include <functional>
#include <iterator>

#include "automation_object.h"

namespace fluxor {
namespace {

constexpr const wchar_t* kTotalReset = L"25";
constexpr double kVersionDate = 45658;  // 1 January 2025
constexpr short kOperatorLevel = 1;

bool zero_totals(const ComPtr<_CTxm>& transmitter) {
  const auto items = get(transmitter, &_CTxm::get_Items);
  auto item = get(items, &_CItems::get_Item, _variant_t(kTotalReset));
  if (!item || !get(transmitter, &_CTxm::IsWriteable, item.Get())) return false;
  put(item, &_CItem::put_Value, short{1}, _variant_t(short{1}));
  return get(transmitter, &_CTxm::WriteTxm, item.GetAddressOf(), VARIANT_TRUE) != 0;
}

bool check_line(const ComPtr<_CTxm>& transmitter) {
  constexpr int kExchanges = 10;
  for (int i = 0; i < kExchanges; ++i) {
    _bstr_t text = bstr(L"");
    if (!get(transmitter, &_CTxm::ReadDisplay, &text.GetBSTR())) return false;
  }
  return true;
}

struct Function {
  const wchar_t* key;
  const wchar_t* title;
  FunctionTypes type;
  short protection;
  bool (*body)(const ComPtr<_CTxm>&);
};

constexpr Function kFunctions[] = {
    {L"ZeroTotals", L"Zero totals", pvFuncButton, kOperatorLevel, zero_totals},
    {L"", L"", pvFuncSeparator, 0, nullptr},
    {L"CheckLine", L"Check line", pvFuncButton, 0, check_line},
};

/// What the library starts as a function's form. These functions need no window: they run at once.
class FunctionForm final : public AutomationObject {
 public:
  explicit FunctionForm(bool (*body)(const ComPtr<_CTxm>&)) {
    method(L"Start",
           [body](Arguments& arguments) { return _variant_t(body(arguments.required<_CTxm>(0))); });
    property(L"CloseMe", {}, [](Arguments&) {});
  }
};

}  // namespace

void add_functions(const ComPtr<_CFunctions>& functions) {
  short picture = 0;
  for (const Function& function : kFunctions) {
    ComPtr<FunctionForm> form;
    if (function.body) form = make<FunctionForm>(function.body);
    FunctionTypes type = function.type;
    get(functions, &_CFunctions::Add, _variant_t(function.key), form.Get(), DATE{kVersionDate},
        bstr(L"V1.0"), ++picture, &type, function.protection);
  }
}

std::wstring function_title(short position) {
  if (position < 1 || position > static_cast<short>(std::size(kFunctions))) return {};
  return kFunctions[position - 1].title;
}

}  // namespace fluxor
