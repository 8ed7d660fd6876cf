// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <new>
#include <span>
#include <string>
#include <utility>

#include "com/automation.h"
#include "com/ref.h"
#include "core/list/key_case.h"

namespace pv {

/// One creatable class: how the class factory and the registration know it.
struct ClassEntry {
  const CLSID* clsid;
  const wchar_t* name;  // "CItems"
  HRESULT (*create)(REFIID iid, void** object);
};

/// The entry of a class of the library, which the class's own source file instantiates.
template <class Class>
ClassEntry class_entry();

/// What this layer has to know of the library that it serves.
struct Library {
  const wchar_t* name;  // of the type library, first part of each ProgID: "pvItems32"
  std::span<const ClassEntry> classes;
  const KeyCase& keys;  // of collections
};

/// Defined by the library itself.
const Library& library();

/// The DLL itself.
HINSTANCE module_instance();
std::wstring module_path();

/// Objects and locks that keep the DLL loaded.
long living_objects();
void add_living_object();
void remove_living_object();

/// Creates an object of one of our classes.
template <class T, class... A>
Ref<T> make(A&&... arguments) {
  return Ref<T>(new T(std::forward<A>(arguments)...));
}

/// Creates a class by its identifier, as a client would: subsystems reach upward this way only.
/// Nothing for a class that there is not; throws std::bad_alloc when memory runs out.
template <class I>
Ref<I> create_class(REFCLSID clsid) {
  Ref<I> object;
  for (const ClassEntry& entry : library().classes) {
    if (*entry.clsid != clsid) continue;
    // What a class needs to come into being is memory.
    if (FAILED(entry.create(__uuidof(I), reinterpret_cast<void**>(object.put())))) {
      throw std::bad_alloc();
    }
  }
  return object;
}

HRESULT get_class_object(REFCLSID clsid, REFIID iid, void** object) noexcept;

}  // namespace pv
