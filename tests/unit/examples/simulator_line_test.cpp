// The simulated transmitter knows the speed that a host has set, in both ways that there are.

#include <gtest/gtest.h>

#include <asm/termbits.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

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
    termios2 settings{};
    ASSERT_EQ(ioctl(port_, TCGETS2, &settings), 0);
    settings.c_cflag = (settings.c_cflag & ~static_cast<unsigned>(CBAUD)) | code;
    settings.c_ospeed = settings.c_ispeed = speed;
    ASSERT_EQ(ioctl(port_, TCSETS2, &settings), 0);
  }

 private:
  int port_;
};

TEST(SimulatorLine, KnowsASpeedThatIsSetAsACode) {
  const SerialLine line("");
  HostEnd(line).set_speed(B1200, 0);
  EXPECT_EQ(line.host_baud_rate(), 1200);
}

TEST(SimulatorLine, KnowsASpeedThatIsSetAsANumber) {
  const SerialLine line("");
  HostEnd(line).set_speed(BOTHER, 4800);
  EXPECT_EQ(line.host_baud_rate(), 4800);
}

}  // namespace
}  // namespace fluxor
