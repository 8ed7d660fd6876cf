// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The records of units, variables, items and list members: each text is read as every kind.

#include <algorithm>
#include <string>

#include "core/items/item_record.h"
#include "core/items/list_file.h"
#include "core/text/number_text.h"
#include "core/text/settings_text.h"
#include "core/units/dimension_file.h"
#include "tests/fuzz/target.h"
#include "tests/unit/items/plain_boolean.h"

namespace pv::fuzz {
namespace {

constexpr wchar_t kComma = L',';

std::size_t fields_in(std::wstring_view text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), L'|')) + 1;
}

std::wstring field(const std::wstring& text, std::size_t index) {
  std::size_t from = 0;
  for (; index > 0; --index) from = text.find(L'|', from) + 1;
  return text.substr(from, text.find(L'|', from) - from);
}

void unit(const std::wstring& text) {
  const ParsedUnit parsed = parse_unit(text, {L"before", 2.5, -1});
  const std::size_t fields = fields_in(text);
  require(parsed.complete == (fields >= 3), "a unit is complete with three fields");
  require(parsed.unit.caption == field(text, 0), "a unit has the caption of its record");
  require(fields > 1 || parsed.unit.slope == 2.5, "a missing slope stays");
  require(fields > 2 || parsed.unit.offset == -1, "a missing offset stays");
  require(fields < 2 || parsed.unit.slope == lenient_number(field(text, 1)),
          "the slope is a number");

  const std::wstring written = format_unit(parsed.unit, kComma);
  const ParsedUnit again = parse_unit(written);
  require(again.complete, "a written unit is complete");
  require(again.unit.caption == parsed.unit.caption && again.unit.slope == parsed.unit.slope &&
              again.unit.offset == parsed.unit.offset,
          "a written unit reads the same");
}

void variable(const std::wstring& text) {
  const VariableRecord before{.key = L"key",
                              .caption = L"caption",
                              .description = L"description",
                              .parent_variable = 1,
                              .dimension_id = 2,
                              .unit_id = 3,
                              .decimals = 4,
                              .list_id = L"5",
                              .data_type = 6,
                              .symbol = L"symbol"};
  const std::wstring old = format_variable_record(before);
  const VariableFields parsed = parse_variable_record(text, before.as<std::wstring_view>());
  const std::size_t fields = std::min(fields_in(text), kVariableFieldCount);
  require(parsed.present == fields, "as many fields as the text has");
  const std::wstring written = format_variable_record(parsed.record);
  require(fields_in(written) == kVariableFieldCount + 1, "each field is ended by a separator");
  for (std::size_t i = 0; i < kVariableFieldCount; ++i) {
    const bool is_text = i < 3 || i == 8 || i == 10;
    const std::wstring expected =
        i == 7        ? L""
        : i >= fields ? field(old, i)
        : is_text     ? field(text, i)
                      : format_integer(lenient_integer<std::int16_t>(field(text, i)));
    require(field(written, i) == expected, "a field is the text's own, or stays");
  }
  require(format_variable_record(parse_variable_record(written).record) == written,
          "a written variable reads the same");
}

void item(const std::wstring& text) {
  const ItemRecord parsed = parse_item_record(text, plain_boolean);
  require(parsed.key == field(text, 0), "an item has the key of its record");
  const std::wstring written = format_item_record(parsed, kComma);
  const ItemRecord again = parse_item_record(written, plain_boolean);
  require(again.key == parsed.key && again.item_id == parsed.item_id &&
              again.by_meaning == parsed.by_meaning && again.access == parsed.access &&
              again.historian == parsed.historian && again.restore == parsed.restore &&
              again.length == parsed.length,
          "a written item reads the same");
  require(format_item_record(again, kComma) == written, "its waiting time too, as far as shown");
}

void list_member(const std::wstring& text) {
  const ListMemberRecord parsed = parse_list_member(text, {L"key", L"caption", L"tag"});
  const std::size_t fields = fields_in(text);
  require(parsed.key == field(text, 0), "a member has the key of its record");
  require(parsed.caption == (fields > 1 ? field(text, 1) : L"caption"), "and the caption");
  require(parsed.tag == (fields > 2 ? field(text, 2) : L"tag"), "and the tag");
  const ListMemberRecord again = parse_list_member(format_list_member(parsed));
  require(again.key == parsed.key && again.caption == parsed.caption && again.tag == parsed.tag,
          "a written member reads the same");
}

}  // namespace

void records(std::string_view bytes) {
  const std::wstring text = wide(bytes);
  unit(text);
  variable(text);
  item(text);
  list_member(text);
}

}  // namespace pv::fuzz
