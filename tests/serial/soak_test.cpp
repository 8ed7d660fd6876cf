// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Many rounds of writing and reading over a line that loses telegrams: what is written is read, and
// memory, handles and both histories stay exact. The options --rounds and --progress tell how many,
// and after how many a line is printed.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tests/serial/line_test.h"
#include "tests/support/memory/allocation_count.h"
#include "tests/support/memory/allocation_spy.h"
#include "tests/support/module.h"
#include "tests/support/program.h"

namespace pv::test {
namespace {

constexpr int kHistoryFolder = 8;
constexpr int kSilent = 1;
constexpr int kKeptRecords = 16;
constexpr int kWarmUp = 50;  // rounds until all caches are full
constexpr const char* kFaults = "drop=1";
constexpr std::size_t kReserve = 131072;  // bytes by which the heaps may seem to grow
constexpr int kEnough = 60;  // attempts; a busy machine may hold the device up for a while, too

int number_option(const char* name, int otherwise) {
  const auto given = option(name);
  return given ? std::atoi(given->c_str()) : otherwise;
}

/// What the process holds.
struct Holdings {
  std::size_t com_blocks = 0;
  long blocks = 0;
  DWORD handles = 0;
  bool operator==(const Holdings&) const = default;
};

void PrintTo(const Holdings& holdings, std::ostream* out) {
  *out << holdings.com_blocks << " blocks of COM, " << holdings.blocks << " blocks of C++ code, "
       << holdings.handles << " handles";
}

std::size_t bytes_of_heap(HANDLE heap) {
  if (!HeapLock(heap)) return 0;
  std::size_t bytes = 0;
  PROCESS_HEAP_ENTRY entry{};
  while (HeapWalk(heap, &entry))
    if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
  HeapUnlock(heap);
  return bytes;
}

/// What the platform allocates, too. Some heaps take blocks of one size in advance, so that this
/// number is not exact.
std::size_t bytes_of_heaps() {
  HANDLE heaps[64];
  const DWORD count = std::min<DWORD>(GetProcessHeaps(ARRAYSIZE(heaps), heaps), ARRAYSIZE(heaps));
  std::size_t bytes = 0;
  for (DWORD i = 0; i < count; ++i) bytes += bytes_of_heap(heaps[i]);
  return bytes;
}

/// Not every system counts them; what each number stands for is asked instead.
DWORD count_handles() {
  constexpr std::uintptr_t kStep = 4;
  constexpr std::uintptr_t kMost = 4096;
  DWORD count = 0;
  for (std::uintptr_t i = 1; i <= kMost; ++i) {
    DWORD flags = 0;
    if (GetHandleInformation(reinterpret_cast<HANDLE>(i * kStep), &flags)) ++count;
  }
  return count;
}

Holdings holdings_now() {
  Holdings holdings;
  holdings.com_blocks = living_allocations();
  holdings.blocks = count_allocations();
  holdings.handles = count_handles();
  return holdings;
}

class Soak : public LineTest {
 protected:
  Soak() {
    std::filesystem::create_directories(folder_);
    utility_.put(L"AppDirectory", kHistoryFolder, folder_);
    transmitter_.put(L"Historian", kSilent);
    transmitter_.put(L"HistorianTechName", L"Ann");
    item(L"105").put(L"Historian", true);
    allow_attempts(kEnough);
  }
  ~Soak() override { utility_.put(L"AppDirectory", kHistoryFolder, L""); }

  void run_round(int round) {
    const int value = 1 + round % 6;
    ASSERT_TRUE(write(L"105", value)) << trouble(round);
    item(L"105").put(L"Value", 1, 0);
    ASSERT_TRUE(read(L"105")) << trouble(round);
    ASSERT_EQ(this->value(L"105"), value) << round;
    exchanges_ += 2;
    ++entries_;
    ASSERT_EQ(record().get(L"CmdItemID"), 105) << round;
    ASSERT_EQ(record().get(L"AnswItemID"), 105) << round;
    hurry_->forget();
  }

  std::string trouble(int round) const {
    return "round " + std::to_string(round) + ": outcome " + std::to_string(com_error()) +
           ", error " + std::to_string(answer_error()) + ", attempts " +
           std::to_string(record().get(L"Repeat").number());
  }

  /// The line is pulled out for one exchange, and a good one afterwards.
  void lose_the_line() {
    set_faults("pulled=1");
    allow_attempts(1);
    EXPECT_FALSE(read(L"110"));
    EXPECT_EQ(com_error(), kReceiveTimeOut);
    allow_attempts(kEnough);
    set_faults("");
    ++exchanges_;
    ++failures_;
  }

  /// Settings that differ where the device does not care close the port and open it anew.
  void open_the_port_anew() {
    for (const wchar_t* settings : {L"4800,n,8,2", L"4800,n,8,1"}) {
      transmitter_.put(L"ComSettings", settings);
      ASSERT_TRUE(read(L"110")) << settings;
      ASSERT_EQ(record().get(L"ComSettings"), settings);
      ++exchanges_;
    }
  }

  /// Fills the record of the exchanges with the same ones each time: on a busy machine even an
  /// answer over a good line may come late, and leave other texts there.
  Holdings holdings_at_rest() {
    for (int alike = 0; alike < kKeptRecords; ++exchanges_) {
      if (!read(L"110")) throw CallFailed("a good line fails");
      const Object last = record();
      const bool at_once = last.get(L"Repeat") == Value(1) &&
                           last.get(L"InBuffer").text() == last.get(L"AnswString").text();
      alike = at_once ? alike + 1 : 0;
    }
    hurry_->forget();
    return holdings_now();
  }

  void expect_exact_histories() const {
    EXPECT_EQ(record(kKeptRecords - 1).get(L"CmdItemID"), 110);
    EXPECT_THROW(record(kKeptRecords), CallFailed);
    const std::wstring told = server_.get(L"GetMessage").text();
    EXPECT_TRUE(told.starts_with(L"Norvak: " + std::to_wstring(exchanges_) + L" exchanges, "))
        << printable(told);
    EXPECT_TRUE(told.ends_with(L", " + std::to_wstring(failures_) + L" failed")) << printable(told);
    EXPECT_EQ(audit_entries(), entries_);
  }

  /// Lines of the audit file about the item, each of which has to be whole.
  long audit_entries() const {
    std::ifstream file(std::filesystem::path(folder_ + L"Historian.csv"), std::ios::binary);
    long entries = 0;
    std::string line;
    std::getline(file, line);  // the header
    while (std::getline(file, line)) {
      if (line == "\r") continue;
      EXPECT_NE(line.find(",Ann,Fluxor,1,"), std::string::npos) << line;
      EXPECT_NE(line.find(",105,"), std::string::npos) << line;
      EXPECT_TRUE(line.ends_with('\r')) << line;
      ++entries;
    }
    return entries;
  }

  long exchanges_ = 0;
  long failures_ = 0;
  long entries_ = 0;

 private:
  const std::wstring folder_ = scratch_folder() + L"soak\\";
  const Object utility_ = Object::create(L"pvItems32.CUtility");
};

TEST_F(Soak, MemoryHandlesAndHistoriesStayExact) {
  const int rounds = number_option("--rounds", 100);
  const int progress = number_option("--progress", rounds);
  Holdings before;
  std::size_t bytes_before = 0;
  set_faults(kFaults);
  for (int round = -kWarmUp; round <= rounds; ++round) {
    ASSERT_NO_FATAL_FAILURE(run_round(round + kWarmUp));
    if (round % progress != 0 && round != rounds && round != -kWarmUp / 2) continue;
    lose_the_line();
    ASSERT_NO_FATAL_FAILURE(open_the_port_anew());
    const Holdings now = holdings_at_rest();
    const std::size_t bytes = bytes_of_heaps();
    if (round <= 0) {  // caches are full now
      before = now;
      bytes_before = bytes;
    }
    ASSERT_EQ(now, before) << "after " << round << " rounds";
    ASSERT_LE(bytes, bytes_before + kReserve) << "after " << round << " rounds";
    expect_exact_histories();
    std::printf("%d rounds: %s, %zu bytes in the heaps\n  %s\n", round,
                testing::PrintToString(now).c_str(), bytes,
                printable(server_.get(L"GetMessage").text()).c_str());
    std::fflush(stdout);
    set_faults(kFaults);
  }
}

}  // namespace
}  // namespace pv::test
