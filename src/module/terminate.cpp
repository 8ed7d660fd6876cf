// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What the run-time library does with an exception that nobody catches. Its own handler writes the
// name of the exception to a console that hosts do not have, and brings 50 KB that decode names.

#include <cstdlib>

namespace __gnu_cxx {

void __verbose_terminate_handler();  // NOLINT(bugprone-reserved-identifier): the library's name
void __verbose_terminate_handler() { std::abort(); }  // NOLINT(bugprone-reserved-identifier)

}  // namespace __gnu_cxx
