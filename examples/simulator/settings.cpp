// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "settings.h"

#include <cstdlib>
#include <fstream>
#include <set>
#include <stdexcept>

#include "item_id.h"

namespace fluxor {
namespace {

using Section = std::map<std::string, std::string>;
using Sections = std::map<std::string, Section>;

std::vector<std::string> lines_of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

Sections sections_of(const std::string& path) {
  Sections sections;
  Section* current = nullptr;
  for (const std::string& line : lines_of(path)) {
    if (line.starts_with('[') && line.ends_with(']')) {
      current = &sections[line.substr(1, line.size() - 2)];
    } else if (const auto equals = line.find('='); current && equals != std::string::npos) {
      (*current)[line.substr(0, equals)] = line.substr(equals + 1);
    }
  }
  return sections;
}

std::vector<std::string> split(const std::string& text) {
  std::vector<std::string> fields(1);
  for (const char character : text) {
    if (character == '|') {
      fields.emplace_back();
    } else {
      fields.back() += character;
    }
  }
  return fields;
}

std::string text_at(const std::vector<std::string>& fields, std::size_t index) {
  return index < fields.size() ? fields[index] : std::string();
}

int number_at(const std::vector<std::string>& fields, std::size_t index) {
  return std::atoi(text_at(fields, index).c_str());
}

const std::string& entry(const Section& section, const std::string& key) {
  static const std::string none;
  const auto found = section.find(key);
  return found == section.end() ? none : found->second;
}

int count_of(const Section& section) { return std::atoi(entry(section, "Count").c_str()); }

Field empty_field(int data_type) {
  const auto room = room_of(data_type);
  if (!room) throw std::runtime_error("unknown data type " + std::to_string(data_type));
  Field field{data_type, 0.0};
  if (room->coding == Coding::kText) field.value = std::string();
  return field;
}

// Positions of the fields in the records of the item file.
constexpr std::size_t kItemID = 1, kAccess = 3, kSmartWait = 6, kDataType = 9;

Parameter parameter_of(const Section& section) {
  const auto record = split(entry(section, "Settings"));
  Parameter parameter;
  parameter.write_level = number_at(record, kAccess) & 7;
  parameter.read_level = (number_at(record, kAccess) & 56) / 8;
  parameter.wait = std::atof(text_at(record, kSmartWait).c_str());
  for (int i = 1; i <= count_of(section); ++i) {
    const auto variable = split(entry(section, "VAR" + std::to_string(i)));
    parameter.fields.push_back(empty_field(number_at(variable, kDataType)));
  }
  return parameter;
}

Parameters read_items(const std::string& path) {
  Sections sections = sections_of(path);
  Parameters parameters;
  for (int i = 1; i <= count_of(sections["Items"]); ++i) {
    const Section& section = sections["ITEM" + std::to_string(i)];
    parameters[number_at(split(entry(section, "Settings")), kItemID)] = parameter_of(section);
  }
  return parameters;
}

std::set<int> items_of_version(const std::string& path, const std::string& software) {
  Sections sections = sections_of(path);
  for (int i = 1; i <= count_of(sections["Versions"]); ++i) {
    const Section& section = sections["Version" + std::to_string(i)];
    if (entry(section, "Name") != software) continue;
    std::set<int> items;
    for (int k = 1; k <= count_of(section); ++k) {
      items.insert(number_at(split(entry(section, "Item" + std::to_string(k))), 1));
    }
    return items;
  }
  throw std::runtime_error(path + " knows no software version " + software);
}

void read_values(const std::string& path, Parameters& parameters) {
  for (const std::string& line : lines_of(path)) {
    const auto id = line.find('|');
    const auto variable = line.find('|', id + 1);
    if (id == std::string::npos || variable == std::string::npos) continue;
    const auto found = parameters.find(std::atoi(line.c_str()));
    const auto index = static_cast<std::size_t>(std::atoi(line.c_str() + id + 1));
    if (found == parameters.end() || index < 1 || index > found->second.fields.size()) continue;
    Field& field = found->second.fields[index - 1];
    const std::string text = line.substr(variable + 1);
    if (std::holds_alternative<double>(field.value)) {
      field.value = std::atof(text.c_str());
    } else {
      field.value = text;
    }
  }
}

}  // namespace

Parameters load_parameters(const std::string& folder, const std::string& software) {
  Parameters parameters = read_items(folder + "/fluxor.itm");
  const std::set<int> known = items_of_version(folder + "/fluxor.ver", software);
  std::erase_if(parameters, [&](const auto& entry) { return !known.contains(entry.first); });
  read_values(folder + "/fluxor.val", parameters);
  parameters.at(kSoftwareVersion).fields.front().value = software;
  return parameters;
}

}  // namespace fluxor
