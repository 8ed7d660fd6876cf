// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/CStatistics.h"

namespace pv {

template ClassEntry class_entry<CStatistics>();

STDMETHODIMP CStatistics::get_Sample(long* result) noexcept {
  return method_with_result(result, [&] { return series_.sample; });
}
STDMETHODIMP CStatistics::get_Average(float* result) noexcept {
  return method_with_result(result, [&] { return series_.average; });
}
STDMETHODIMP CStatistics::get_Value(float* result) noexcept {
  return method_with_result(result, [&] { return series_.value; });
}
STDMETHODIMP CStatistics::get_Sum(double* result) noexcept {
  return method_with_result(result, [&] { return series_.sum; });
}
STDMETHODIMP CStatistics::get_SD2(double* result) noexcept {
  return method_with_result(result, [&] { return series_.sum_of_squares; });
}
STDMETHODIMP CStatistics::get_S2D(double* result) noexcept {
  return method_with_result(result, [&] { return series_.square_of_sum; });
}
STDMETHODIMP CStatistics::get_STD(float* result) noexcept {
  return method_with_result(result, [&] { return series_.deviation; });
}
STDMETHODIMP CStatistics::get_Min(float* result) noexcept {
  return method_with_result(result, [&] { return series_.min; });
}
STDMETHODIMP CStatistics::get_Max(float* result) noexcept {
  return method_with_result(result, [&] { return series_.max; });
}
STDMETHODIMP CStatistics::get_Range(float* result) noexcept {
  return method_with_result(result, [&] { return series_.range; });
}
STDMETHODIMP CStatistics::Reset() noexcept {
  return method([&] { series_ = {}; });
}
STDMETHODIMP CStatistics::Add(float value) noexcept {
  return method([&] { series_.add(value); });
}
STDMETHODIMP CStatistics::Refresh() noexcept {
  return method([&] { series_.refresh(); });
}
STDMETHODIMP CStatistics::FPMin(float a, float b, float* result) noexcept {
  return method_with_result(result, [&] { return smaller_of(a, b); });
}
STDMETHODIMP CStatistics::FPMax(float a, float b, float* result) noexcept {
  return method_with_result(result, [&] { return larger_of(a, b); });
}

}  // namespace pv
