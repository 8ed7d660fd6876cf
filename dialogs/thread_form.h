#pragma once

#include <memory>

#include "com/thread_state.h"
#include "dialogs/form.h"

namespace pv {

/// The form of this class that is loaded on this thread, or null.
template <class F>
F* loaded_form() {
  const ThreadState* state = existing_thread_state();
  if (!state) return nullptr;
  for (const auto& keepsake : state->keepsakes)
    if (const auto form = dynamic_cast<F*>(keepsake.get())) return form;
  return nullptr;
}

/// The form of this class of this thread, loaded on first use.
template <class F>
F& thread_form() {
  if (F* form = loaded_form<F>()) return *form;
  auto form = std::make_unique<F>();
  F& loaded = *form;
  thread_state().keepsakes.push_back(std::move(form));
  return loaded;
}

/// Unloads the form of this class, if there is one. A form that is shown is only hidden: it can be
/// unloaded when `show_modal` has returned.
template <class F>
void unload_form() {
  F* const form = loaded_form<F>();
  if (!form) return;
  if (form->is_shown()) {
    form->hide();
  } else {
    std::erase_if(thread_state().keepsakes,
                  [form](const auto& keepsake) { return keepsake.get() == form; });
  }
}

}  // namespace pv
