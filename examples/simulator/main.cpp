// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// A program that behaves like a Fluxor flow transmitter on a serial line.

#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>

#include "device.h"
#include "faults.h"
#include "line_clock.h"
#include "line_counts.h"
#include "options.h"
#include "serial_line.h"
#include "settings.h"

namespace fluxor {
namespace {

using Clock = LineClock::Clock;

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
    if (!options_.counts_file.empty()) write_counts(options_.counts_file, counts_, format_);
    std::printf("%s\n", line_.host_end().c_str());
    std::fflush(stdout);
  }

  void run() {
    while (!stopped && !hung_up()) {
      const std::string received = line_.read(kPause);
      pass_time();
      if (received.empty()) {
        tell_counts();
      } else {
        take(received, line_.host_format());
      }
    }
  }

 private:
  static constexpr int kPause = 100;                // milliseconds
  static constexpr std::size_t kPortReceives = 16;  // characters that a port's chip keeps

  bool hung_up() const { return options_.hang_up != 0 && counts_.telegrams >= options_.hang_up; }

  void pass_time() {
    const auto now = Clock::now();
    device_.advance(std::chrono::duration<double>(now - last_).count());
    last_ = now;
  }

  void take(const std::string& received, const LineFormat& format) {
    if (!options_.autobaud && format.baud != device_.baud_rate()) return;  // garbage arrives
    format_ = format;
    clock_.set_character(options_.timed ? format.seconds_per_character() : 0);
    clock_.begin();
    counts_.received += static_cast<long>(received.size());
    for (const char character : received) {
      clock_.pass(1);
      if (const auto content = reader_.take(character)) exchange(*content);
    }
  }

  void exchange(const std::string& content) {
    clock_.wait();
    pass_time();
    ++counts_.telegrams;
    if (!options_.faults_file.empty()) read_faults(options_.faults_file, options_.faults);
    damage_.begin(options_.faults);
    show('>', content);
    if (!damage_.command_arrives()) return;
    const auto answer = device_.answer(content);
    if (!answer) return;
    const std::string arriving = damage_.carry(to_text(*answer));
    show('<', arriving);
    clock_.pause(options_.faults.delay);
    counts_.milliseconds += options_.faults.delay;
    send(arriving);
  }

  // In portions as a port hands them on, each when its last character has passed.
  void send(std::string_view text) {
    counts_.sent += static_cast<long>(text.size());
    const std::size_t portion = options_.timed ? kPortReceives : text.size();
    while (!text.empty()) {
      const std::string_view next = text.substr(0, portion);
      clock_.pass(next.size());
      clock_.wait();
      line_.write(next);
      text.remove_prefix(next.size());
    }
  }

  // Nobody is kept waiting by it now.
  void tell_counts() {
    if (options_.counts_file.empty() || counts_ == told_) return;
    write_counts(options_.counts_file, counts_, format_);
    told_ = counts_;
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
  LineClock clock_;
  LineFormat format_;
  LineCounts counts_, told_;
  Clock::time_point last_ = Clock::now();
};

}  // namespace
}  // namespace fluxor

int main(int argc, char** argv) {
  try {
    fluxor::wait_exactly();
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
