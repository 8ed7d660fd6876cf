// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "faults.h"

#include <fstream>
#include <utility>

namespace fluxor {
namespace {

constexpr std::pair<const char*, int Faults::*> kNames[] = {
    {"drop", &Faults::drop}, {"noise", &Faults::noise}, {"checksum", &Faults::checksum},
    {"half", &Faults::half}, {"delay", &Faults::delay}, {"pulled", &Faults::pulled},
};

}  // namespace

bool set_fault(Faults& faults, const std::string& name, int value) {
  for (const auto& [known, member] : kNames) {
    if (name != known) continue;
    faults.*member = value;
    return true;
  }
  return false;
}

void read_faults(const std::string& path, Faults& faults) {
  std::ifstream file(path);
  if (!file) return;
  faults = {};
  for (std::string line; std::getline(file, line);) {
    const auto equals = line.find('=');
    if (equals == std::string::npos) continue;
    set_fault(faults, line.substr(0, equals), std::atoi(line.c_str() + equals + 1));
  }
}

void FaultyLine::begin(const Faults& faults) {
  faults_ = faults;
  const bool lost = happens(faults.drop);
  const bool lost_on_the_way_there = happens(50);
  command_arrives_ = faults.pulled == 0 && !(lost && lost_on_the_way_there);
  answer_arrives_ = command_arrives_ && !lost;
}

std::string FaultyLine::carry(std::string answer) {
  if (!answer_arrives_) return {};
  if (happens(faults_.checksum)) answer[answer.size() - 2] ^= 1;
  if (happens(faults_.half)) answer.resize(1 + below(answer.size() - 1));
  if (happens(faults_.noise)) {
    answer[below(answer.size())] = static_cast<char>(below(256));
    answer = garbage() + answer + garbage();
  }
  return answer;
}

bool FaultyLine::happens(int per_cent) { return below(100) < static_cast<std::size_t>(per_cent); }

// Not a std distribution: their results differ between libraries.
std::size_t FaultyLine::below(std::size_t limit) { return random_() % limit; }

std::string FaultyLine::garbage() {
  std::string text(below(8), '\0');
  for (char& character : text) character = static_cast<char>(below(256));
  return text;
}

}  // namespace fluxor
