// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Calls by name, and members of collections by key.
#include "tests/bench/dictionary.h"
#include "tests/bench/subject.h"

namespace pv::bench {
namespace {

constexpr int kItems = 10'000;
constexpr double kLookupGoal = 80;  // nanoseconds

// Names in the order of the published contract; the members of IDispatch are not among them.
std::vector<std::wstring> member_names(ITypeInfo* info) {
  constexpr DISPID kFirstOfDispatch = 0x60000000;
  std::vector<std::wstring> names;
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &function)); ++i) {
    const DISPID id = function->memid;
    info->ReleaseFuncDesc(function);
    BSTR name = nullptr;
    UINT named = 0;
    if (id >= kFirstOfDispatch || FAILED(info->GetNames(id, &name, 1, &named))) continue;
    names.emplace_back(view_of(name));
    SysFreeString(name);
  }
  return names;
}

void measure_name(Report& report, const Ref<IDispatch>& object, const std::wstring& name,
                  const std::string& what) {
  const auto info = type_info_of(object.get());
  auto* text = const_cast<LPOLESTR>(name.c_str());
  const auto medians =
      compare(repeated(100,
                       [&] {
                         DISPID id = 0;
                         object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
                       }),
              repeated(100, [&] {
                DISPID id = 0;
                info->GetIDsOfNames(&text, 1, &id);
              }));
  report.time("name lookup, " + what, "ITypeInfo::GetIDsOfNames", medians, kLookupGoal);
}

void measure_names(Report& report) {
  const struct {
    const char* name;
    Ref<IDispatch> object;
  } classes[] = {{"CUtility", create(__uuidof(CUtility))}, {"CTxm", create(__uuidof(CTxm))}};
  for (const auto& [name, object] : classes) {
    const auto names = member_names(type_info_of(object.get()).get());
    measure_name(report, object, names.front(), std::string("first member of ") + name);
    measure_name(report, object, names.back(), std::string("last member of ") + name);
  }
}

void measure_property_get(Report& report, const Ref<_CItem>& item, const Dictionary& dictionary) {
  constexpr double kGoal = 0.25;
  const Bstr key(L"5000");
  const Task ours = repeated(100, [&] { late_bound(item.get(), L"ItemID", DISPATCH_PROPERTYGET); });
  report.ratio("property get, late bound", "Scripting.Dictionary.Item, late bound",
               compare(ours, repeated(100,
                                      [&] {
                                        late_bound(dictionary.dispatch(), L"Item",
                                                   DISPATCH_PROPERTYGET, {borrowed(key)});
                                      })),
               kGoal);
}

void measure_keys(Report& report, const Ref<_CItems>& items, const Dictionary& dictionary) {
  constexpr double kGoal = 0.4;
  // The keys of a display, spread over all: asked for one after the other, all keys would show how
  // long both sides wait for the memory.
  constexpr std::size_t kAsked = 256;
  constexpr std::size_t kStep = 7919;  // prime: they are nowhere neighbours
  std::vector<Variant> keys;
  for (std::size_t i = 0; i < kAsked; ++i) {
    keys.emplace_back(std::wstring_view(std::to_wstring(i * kStep % kItems + 1)));
  }
  std::size_t ours = 0, theirs = 0;
  report.ratio("keyed lookup among 10,000, early bound", "Scripting.Dictionary, early bound",
               compare(repeated(1000,
                                [&] {
                                  Ref<_CItem> found;
                                  check(items->get_Item(keys[ours++ % kAsked], found.put()));
                                }),
                       repeated(1000, [&] { dictionary.item(keys[theirs++ % kAsked]); })),
               kGoal);
  const Bstr key(L"5000");
  const auto late = [&](IDispatch* collection) {
    return repeated(
        100, [=, &key] { late_bound(collection, L"Item", DISPATCH_PROPERTYGET, {borrowed(key)}); });
  };
  report.ratio("keyed lookup among 10,000, late bound", "Scripting.Dictionary, late bound",
               compare(late(items.get()), late(dictionary.dispatch())), kGoal);
}

}  // namespace

void measure_lookups(Report& report) {
  measure_names(report);
  const auto items = make_items(kItems, 1);
  const Dictionary dictionary;
  Ref<_CItem> item;
  for (int i = 1; i <= kItems; ++i) {
    const Variant key{std::wstring_view(std::to_wstring(i))};
    check(items->get_Item(key, item.put()));
    dictionary.add(key, Variant(item.get()));
  }
  measure_property_get(report, item, dictionary);
  measure_keys(report, items, dictionary);
}

}  // namespace pv::bench
