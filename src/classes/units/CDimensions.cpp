// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/units/CDimensions.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "classes/units/CUnits.h"
#include "com/call.h"
#include "core/text/library_version.h"
#include "core/text/number_text.h"
#include "core/units/unit_conversion.h"
#include "platform/code_page.h"
#include "platform/files.h"
#include "platform/locale.h"

namespace pv {

template ClassEntry class_entry<CDimensions>();

namespace {

constexpr double kGeneralFormat = -1;
constexpr short kMostDecimals = 8;

// Decimals beyond the maximum are reduced to it, in the caller's variable too.
long decimals_wanted(VARIANT* decimals) {
  double wanted = kGeneralFormat;
  if (!decimals || is_missing(*decimals)) return static_cast<long>(wanted);
  attempt([&] { wanted = to_double(dereferenced(*decimals)); });
  if (wanted <= kMostDecimals) return lenient_integer<long>(std::max(wanted, kGeneralFormat));
  auto& target = const_cast<VARIANT&>(innermost(*decimals));
  if (target.vt & VT_BYREF) {
    store_typed(target, Variant(kMostDecimals));
  } else {
    VariantClear(&target);
    target = Variant(kMostDecimals).detach();
  }
  return kMostDecimals;
}

std::optional<double> number_in(const VARIANT& value) {
  std::optional<double> number;
  attempt([&] { number = to_double(dereferenced(value)); });
  return number;
}

UnitRecord record_of(const Ref<_CUnit>& unit) {
  return {result_of(unit, &_CUnit::get_Caption), result_of(unit, &_CUnit::get_Slope),
          result_of(unit, &_CUnit::get_Offset)};
}

DimensionRecord record_of(const CDimension& dimension) {
  DimensionRecord record{dimension.caption(), {}};
  const Ref<_CUnits> units = dimension.units();
  const long count = units ? result_of(units, &_CUnits::get_Count) : 0;
  for (long i = 1; i <= count; ++i) {
    record.units.push_back(record_of(result_of(units, &_CUnits::get_Item, Variant(i))));
  }
  return record;
}

// The caption is read only if it is shown.
UnitRecord record_for(const Ref<_CUnit>& unit, ShowModeTypes mode) {
  if (mode != smValueOnly) return record_of(unit);
  return {{}, result_of(unit, &_CUnit::get_Slope), result_of(unit, &_CUnit::get_Offset)};
}

bool shows_value(ShowModeTypes mode, bool dirty) { return mode != smUnitOnly && !dirty; }

}  // namespace

STDMETHODIMP CDimensions::LoadSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    auto bytes = read_file(std::wstring(view_of(file_name)));
    if (!bytes) return false;
    const std::shared_ptr<const DimensionFile> file =
        DimensionFile::open(std::move(*bytes), ansi_codec(), decimal_separator());
    if (!file) return false;
    Members loaded = no_members();
    for (std::size_t i = 0; i < file->size(); ++i) {
      const auto dimension = make<CDimension>(file, i);
      attempt([&] { loaded.append(dimension, file->caption(i)); });  // the first of a name stands
    }
    std::swap(list_, loaded);  // the former ones go when the new ones are there
    changed_ = false;
    return true;
  });
}

STDMETHODIMP CDimensions::SaveSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    std::vector<DimensionRecord> records;
    for (const auto& dimension : list_) records.push_back(record_of(*dimension));
    const std::wstring name(view_of(file_name));
    return append_file(name, format_dimension_file(records, library_stamp(), ansi_codec(),
                                                   decimal_separator(), file_size(name) > 0));
  });
}

STDMETHODIMP CDimensions::Add(BSTR key, BSTR caption, _CUnits* units,
                              _CDimension** result) noexcept {
  return method_with_result(result, [&] {
    const Ref<_CUnits> own = units ? Ref<_CUnits>(units) : Ref<_CUnits>(make<CUnits>());
    return added(view_of(key), make<CDimension>(view_of(key), view_of(caption), own));
  });
}

STDMETHODIMP CDimensions::List(BSTR* result) noexcept {
  return method_with_result(result, [&] {
    std::wstring captions;
    for (const auto& dimension : list_) captions += dimension->caption() + L"|";
    return captions;
  });
}

// Units of our own are reached without the way through their interfaces.
CDimensions::FoundUnit CDimensions::unit_in(const Ref<_CUnits>& units, const VARIANT& unit) {
  if (const auto own = CUnits::from_interface(units.get())) {
    const Ref<CUnit>& found = own->at(unit);
    return {found, found.get()};
  }
  return {result_of(units, &_CUnits::get_Item, unit)};
}

CDimensions::FoundUnit CDimensions::find_unit(const VARIANT& dimension, const VARIANT& unit) const {
  FoundUnit found;
  attempt([&] {
    const Ref<_CUnits> units = at(dimension)->units();
    attempt([&] { found = unit_in(units, unit); });
    if (!found.unit) found = unit_in(units, Variant(1L));
  });
  return found;
}

STDMETHODIMP CDimensions::ToUnit(VARIANT value, VARIANT dimension, VARIANT unit, VARIANT* decimals,
                                 ShowModeTypes mode, VARIANT_BOOL dirty, BSTR* result) noexcept {
  return method_with_result(result, [&] {
    return shown(value, dimension, unit, decimals_wanted(decimals), mode, dirty != VARIANT_FALSE);
  });
}

Bstr CDimensions::shown(const VARIANT& value, const VARIANT& dimension, const VARIANT& unit,
                        long decimals, ShowModeTypes mode, bool dirty) const {
  const FoundUnit found = find_unit(dimension, unit);
  if (!found.unit) return Bstr(dirty && mode == smValueOnly ? L"?" : L"");
  const auto number = shows_value(mode, dirty) ? number_in(value) : std::optional(0.0);
  // The text is built on the stack: the only allocation is the result itself.
  std::array<std::byte, 256> space;  // NOLINT(cppcoreguidelines-pro-type-member-init)
  std::pmr::monotonic_buffer_resource memory(space.data(), space.size());
  std::pmr::wstring text(&memory);
  const auto show_in = [&](const UnitRecord& unit_shown) {
    text = format_in_unit(*number, unit_shown, decimals, mode, dirty, decimal_separator(), &memory);
  };
  attempt([&] {
    if (!number) return;
    found.own ? show_in(found.own->record()) : show_in(record_for(found.unit, mode));
  });
  return Bstr(text);
}

STDMETHODIMP CDimensions::ToBase(VARIANT value, VARIANT dimension, VARIANT unit,
                                 VARIANT* result) noexcept {
  return method_with_result(result, [&] {
    const Ref<_CUnit> found = find_unit(dimension, unit).unit;
    const auto number = number_in(value);
    Variant base;
    attempt([&] {
      if (!found || !number) return;
      const UnitRecord factors = record_of(found);
      base = Variant(to_base(*number, factors.slope, factors.offset));
    });
    return base;
  });
}

STDMETHODIMP CDimensions::GetUnitObject(VARIANT dimension, VARIANT unit, _CUnit** result) noexcept {
  return method_with_result(result, [&] { return find_unit(dimension, unit).unit; });
}

STDMETHODIMP CDimensions::ChangeTitle(short index, BSTR new_name, VARIANT_BOOL* result) noexcept {
  return method_with_result(
      result, [&] { return attempt([&] { rename_member(list_, index, view_of(new_name)); }); });
}

}  // namespace pv
