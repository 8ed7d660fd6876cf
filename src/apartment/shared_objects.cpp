// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "apartment/shared_objects.h"

#include "apartment/thread_state.h"
#include "com/module.h"

namespace pv {
namespace {

// Creating an object may reach back here, so the slot is filled only with the finished object.
template <class I>
Ref<I> shared(Ref<I> ThreadState::*slot, REFCLSID clsid) {
  if (!(thread_state().*slot)) {
    Ref<I> created = create_class<I>(clsid);
    thread_state().*slot = created;
  }
  return thread_state().*slot;
}

}  // namespace

Ref<_CLanguages> shared_languages() {
  return shared(&ThreadState::languages, __uuidof(::CLanguages));
}

Ref<_CTxmEvents> shared_events() { return shared(&ThreadState::events, __uuidof(::CTxmEvents)); }

Ref<_CFile> shared_file() { return shared(&ThreadState::file, __uuidof(::CFile)); }

Ref<_CPasswords> shared_passwords() {
  return shared(&ThreadState::passwords, __uuidof(::CPasswords));
}

}  // namespace pv
