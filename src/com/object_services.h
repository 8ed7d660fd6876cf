// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/automation.h"

// What the objects of all classes do alike, apart from the class template that offers it.
namespace pv {

/// The interfaces that every object has.
enum class Served { kNone, kMembers, kErrorInfo, kClassInfo };
/// Which of them an id means. The ids of the default interface and of the class mean its members.
Served served_interface(REFIID iid, REFIID members, REFCLSID clsid) noexcept;

/// The description of an interface or class in our own type library. `class_name` and `function`
/// say who asks.
HRESULT get_type_info(const wchar_t* class_name, const char* function, REFGUID id,
                      ITypeInfo** info) noexcept;

/// IProvideClassInfo2::GetGUID of a class with these events, null for none.
HRESULT get_events_id(const IID* events, DWORD kind, GUID* id) noexcept;

}  // namespace pv
