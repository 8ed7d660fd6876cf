// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

namespace pv::test {

/// Leaves no address below 4 GB for what this process allocates from now on: texts, objects, values
/// and the stacks of new threads. Systems differ in where they begin, and a pointer that is cut to
/// 32 bits shows above only. A 32-bit process has no such addresses: it stays as it is.
void use_high_addresses();

/// Whether this address needs more than 32 bits.
bool is_high(const void* address);

}  // namespace pv::test
