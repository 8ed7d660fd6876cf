// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "parameter.h"

#include <cmath>
#include <cstdint>

#include "hex_text.h"

namespace fluxor {
namespace {

std::string encode_number(const DataTypeRoom& room, double number) {
  if (room.coding == Coding::kFloat) return float_to_hex(static_cast<float>(number));
  return int_to_hex(static_cast<std::uint32_t>(std::lround(number)), room.characters);
}

std::string encode_field(const Field& field) {
  const auto room = room_of(field.data_type);
  if (!room) return {};
  if (const double* number = std::get_if<double>(&field.value))
    return encode_number(*room, *number);
  std::string text = std::get<std::string>(field.value);
  text.resize(room->characters, ' ');
  return text;
}

std::string without_trailing_blanks(std::string_view text) {
  const auto last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string() : std::string(text.substr(0, last + 1));
}

std::optional<std::variant<double, std::string>> decode_value(const DataTypeRoom& room,
                                                              std::string_view text) {
  if (room.coding == Coding::kText) return without_trailing_blanks(text);
  if (room.coding == Coding::kFloat) {
    const auto number = hex_to_float(text);
    if (!number || !std::isfinite(*number)) return std::nullopt;
    return static_cast<double>(*number);
  }
  const auto bits = hex_to_int(text);
  if (!bits) return std::nullopt;
  if (room.coding == Coding::kSignedInteger)
    return static_cast<double>(static_cast<std::int16_t>(*bits));
  return static_cast<double>(*bits);
}

}  // namespace

std::optional<DataTypeRoom> room_of(int data_type) {
  switch (data_type) {
    case 1:
    case 2:
    case 9:
    case 13:
      return DataTypeRoom{Coding::kInteger, 2};
    case 3:
      return DataTypeRoom{Coding::kSignedInteger, 4};
    case 4:
      return DataTypeRoom{Coding::kFloat, 8};
    case 6:
      return DataTypeRoom{Coding::kInteger, 4};
    case 19:
      return DataTypeRoom{Coding::kText, 2};
    case 8:
      return DataTypeRoom{Coding::kText, 6};
    case 16:
    case 17:
      return DataTypeRoom{Coding::kText, 7};
    case 5:
    case 14:
      return DataTypeRoom{Coding::kText, 8};
    case 18:
      return DataTypeRoom{Coding::kText, 9};
    case 7:
      return DataTypeRoom{Coding::kText, 14};
    case 10:
      return DataTypeRoom{Coding::kText, 16};
    case 15:
      return DataTypeRoom{Coding::kText, 32};
    case 11:
      return DataTypeRoom{Coding::kText, 80};
    case 12:
      return DataTypeRoom{Coding::kText, 100};
    case 20:
      return DataTypeRoom{Coding::kText, 120};
    case 21:
      return DataTypeRoom{Coding::kText, 150};
    default:
      return std::nullopt;
  }
}

std::string encode(const Parameter& parameter) {
  std::string data;
  for (const Field& field : parameter.fields) data += encode_field(field);
  return data;
}

std::optional<std::vector<Field>> decode(const Parameter& parameter, std::string_view data) {
  std::vector<Field> fields;
  for (const Field& field : parameter.fields) {
    const auto room = room_of(field.data_type);
    if (!room || data.size() < room->characters) return std::nullopt;
    const auto value = decode_value(*room, data.substr(0, room->characters));
    if (!value) return std::nullopt;
    fields.push_back({field.data_type, *value});
    data.remove_prefix(room->characters);
  }
  if (!data.empty()) return std::nullopt;
  return fields;
}

}  // namespace fluxor
