// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/script_host/script_host.h"

namespace pv::test {

/// What scripts test with, in any language, as global members:
///   Check(actual, expected)            the same kind and content; whole numbers of any width
///   KindOf(value)                      as it comes from the language, such as "Date" or "Long
///   array" DecimalOf(text), CurrencyOf(text), DateOf(text), SafeArrayOf(values...)
///                                      kinds of values that a language may lack
///   CallNamed(object, member, name, argument, ...)   a call with named arguments
///   LentMembers(collection)            to enumerate by engines that keep enumerators
///   MissingEvents(object)              names of the events of a connected object that did not come
/// `checks` counts the calls of Check; it outlives the host.
NamedItem checks_of(ScriptHost& host, int& checks);

}  // namespace pv::test
