// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "examples/simulator/faults.h"
#include "examples/simulator/options.h"
#include "examples/simulator/telegram.h"

namespace fluxor {
namespace {

const std::string kAnswer = to_text({1, 'r', AnswerError::kNone, 1, "0000803F"});

Faults with(const char* name, int value) {
  Faults faults;
  EXPECT_TRUE(set_fault(faults, name, value));
  return faults;
}

std::string carried(FaultyLine& line, const Faults& faults) {
  line.begin(faults);
  return line.command_arrives() ? line.carry(kAnswer) : std::string();
}

TEST(SimulatedLine, WithoutFaultsCarriesEverything) {
  FaultyLine line(1);
  for (int i = 0; i < 100; ++i) EXPECT_EQ(carried(line, {}), kAnswer);
}

TEST(SimulatedLine, DropsTheShareAskedForInBothDirections) {
  FaultyLine line(1);
  int commands = 0, answers = 0;
  for (int i = 0; i < 2000; ++i) {
    line.begin(with("drop", 20));
    if (!line.command_arrives()) {
      ++commands;
    } else if (line.carry(kAnswer).empty()) {
      ++answers;
    }
  }
  EXPECT_NEAR(commands, 200, 60);
  EXPECT_NEAR(answers, 200, 60);
}

TEST(SimulatedLine, PulledLineCarriesNothing) {
  FaultyLine line(1);
  line.begin(with("pulled", 1));
  EXPECT_FALSE(line.command_arrives());
}

TEST(SimulatedLine, HalfTelegramsAreAProperBeginning) {
  FaultyLine line(1);
  for (int i = 0; i < 100; ++i) {
    const std::string half = carried(line, with("half", 100));
    EXPECT_FALSE(half.empty());
    EXPECT_LT(half.size(), kAnswer.size());
    EXPECT_TRUE(kAnswer.starts_with(half));
  }
}

TEST(SimulatedLine, WrongChecksumChangesNothingElse) {
  FaultyLine line(1);
  const std::string wrong = carried(line, with("checksum", 100));
  ASSERT_EQ(wrong.size(), kAnswer.size());
  for (std::size_t i = 0; i < wrong.size(); ++i) {
    EXPECT_EQ(wrong[i] != kAnswer[i], i == wrong.size() - 2) << i;
  }
}

TEST(SimulatedLine, NoiseDamagesAnswers) {
  FaultyLine line(1);
  int damaged = 0;
  for (int i = 0; i < 100; ++i) damaged += carried(line, with("noise", 100)) != kAnswer;
  EXPECT_GT(damaged, 95);
}

TEST(SimulatedLine, SameSeedMakesTheSameFaults) {
  FaultyLine one(7), same(7), other(8);
  int different = 0;
  for (int i = 0; i < 100; ++i) {
    const std::string first = carried(one, with("noise", 50));
    EXPECT_EQ(carried(same, with("noise", 50)), first);
    different += carried(other, with("noise", 50)) != first;
  }
  EXPECT_GT(different, 0);
}

TEST(SimulatedLine, FaultsAreReadFromAFile) {
  const auto path = std::filesystem::temp_directory_path() / "simulated_line_faults";
  std::ofstream(path) << "drop=20\nunknown=3\nno line\ndelay=50\n";
  Faults faults = with("noise", 9);
  read_faults(path, faults);
  EXPECT_EQ(faults.drop, 20);
  EXPECT_EQ(faults.delay, 50);
  EXPECT_EQ(faults.noise, 0);
  std::filesystem::remove(path);
  read_faults(path, faults);
  EXPECT_EQ(faults.drop, 20) << "a missing file changes nothing";
}

TEST(SimulatorOptions, AreTakenFromTheCommandLine) {
  const char* const arguments[] = {"--data", "folder", "--address", "7",         "--drop", "20",
                                   "--seed", "3",      "--verbose", "--hang-up", "9"};
  const Options options = parse_options(arguments);
  EXPECT_EQ(options.data, "folder");
  EXPECT_EQ(options.software, "2.30");
  EXPECT_EQ(options.address, 7);
  EXPECT_EQ(options.faults.drop, 20);
  EXPECT_EQ(options.seed, 3u);
  EXPECT_EQ(options.hang_up, 9);
  EXPECT_TRUE(options.verbose);
}

TEST(SimulatorOptions, UnknownOrIncompleteOnesAreRefused) {
  using Arguments = std::vector<const char*>;
  for (const Arguments& arguments : {Arguments{"--drop"},
                                     {"--unknown", "1"},
                                     {"drop", "1"},
                                     {"--drop", "x"},
                                     {"--drop", "-1"},
                                     {"--drop", "1x"},
                                     {"--drop", ""}}) {
    EXPECT_THROW(parse_options(arguments), std::runtime_error) << arguments.front();
  }
}

}  // namespace
}  // namespace fluxor
