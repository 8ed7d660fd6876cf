// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Many transmitters at once, one apartment each: every line keeps to itself. Their lines take the
// time that the characters need; the option --counts names the folder of what they counted.

#include "tests/serial/known_values.h"
#include "tests/support/line_host.h"
#include "tests/support/program.h"

namespace pv::test {
namespace {

constexpr short kMany = 16;
constexpr const wchar_t* kFast = L"115200,n,8,1";
constexpr const wchar_t* kBusAddress = L"100";

std::filesystem::path counts_folder() {
  const auto folder = option("--counts");
  if (!folder) throw CallFailed("the option --counts is missing");
  return *folder;
}

void expect_all_values(const LineHost& host) {
  EXPECT_EQ(host.item(kBusAddress).get(L"Value", 1), host.address()) << "who answered";
  for (const KnownValue& expected : known_values()) {
    if (expected.key != kBusAddress)
      expect_known(host.item(expected.key).get(L"Value", expected.variable), expected);
  }
}

// Exchanges and repeats are part of what the transmitter has to count.
void expect_one_round(const LineHost& host, const LineCounts& counts) {
  EXPECT_EQ(counts.telegrams, static_cast<long>(host.keys().size()));
  EXPECT_EQ(counts.characters, host.characters_of_all());
  EXPECT_TRUE(host.report().ends_with(L" 0 repeats, 0 time-outs, 0 failed"))
      << printable(host.report());
}

void read_at_once(short lines) {
  std::barrier<> all(lines);
  in_apartments(lines, [&](short line) {
    Together together(all);
    const LineHost host(line, kFast, counts_folder());
    SCOPED_TRACE(line);
    ASSERT_EQ(host.keys().size(), 64u);
    const LineCounts before = host.counts();
    together.wait();
    host.read_all();
    expect_one_round(host, host.counts() - before);
    expect_all_values(host);
  });
}

TEST(ManyLines, OneApartmentReadsEveryItemOfItsTransmitter) { read_at_once(1); }

TEST(ManyLines, SixteenApartmentsReadEveryItemOfTheirTransmitters) { read_at_once(kMany); }

// Characters take their time: no answer is complete before the line had time for it.
TEST(ManyLines, AnswersTakeTheTimeOfTheirCharacters) {
  in_apartments(1, [](short line) {
    const LineHost host(line, L"9600,n,8,1", counts_folder());
    const LineCounts before = host.counts();
    const auto begin = std::chrono::steady_clock::now();
    host.read_all();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
    const LineCounts counts = host.counts() - before;
    EXPECT_DOUBLE_EQ(counts.seconds, static_cast<double>(counts.characters) * 10 / 9600);
    EXPECT_GE(elapsed.count(), counts.seconds);
  });
}

}  // namespace
}  // namespace pv::test
