// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/dispatch/dispatch_table.h"

namespace pv {

/// IDispatch::GetIDsOfNames over a dispatch table.
HRESULT ids_of_names(const DispatchTable& table, REFIID iid, LPOLESTR* names, UINT count,
                     DISPID* ids) noexcept;

/// IDispatch::Invoke over a dispatch table, in the host's own floating-point state: every argument
/// is brought to the declared type, the vtable method of `object` is called, and changed
/// by-reference arguments go back to the caller. The object lives as long as the call.
HRESULT invoke(IDispatch* object, const DispatchTable& table, DISPID id, REFIID iid, WORD flags,
               DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
               UINT* argument_error) noexcept;

}  // namespace pv
