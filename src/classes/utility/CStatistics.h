// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "com/object.h"
#include "core/statistics/running_statistics.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CStatistics)

/// Running statistics over successive readings.
class CStatistics final : public AutomationObject<CStatistics> {
 public:
  STDMETHODIMP get_Sample(long* result) noexcept override;
  STDMETHODIMP get_Average(float* result) noexcept override;
  STDMETHODIMP get_Value(float* result) noexcept override;
  STDMETHODIMP get_Sum(double* result) noexcept override;
  STDMETHODIMP get_SD2(double* result) noexcept override;
  STDMETHODIMP get_S2D(double* result) noexcept override;
  STDMETHODIMP get_STD(float* result) noexcept override;
  STDMETHODIMP get_Min(float* result) noexcept override;
  STDMETHODIMP get_Max(float* result) noexcept override;
  STDMETHODIMP get_Range(float* result) noexcept override;
  STDMETHODIMP Reset() noexcept override;
  STDMETHODIMP Add(float value) noexcept override;
  STDMETHODIMP Refresh() noexcept override;
  STDMETHODIMP FPMin(float a, float b, float* result) noexcept override;
  STDMETHODIMP FPMax(float a, float b, float* result) noexcept override;

 private:
  /// The figures with all readings, for a body that computes.
  RunningStatistics& series();

  // Readings wait to be added up many at a time, when the figures are asked for or there are too
  // many: a look at the host's floating-point state costs more than the sums of one.
  static constexpr std::int32_t kMostWaiting = 32;
  std::array<float, kMostWaiting> waiting_{};
  std::int32_t waiting_count_ = 0;
  RunningStatistics series_;  // of those before
};

}  // namespace pv
