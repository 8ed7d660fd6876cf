// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "line_clock.h"

#include <sys/prctl.h>

#include <algorithm>
#include <thread>

namespace fluxor {

void LineClock::begin() { free_ = std::max(free_, Clock::now()); }

void LineClock::wait() const { std::this_thread::sleep_until(free_); }

void wait_exactly() { prctl(PR_SET_TIMERSLACK, 1UL); }

}  // namespace fluxor
