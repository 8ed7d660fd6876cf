// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "device.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "item_id.h"
#include "limits.h"
#include "process.h"

namespace fluxor {
namespace {

constexpr std::size_t kDisplayLine = 16;

std::string display_line(std::string text) {
  text.resize(kDisplayLine, ' ');
  return text;
}

}  // namespace

Device::Device(Parameters parameters, double share_of_wait)
    : parameters_(std::move(parameters)),
      share_of_wait_(share_of_wait),
      passwords_{"1111", "2222", "3333", "4444"} {
  if (find(kBusAddress, 1)) address_ = static_cast<int>(number(kBusAddress));
}

void Device::advance(double seconds) {
  clock_ += seconds;
  busy_ -= seconds;
  run_process(*this, clock_, seconds);
}

std::optional<Answer> Device::answer(std::string_view content) {
  const auto command = parse_command(content);
  if (!command || command->address != address_ || busy_ > 0) return std::nullopt;

  Answer answer;
  answer.address = command->address;
  answer.letter = static_cast<char>(std::tolower(static_cast<unsigned char>(command->letter)));
  answer.item = command->item;
  answer.error = perform(*command, answer.data);
  return answer;
}

AnswerError Device::perform(const Command& command, std::string& data) {
  if (!command.checksum_is_right) return AnswerError::kChecksumWrong;
  switch (static_cast<CommandLetter>(command.letter)) {
    case CommandLetter::kRead:
      return read(command.item, data);
    case CommandLetter::kWrite:
      return write(command.item, command.data);
    case CommandLetter::kDisplay:
      data = display();
      return AnswerError::kNone;
    case CommandLetter::kPasswordLevel:
      data = {'0', static_cast<char>('0' + password_level_)};
      return AnswerError::kNone;
  }
  return AnswerError::kCommandUnknown;
}

AnswerError Device::read(int item, std::string& data) const {
  const auto found = parameters_.find(item);
  if (found == parameters_.end()) return AnswerError::kItemUnknown;
  if (found->second.read_level > password_level_) return AnswerError::kPasswordWrong;
  data = encode(found->second);
  return AnswerError::kNone;
}

AnswerError Device::write(int item, std::string_view data) {
  const auto found = parameters_.find(item);
  if (found == parameters_.end()) return AnswerError::kItemUnknown;
  if (found->second.write_level > password_level_) return AnswerError::kPasswordWrong;
  if (is_measured(item)) return AnswerError::kCommandUnknown;
  auto fields = decode(found->second, data);
  if (!fields) return AnswerError::kDataIncomplete;
  if (item == kEnterPassword) return enter_password(*fields);
  if (!is_within_limits(item, *fields)) return AnswerError::kOutOfLimits;
  store(item, std::move(*fields));
  return AnswerError::kNone;
}

void Device::store(int item, std::vector<Field> fields) {
  Parameter& parameter = parameters_.at(item);
  busy_ = parameter.wait * share_of_wait_;
  if (item == kChangePasswords) {  // kept apart: no read ever shows them
    for (std::size_t i = 0; i < passwords_.size() && i < fields.size(); ++i) {
      passwords_[i] = std::get<std::string>(fields[i].value);
    }
    return;
  }
  parameter.fields = std::move(fields);
  if (item == kTotalReset && number(kTotalReset) != 0) {
    for (const int total : {kVolumeTotal, kMassTotal, kBatchTotal, kTotalReset})
      set_number(total, 0);
  }
  if (item == kBusAddress) address_ = static_cast<int>(number(kBusAddress));
}

// A password opens its level, an empty one closes all, and so does a wrong one.
AnswerError Device::enter_password(const std::vector<Field>& fields) {
  const std::string& entered = std::get<std::string>(fields.front().value);
  const auto found = std::find(passwords_.begin(), passwords_.end(), entered);
  const bool opens = found != passwords_.end();
  open_level(opens ? static_cast<int>(found - passwords_.begin()) + 1 : 0);
  if (!opens && !entered.empty()) return AnswerError::kPasswordWrong;
  busy_ = parameters_.at(kEnterPassword).wait * share_of_wait_;
  return AnswerError::kNone;
}

void Device::open_level(int level) {
  password_level_ = level;
  set_number(kPasswordLevel, level);
}

std::string Device::display() const {
  char flow[32];
  std::snprintf(flow, sizeof flow, "%.2f m3/h", number(kVolumeFlow) * 3.6);
  return display_line(text(kTagName)) + display_line(flow);
}

int Device::address() const { return address_; }

void Device::set_address(int address) {
  address_ = address;
  set_number(kBusAddress, address);
}

int Device::baud_rate() const {
  constexpr int kRates[] = {1200, 2400, 4800, 9600, 19200};
  const auto position = static_cast<std::size_t>(number(kBaudRate));
  return position < std::size(kRates) ? kRates[position] : kRates[0];
}

const Field* Device::find(int item, std::size_t variable) const {
  const auto found = parameters_.find(item);
  if (found == parameters_.end()) return nullptr;
  const auto& fields = found->second.fields;
  return variable >= 1 && variable <= fields.size() ? &fields[variable - 1] : nullptr;
}

double Device::number(int item, std::size_t variable) const {
  const Field* field = find(item, variable);
  const double* value = field ? std::get_if<double>(&field->value) : nullptr;
  return value ? *value : 0;
}

std::string Device::text(int item, std::size_t variable) const {
  const Field* field = find(item, variable);
  const std::string* value = field ? std::get_if<std::string>(&field->value) : nullptr;
  return value ? *value : std::string();
}

void Device::set_number(int item, double value, std::size_t variable) {
  if (find(item, variable)) parameters_.at(item).fields[variable - 1].value = value;
}

}  // namespace fluxor
