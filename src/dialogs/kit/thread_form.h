// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <memory>

#include "apartment/thread_state.h"
#include "dialogs/kit/form.h"

namespace pv {

/// The form of this class that is loaded on this thread, or null.
template <class F>
F* loaded_form() {
  const ThreadState* state = existing_thread_state();
  if (!state) return nullptr;
  for (const auto& keepsake : state->thread_objects)
    if (const auto form = dynamic_cast<F*>(keepsake.get())) return form;
  return nullptr;
}

/// The form of this class of this thread, loaded on first use.
template <class F>
F& thread_form() {
  if (F* form = loaded_form<F>()) return *form;
  auto form = std::make_unique<F>();
  F& loaded = *form;
  thread_state().thread_objects.push_back(std::move(form));
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
    return;
  }
  auto& thread_objects = thread_state().thread_objects;
  const auto slot =
      std::ranges::find(thread_objects, form, [](const auto& each) { return each.get(); });
  // Out of the list first: what the form lets go of may call back.
  const auto doomed = std::move(*slot);
  thread_objects.erase(slot);
}

/// The form of this class for one use: loaded at the beginning and unloaded at the end, however
/// that comes.
template <class F>
class FormUse {
 public:
  FormUse() : form_(thread_form<F>()) {}
  ~FormUse() { unload_form<F>(); }
  FormUse(const FormUse&) = delete;
  FormUse& operator=(const FormUse&) = delete;

  F* operator->() const { return &form_; }

 private:
  F& form_;
};

/// Whether the form of this class is open on this thread: it cannot be used for another purpose.
template <class F>
bool is_in_use() {
  const F* const form = loaded_form<F>();
  return form && form->is_shown();
}

}  // namespace pv
