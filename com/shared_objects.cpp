#include "com/shared_objects.h"

#include "com/boundary.h"
#include "com/late_bound.h"
#include "com/module.h"
#include "com/thread_state.h"
#include "util/library_version.h"

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

// A missing or failing application object must not swallow a message.
std::wstring message_title() {
  std::wstring title = library_title();
  attempt([&] { title = text_of(LateBound(thread_state().application).get(L"Title")); });
  return title;
}

Ref<_CFile> shared_file() { return shared(&ThreadState::file, __uuidof(::CFile)); }

Ref<_CPasswords> shared_passwords() {
  return shared(&ThreadState::passwords, __uuidof(::CPasswords));
}

}  // namespace pv
