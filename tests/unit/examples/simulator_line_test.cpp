// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The line of the simulated transmitter: what the host has set, and how long characters take.

#include <gtest/gtest.h>

#include <asm/termbits.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "examples/simulator/line_clock.h"
#include "examples/simulator/line_counts.h"
#include "examples/simulator/serial_line.h"

namespace fluxor {
namespace {

class HostEnd {
 public:
  explicit HostEnd(const SerialLine& line)
      : port_(open(line.host_end().c_str(), O_RDWR | O_NOCTTY)) {}
  HostEnd(const HostEnd&) = delete;
  HostEnd& operator=(const HostEnd&) = delete;
  ~HostEnd() { close(port_); }

  void set_speed(unsigned code, unsigned speed) const {
    change([&](termios2& settings) {
      settings.c_cflag = (settings.c_cflag & ~static_cast<unsigned>(CBAUD)) | code;
      settings.c_ospeed = settings.c_ispeed = speed;
    });
  }

  void set_two_stop_bits() const {
    change([](termios2& settings) { settings.c_cflag |= CSTOPB; });
  }

 private:
  template <class Change>
  void change(Change change) const {
    termios2 settings{};
    ASSERT_EQ(ioctl(port_, TCGETS2, &settings), 0);
    change(settings);
    ASSERT_EQ(ioctl(port_, TCSETS2, &settings), 0);
  }

  int port_;
};

TEST(SimulatorLine, KnowsASpeedThatIsSetAsACode) {
  const SerialLine line("");
  HostEnd(line).set_speed(B1200, 0);
  EXPECT_EQ(line.host_format().baud, 1200);
}

TEST(SimulatorLine, KnowsASpeedThatIsSetAsANumber) {
  const SerialLine line("");
  HostEnd(line).set_speed(BOTHER, 4800);
  EXPECT_EQ(line.host_format().baud, 4800);
}

TEST(SimulatorLine, CountsTheBitsOfACharacter) {
  const SerialLine line("");
  const HostEnd host(line);
  host.set_speed(B4800, 0);
  EXPECT_EQ(line.host_format().bits, 10);
  EXPECT_DOUBLE_EQ(line.host_format().seconds_per_character(), 10 / 4800.0);
  host.set_two_stop_bits();
  EXPECT_EQ(line.host_format().bits, 11);
}

TEST(SimulatorLine, ALineWithoutASpeedTakesNoTime) {
  EXPECT_EQ(LineFormat{}.seconds_per_character(), 0);
}

double seconds_since(LineClock::Clock::time_point begin) {
  return LineClock::Seconds(LineClock::Clock::now() - begin).count();
}

TEST(SimulatorLineClock, CharactersAndPausesAddUp) {
  const auto begin = LineClock::Clock::now();
  LineClock clock;
  clock.set_character(0.002);
  clock.begin();
  clock.pass(10);
  clock.pause(15);
  clock.wait();
  EXPECT_GE(seconds_since(begin), 0.035);
}

TEST(SimulatorLineClock, WhoeverBeginsWaitsUntilTheLineIsFree) {
  const auto begin = LineClock::Clock::now();
  LineClock clock;
  clock.set_character(0.002);
  for (int telegram = 0; telegram < 2; ++telegram) {
    clock.begin();
    clock.pass(10);
  }
  clock.wait();
  EXPECT_GE(seconds_since(begin), 0.04);
}

TEST(SimulatorLineCounts, AreLinesOfNames) {
  const auto path = std::filesystem::temp_directory_path() / ("counts" + std::to_string(getpid()));
  write_counts(path, {3, 39, 51, 6}, {4800, 10});
  std::ifstream file(path);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  std::filesystem::remove(path);
  EXPECT_EQ(text, "telegrams=3\nreceived=39\nsent=51\nmilliseconds=6\nbaud=4800\nbits=10\n");
}

TEST(SimulatorLineCounts, NeedAFolder) {
  EXPECT_THROW(write_counts("/no such folder/counts", {}, {}), std::runtime_error);
}

}  // namespace
}  // namespace fluxor
