// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "apartment/message_title.h"

#include "apartment/thread_state.h"
#include "com/failure.h"
#include "core/text/library_version.h"
#include "host/late_bound.h"

namespace pv {

// A missing or failing application object must not swallow a message.
std::wstring message_title() {
  std::wstring title = library_title();
  attempt([&] { title = to_text(LateBound(thread_state().application).get(L"Title")); });
  return title;
}

}  // namespace pv
