// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

namespace pv {

/// Decimal separator of the user's locale.
wchar_t decimal_separator();

/// A number in its ordinary text form, in the user's locale.
std::wstring format_number(double value);
std::wstring format_number(float value);

/// This moment as an automation date: days with the time of day as fraction, local time.
double current_moment();

/// Today or now, formatted by the platform's named or pattern formats, in the user's locale.
std::wstring current_time_text(const wchar_t* format);

}  // namespace pv
