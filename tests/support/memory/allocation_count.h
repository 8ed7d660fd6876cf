// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

namespace pv::test {

/// Blocks that the C++ code of this program, and of the DLLs beside it, holds of the C runtime,
/// counted from the first call on; only differences mean something. What the platform allocates is
/// not in it.
long count_allocations();

}  // namespace pv::test
