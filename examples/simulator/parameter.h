// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace fluxor {

/// One variable of a parameter: a number or a text, in the encoding of its data type.
struct Field {
  int data_type = 0;
  std::variant<double, std::string> value = 0.0;
};

struct Parameter {
  int read_level = 0;  // password level needed, 0 for none
  int write_level = 0;
  double wait = 0;  // seconds that the device needs after a write
  std::vector<Field> fields;
};

/// By item ID.
using Parameters = std::map<int, Parameter>;

/// How the values of a data type are encoded.
enum class Coding { kInteger, kSignedInteger, kFloat, kText };

struct DataTypeRoom {
  Coding coding;
  std::size_t characters;
};

/// Nothing for a data type that is not known.
std::optional<DataTypeRoom> room_of(int data_type);

/// All fields of a parameter, one after the other. Texts are filled up with blanks.
std::string encode(const Parameter& parameter);

/// The values in the data of a write; nothing unless the data fits the fields exactly.
std::optional<std::vector<Field>> decode(const Parameter& parameter, std::string_view data);

}  // namespace fluxor
