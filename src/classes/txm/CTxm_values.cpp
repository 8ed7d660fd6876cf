// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/items/CItem.h"
#include "classes/items/CVariables.h"
#include "classes/items/variable_reader.h"
#include "classes/txm/CTxm.h"
#include "classes/units/CDimensions.h"
#include "com/call.h"
#include "com/lenient.h"
#include "core/items/data_type.h"
#include "core/text/number_text.h"
#include "platform/locale.h"

// Raw values as texts and back. Nothing here talks to the device, and no error reaches the caller:
// a step that fails leaves what was there.
namespace pv {
namespace {

constexpr short kOwnUnit = -1;
constexpr short kOwnDecimals = -2;

bool shows_value(ShowModeTypes display) {
  return display == smValueOnly || display == smValueAndUnit;
}

// What a value without unit shows besides itself.
Variant without_value(ShowModeTypes display) {
  return Variant(display == smUnitOnly ? std::wstring_view() : std::wstring_view(L"?"));
}

Ref<_CVariable> variable_at(const Ref<_CVariables>& variables, long position) {
  return result_of(variables, &_CVariables::get_Item, Variant(position));
}

// Out of range, an index means the first variable.
VariableReader variable_of(_CItem* item, long index) {
  if (const auto own = CItem::from_interface(item)) {
    if (const auto variables = CVariables::from_interface(own->variables().get())) {
      const auto& list = variables->list();
      return VariableReader(list.at(index >= 1 && index <= list.size() ? index : 1));
    }
  }
  const auto variables = result_of(item, &_CItem::get_Variables);
  const long count = result_of(variables, &_CVariables::get_Count);
  return VariableReader(variable_at(variables, index >= 1 && index <= count ? index : 1));
}

bool has_list(const VariableReader& variable) {
  const Variant list_id = variable.list_id();
  double number = 0;
  attempt([&] { number = to_double(list_id); });
  return number > 0;
}

Ref<_CDListMember> member_of(const Ref<_CDLists>& lists, const VARIANT& list_id,
                             const VARIANT& value) {
  const auto list = result_of(lists, &_CDLists::get_Item, list_id);
  const auto members = result_of(list, &_CDList::get_ListMembers);
  return result_of(members, &_CDListMembers::get_Item, Variant(to_text(value)));
}

Bstr text_in_unit(const Ref<_CDimensions>& dimensions, const Variant& value, short dimension,
                  short unit, short decimals, ShowModeTypes display, bool dirty) {
  if (const auto own = CDimensions::from_interface(dimensions.get())) {
    return own->shown(value, Variant(dimension), Variant(unit), decimals, display, dirty);
  }
  Variant shown_decimals(decimals);
  return text_result_of(dimensions.get(), &_CDimensions::ToUnit, value, Variant(dimension),
                        Variant(unit), &shown_decimals, display,
                        dirty ? VARIANT_TRUE : VARIANT_FALSE);
}

Bstr with_period(Bstr text) {
  const auto comma = view_of(text).find(L',');
  if (comma != std::wstring_view::npos) static_cast<BSTR>(text)[comma] = L'.';
  return text;
}

}  // namespace

Variant CTxm::meaning(const VariableReader& variable, ShowModeTypes display,
                      bool show_meaning) const {
  Variant value = variable.value();
  if (!shows_value(display)) return without_value(display);
  if (!show_meaning) return value;
  Variant shown = value;  // a code without a meaning shows as it is
  attempt([&] {
    const auto member = member_of(server_.lists(), variable.list_id(), value);
    shown = Variant(result_of(member, &_CDListMember::get_Caption));
  });
  return shown;
}

Variant CTxm::shown_value(_CItem* item, short index, short unit, short decimals,
                          ShowModeTypes display, bool period_as_decimal, bool show_meaning) const {
  const auto variable = variable_of(item, index);
  const short dimension = dimension_of(item, variable);
  if (has_list(variable)) return meaning(variable, display, show_meaning);
  const Variant value = variable.value();
  if (dimension == edimNone) return shows_value(display) ? value : without_value(display);

  const short shown_unit = unit == kOwnUnit ? variable.unit_id() : unit;
  const short shown_decimals = decimals == kOwnDecimals ? variable.decimals() : decimals;
  Bstr text = text_in_unit(server_.dimensions(), value, dimension, shown_unit, shown_decimals,
                           display, variable.dirty());
  return Variant(period_as_decimal ? with_period(std::move(text)) : std::move(text));
}

STDMETHODIMP CTxm::get_ItemValue(_CItem* item, short variable, short unit, short decimals,
                                 ShowModeTypes display, VARIANT_BOOL period_as_decimal,
                                 VARIANT_BOOL show_meaning, VARIANT* result) noexcept {
  return method_with_result(result, [&] {
    Variant shown;
    const bool is_known = attempt([&] {
      shown = shown_value(item, variable, unit, decimals, display,
                          period_as_decimal != VARIANT_FALSE, show_meaning != VARIANT_FALSE);
    });
    // Empty: a value that has no table, or of a variable that does not exist.
    return is_known ? std::move(shown) : Variant(L"");
  });
}

void CTxm::enter_value(_CItem* item, short index, short unit, const VARIANT& entered) const {
  const auto variable = variable_of(item, index);
  const short dimension = dimension_of(item, variable);
  Variant value = dereferenced(entered);
  if (dimension == edimNone) {
    call(variable.variable(), &_CVariable::put_Value, value);
    return;
  }
  const short entered_unit = unit == kOwnUnit ? variable.unit_id() : unit;
  if (data_class(result_of(variable.variable(), &_CVariable::get_DataType)) ==
      DataClass::kNumeric) {
    value = Variant(lenient_number_text(value, decimal_separator()));
  }
  call(variable.variable(), &_CVariable::put_Value,
       result_of(server_.dimensions(), &_CDimensions::ToBase, value, Variant(dimension),
                 Variant(entered_unit)));
}

STDMETHODIMP CTxm::put_ItemValue(_CItem* item, short variable, short unit, short, ShowModeTypes,
                                 VARIANT_BOOL, VARIANT_BOOL, VARIANT value) noexcept {
  return method([&] { attempt([&] { enter_value(item, variable, unit, value); }); });
}

// The item that a selector's value chooses, by its number or through its display list.
long CTxm::selected_item_id(_CItem* selector) const {
  const auto variable = variable_of(selector, 1);
  const Variant value = variable.value();
  if (!has_list(variable)) return to_short(value);
  short id = 0;
  attempt([&] {
    const auto member = member_of(server_.lists(), variable.list_id(), value);
    id = lenient_integer<short>(result_of(member, &_CDListMember::get_Tag));
  });
  return id;
}

std::optional<CTxm::Resolved> CTxm::resolve(_CItem* item, short parent) const {
  long source_id = parent;
  if (parent < 0) {
    const auto siblings = result_of(item, &_CItem::get_Variables);
    const auto sibling = variable_at(siblings, -static_cast<long>(parent));
    source_id = to_short(result_of(sibling, &_CVariable::get_Value));
    if (source_id < 1) return std::nullopt;
  }
  Ref<_CItem> source = item_with_id(source_id);
  // A dimension of "True" marks a selector.
  const bool is_selector =
      parent > 0 && result_of(source, &_CItem::get_Dimension, short{1}) == VARIANT_TRUE;
  if (is_selector) source = item_with_id(selected_item_id(source.get()));
  const auto variable = variable_of(source.get(), 1);
  return Resolved{variable.dimension_id(), variable.unit_id()};
}

// What is found by reference is kept in the variable, for the display and for later calls.
short CTxm::dimension_of(_CItem* item, const VariableReader& variable) const {
  const short parent = variable.parent();
  std::optional<Resolved> found;
  // By way of a variable: g++ lets a call that throws write into what it would be assigned to.
  if (parent != 0) {
    attempt([&] {
      const std::optional<Resolved> resolved = resolve(item, parent);
      found = resolved;
    });
  }
  if (found) {
    call(variable.variable(), &_CVariable::put_DimensionID, found->dimension);
    call(variable.variable(), &_CVariable::put_UnitID, found->unit);
  }
  return variable.dimension_id();
}

STDMETHODIMP CTxm::get_ItemDimID(_CItem* item, short variable, short* result) noexcept {
  return method_with_result(result, [&] {
    short dimension = 0;
    attempt([&] { dimension = dimension_of(item, variable_of(item, variable)); });
    return dimension;
  });
}

STDMETHODIMP CTxm::put_ItemDimID(_CItem* item, short variable, short value) noexcept {
  return method([&] {
    attempt(
        [&] { call(variable_of(item, variable).variable(), &_CVariable::put_DimensionID, value); });
    attempt([&] { call(items(), &_CItems::put_Changed, VARIANT_TRUE); });
  });
}

Ref<_CUnit> CTxm::unit_of(_CItem* item, short index, short unit) const {
  const auto variable = variable_of(item, index);
  const short dimension = dimension_of(item, variable);
  const short wanted = unit == kOwnUnit ? variable.unit_id() : unit;
  const auto found = result_of(server_.dimensions(), &_CDimensions::get_Item, Variant(dimension));
  return result_of(result_of(found, &_CDimension::get_Units), &_CUnits::get_Item, Variant(wanted));
}

STDMETHODIMP CTxm::ItemSlope(_CItem* item, short variable, short unit, float* result) noexcept {
  return method_with_result(result, [&] {
    float slope = 1.0F;
    attempt([&] {
      slope =
          single_of(result_of(unit_of(item, variable, unit), &_CUnit::get_Slope)).value_or(slope);
    });
    return slope;
  });
}

STDMETHODIMP CTxm::ItemOffset(_CItem* item, short variable, short unit, float* result) noexcept {
  return method_with_result(result, [&] {
    float offset = 0.0F;
    attempt([&] {
      offset =
          single_of(result_of(unit_of(item, variable, unit), &_CUnit::get_Offset)).value_or(offset);
    });
    return offset;
  });
}

}  // namespace pv
