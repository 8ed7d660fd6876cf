// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/variant.h"

// Objects of a host stand for the value of their default member where a plain value is wanted.
namespace pv {

/// Whether a conversion into the type means the default member of `value`.
bool means_default_member(const VARIANT& value, VARTYPE type);

/// From any floating-point state, asks the object in `value` for its default member, in that of the
/// host; an object
/// there is asked in turn. Lack of memory is answered as the object said; any other failure is a
/// DISP_E_TYPEMISMATCH.
HRESULT get_default_member(const VARIANT& value, VARIANT& member);

/// In any floating-point state, the platform's conversion in the user's locale, with Booleans as
/// words. Not for a `target` that holds anything.
HRESULT change_type(VARIANT& target, const VARIANT& value, VARTYPE type);

}  // namespace pv
