// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Values as texts.
#include "tests/bench/host_objects.h"
#include "tests/bench/subject.h"

namespace pv::bench {
namespace {

constexpr short kDecimals = 3;

std::wstring taken(BSTR text) {
  std::wstring copy(view_of(text));
  SysFreeString(text);
  return copy;
}

std::wstring platform_text(double value) {
  Variant number(value);
  static const Bstr pattern(L"0.000");
  BSTR text = nullptr;
  check(VarFormat(&number, pattern, 0, 0, 0, &text));
  return taken(text);
}

std::wstring our_text(const Ref<_CDimensions>& dimensions, double value) {
  Variant decimals(kDecimals);
  BSTR text = nullptr;
  check(dimensions->ToUnit(Variant(value), number(11), number(2), &decimals, smValueOnly,
                           VARIANT_FALSE, &text));
  return taken(text);
}

}  // namespace

void measure_values(Report& report) {
  constexpr double kValue = 1234.5678;
  constexpr double kMostGets = 5;
  const auto dimensions = make_dimensions(22, 20);
  report.ratio("ToUnit with 3 decimals, early bound", "VarFormat",
               compare(repeated(100, [&] { our_text(dimensions, kValue); }),
                       repeated(100, [&] { platform_text(kValue); })),
               0.5);

  const auto items = make_items(10, 1);
  const auto txm = create<CTxm, _CTxm>();
  const Ref<IDispatch> server(new IdleServer(items, dimensions));
  check(txm->putref_Server(server.get()));
  Ref<_CItem> item;
  check(items->get_Item(number(1), item.put()));
  VARIANT argument = pv::Variant(static_cast<IDispatch*>(item.get())).detach();
  const Task shown =
      repeated(100, [&] { late_bound(txm.get(), L"ItemValue", DISPATCH_PROPERTYGET, {argument}); });
  report.ratio(
      "CTxm.ItemValue of a physical value, late bound", "late-bound get of a number property",
      compare(shown,
              repeated(100, [&] { late_bound(txm.get(), L"Address", DISPATCH_PROPERTYGET); })),
      kMostGets);
  VariantClear(&argument);
}

}  // namespace pv::bench
