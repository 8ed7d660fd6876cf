// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Running figures: what one reading costs.
#include <algorithm>
#include <vector>

#include "tests/bench/subject.h"

namespace pv::bench {
namespace {

/// The same sums behind one virtual call, with nothing around them.
class Sums {
 public:
  virtual ~Sums() = default;
  virtual HRESULT STDMETHODCALLTYPE add(float reading) noexcept {
    min_ = count_ == 0 ? reading : std::min(min_, reading);
    max_ = count_ == 0 ? reading : std::max(max_, reading);
    ++count_;
    last_ = reading;
    sum_ += reading;
    sum_of_squares_ += static_cast<double>(reading * reading);
    square_of_sum_ = sum_ * sum_;
    return S_OK;
  }

 private:
  long count_ = 0;
  float min_ = 0, max_ = 0, last_ = 0;
  double sum_ = 0, sum_of_squares_ = 0, square_of_sum_ = 0;
};

}  // namespace

void measure_statistics(Report& report) {
  std::vector<float> readings;
  for (int i = 0; i < 1000; ++i) readings.push_back(static_cast<float>(i % 97) * 0.25f);
  const auto count = static_cast<double>(readings.size());
  const auto statistics = create<CStatistics, _CStatistics>();
  Sums own;
  Sums* volatile sums = &own;  // keeps the compiler from seeing through the virtual call
  const Task ours{[&] {
                    check(statistics->Reset());
                    for (const float reading : readings) statistics->Add(reading);
                  },
                  count};
  const Task theirs{[&] {
                      Sums* const target = sums;
                      for (const float reading : readings) target->add(reading);
                    },
                    count};
  report.ratio("CStatistics.Add, early bound", "the same sums in a loop with a virtual call",
               compare(ours, theirs), 1.6);
}

}  // namespace pv::bench
