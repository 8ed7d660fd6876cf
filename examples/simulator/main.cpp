// A program that behaves like a Fluxor flow transmitter on a serial line.

#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <thread>

#include "device.h"
#include "faults.h"
#include "options.h"
#include "serial_line.h"
#include "settings.h"

namespace fluxor {
namespace {

using Clock = std::chrono::steady_clock;

volatile std::sig_atomic_t stopped = 0;

class Simulator {
 public:
  explicit Simulator(const Options& options)
      : options_(options),
        device_(load_parameters(options.data, options.software), options.store / 100.0),
        line_(options.link),
        damage_(options.seed) {
    if (options.address != 0) device_.set_address(options.address);
    device_.advance(0);
    std::printf("%s\n", line_.host_end().c_str());
    std::fflush(stdout);
  }

  void run() {
    while (!stopped && !hung_up()) {
      const std::string received = line_.read(kPause);
      pass_time();
      if (line_.host_baud_rate() != device_.baud_rate()) continue;  // nothing but garbage arrives
      for (const char character : received) {
        if (const auto content = reader_.take(character)) exchange(*content);
      }
    }
  }

 private:
  static constexpr int kPause = 100;  // milliseconds

  bool hung_up() const { return options_.hang_up != 0 && telegrams_ >= options_.hang_up; }

  void pass_time() {
    const auto now = Clock::now();
    device_.advance(std::chrono::duration<double>(now - last_).count());
    last_ = now;
  }

  void exchange(const std::string& content) {
    ++telegrams_;
    if (!options_.faults_file.empty()) read_faults(options_.faults_file, options_.faults);
    damage_.begin(options_.faults);
    show('>', content);
    if (!damage_.command_arrives()) return;
    const auto answer = device_.answer(content);
    if (!answer) return;
    const std::string arriving = damage_.carry(to_text(*answer));
    show('<', arriving);
    std::this_thread::sleep_for(std::chrono::milliseconds(options_.faults.delay));
    line_.write(arriving);
  }

  void show(char direction, const std::string& text) const {
    if (!options_.verbose) return;
    std::string readable;
    for (const char character : text)
      readable += character < ' ' || character > '~' ? '.' : character;
    std::printf("%c %s\n", direction, readable.c_str());
    std::fflush(stdout);
  }

  Options options_;
  Device device_;
  SerialLine line_;
  FaultyLine damage_;
  TelegramReader reader_;
  Clock::time_point last_ = Clock::now();
  int telegrams_ = 0;
};

}  // namespace
}  // namespace fluxor

int main(int argc, char** argv) {
  try {
    const auto options = fluxor::parse_options({argv + 1, static_cast<std::size_t>(argc - 1)});
    std::signal(SIGTERM, [](int) { fluxor::stopped = 1; });
    std::signal(SIGINT, [](int) { fluxor::stopped = 1; });
    fluxor::Simulator(options).run();
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "fluxor_simulator: %s\n%s", error.what(), fluxor::kUsage);
    return 1;
  }
}
