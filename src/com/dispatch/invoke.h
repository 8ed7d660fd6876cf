// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/dispatch/dispatch_table.h"

namespace pv {

/// IDispatch::GetIDsOfNames over a dispatch table.
HRESULT ids_of_names(const DispatchTable& table, LPOLESTR* names, UINT count, DISPID* ids) noexcept;

/// IDispatch::Invoke over a dispatch table, in the host's own floating-point state: every argument
/// is brought to the declared type, the vtable method of `object` is called, and changed
/// by-reference arguments go back to the caller.
HRESULT invoke(void* object, const DispatchTable& table, DISPID id, REFIID iid, WORD flags,
               DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
               UINT* argument_error) noexcept;

}  // namespace pv
