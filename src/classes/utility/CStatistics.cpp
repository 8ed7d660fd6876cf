// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/CStatistics.h"

#include <limits>
#include <utility>

namespace pv {

template ClassEntry class_entry<CStatistics>();

namespace {

constexpr auto kMostSamples = std::numeric_limits<decltype(RunningStatistics::sample)>::max();

}  // namespace

RunningStatistics& CStatistics::series() {
  RunningStatistics series = series_;  // in registers
  const auto end = waiting_.begin() + std::exchange(waiting_count_, 0);
  for (auto reading = waiting_.begin(); reading != end; ++reading) series.add(*reading);
  return series_ = series;
}

STDMETHODIMP CStatistics::get_Sample(long* result) noexcept {
  return method_with_result(result, [&] { return series().sample; });
}
STDMETHODIMP CStatistics::get_Average(float* result) noexcept {
  return method_with_result(result, [&] { return series().average; });
}
STDMETHODIMP CStatistics::get_Value(float* result) noexcept {
  return method_with_result(result, [&] { return series().value; });
}
STDMETHODIMP CStatistics::get_Sum(double* result) noexcept {
  return method_with_result(result, [&] { return series().sum; });
}
STDMETHODIMP CStatistics::get_SD2(double* result) noexcept {
  return method_with_result(result, [&] { return series().sum_of_squares; });
}
STDMETHODIMP CStatistics::get_S2D(double* result) noexcept {
  return method_with_result(result, [&] { return series().square_of_sum; });
}
STDMETHODIMP CStatistics::get_STD(float* result) noexcept {
  return method_with_result(result, [&] { return series().deviation; });
}
STDMETHODIMP CStatistics::get_Min(float* result) noexcept {
  return method_with_result(result, [&] { return series().min; });
}
STDMETHODIMP CStatistics::get_Max(float* result) noexcept {
  return method_with_result(result, [&] { return series().max; });
}
STDMETHODIMP CStatistics::get_Range(float* result) noexcept {
  return method_with_result(result, [&] { return series().range; });
}
STDMETHODIMP CStatistics::Reset() noexcept {
  return plain_method([&] {
    series_ = {};
    waiting_count_ = 0;
  });
}
STDMETHODIMP CStatistics::Add(float value) noexcept {
  // A reading that only waits cannot fail: there is nothing for the error boundary to do.
  if (waiting_count_ < kMostWaiting && series_.sample <= kMostSamples - kMostWaiting) {
    waiting_[static_cast<std::size_t>(waiting_count_++)] = value;
    return S_OK;
  }
  return method([&] { series().add(value); });
}
STDMETHODIMP CStatistics::Refresh() noexcept {
  return method([&] { series().refresh(); });
}
STDMETHODIMP CStatistics::FPMin(float a, float b, float* result) noexcept {
  return method_with_result(result, [&] { return smaller_of(a, b); });
}
STDMETHODIMP CStatistics::FPMax(float a, float b, float* result) noexcept {
  return method_with_result(result, [&] { return larger_of(a, b); });
}

}  // namespace pv
