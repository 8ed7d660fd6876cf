// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/serial/known_values.h"

#include <fstream>
#include <set>
#include <sstream>

#include "tests/support/source_tree.h"

namespace pv::test {

std::vector<KnownValue> known_values() {
  const std::set<std::wstring> moving = {L"1",  L"2",  L"3",  L"4",  L"5",  L"6",
                                         L"7",  L"21", L"22", L"23", L"50", L"51",
                                         L"55", L"58", L"72", L"73", L"75", L"141"};
  const std::set<std::wstring> of_older_software = {L"160", L"161"};
  std::ifstream file(source_file("examples/data/fluxor.val"));
  std::vector<KnownValue> values;
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::wstringstream fields(std::wstring(line.begin(), line.end()));
    KnownValue value;
    std::wstring variable;
    std::getline(fields, value.key, L'|');
    std::getline(fields, variable, L'|');
    std::getline(fields, value.text);
    value.variable = std::stoi(variable);
    if (!moving.contains(value.key) && !of_older_software.contains(value.key))
      values.push_back(value);
  }
  return values;
}

void expect_known(const Value& got, const KnownValue& expected) {
  if (got.is_text()) {
    EXPECT_EQ(got, expected.text) << printable(expected.key);
    return;
  }
  const double number = std::wcstod(expected.text.c_str(), nullptr);
  EXPECT_NEAR(got.real(), number, std::abs(number) * 1e-6) << printable(expected.key);
}

}  // namespace pv::test
